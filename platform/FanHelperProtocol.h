#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/StatusRecord.h"

namespace corvane {

/// What the application may ask of the privileged fan helper. The helper's service implements it; transports
/// carry it between the processes.
///
/// Any thread may call. Each operation answers through its reply at most once, on any thread; a service that
/// is gone may not answer at all. Every operation marks contact: a helper that is not contacted for more than
/// 6 s hands the fans back and clears the lid setting.
class FanHelperProtocol {
public:
    /// Name of the service on its bus or with its service manager.
    static constexpr std::string_view serviceName = "de.tavrin.corvane.smchelper";

    /// Success and a short English text.
    using Reply = std::function<void(bool ok, std::string text)>;
    using StatusReply = std::function<void(StatusRecord status)>;

    FanHelperProtocol() = default;
    FanHelperProtocol(const FanHelperProtocol&) = delete;
    FanHelperProtocol& operator=(const FanHelperProtocol&) = delete;
    virtual ~FanHelperProtocol() = default;

    /// Answers at once, without waiting for the helper's queue.
    virtual void pingWithReply(Reply reply) = 0;

    /// The keys of the record are those of `StatusKey`.
    virtual void getStatusWithReply(StatusReply reply) = 0;

    /// Holds every fan at `percent` of its range or at the safety curve's demand, whichever is more. Values
    /// outside 0...100 are clamped, NaN counts as 0; 0 hands the fans back.
    virtual void setFanFloorWithPercentWithReply(double percent, Reply reply) = 0;

    /// Hands the fans back to the firmware.
    virtual void stopBoostWithReply(Reply reply) = 0;

    /// Keeps the computer running with its lid closed, or no longer.
    virtual void setLidStayAwakeWithReply(bool on, Reply reply) = 0;
};

}  // namespace corvane
