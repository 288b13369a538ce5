#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include <CoreFoundation/CoreFoundation.h>

#include "platform/Log.h"
#include "platform/SerialQueue.h"
#include "platform/SingleInstance.h"
#include "platform/macos/CfRef.h"
#include "platform/macos/desktop/ReopenRequests.h"

namespace corvane {

/// One instance for each user's session, by a message port of a fixed name: who has it is the first, and a
/// message to it asks for the panel. The system gives the name back with the process, whichever way that
/// ends. The system itself starts applications once as a rule, and asks the one that runs for its panel: that
/// counts as a later start too. Main thread, whose run loop hears of both.
class MacSingleInstance final : public SingleInstance {
public:
    /// `mainLoop` and `log` outlive the instance. `patience` is how long the first one may take for its
    /// answer, and how long it is looked for when it can neither be found nor replaced.
    MacSingleInstance(SerialQueue& mainLoop, Log& log,
                      std::chrono::milliseconds patience = std::chrono::seconds(5))
        : mainLoop_(mainLoop), log_(log), patience_(patience) {}
    ~MacSingleInstance() override;

    [[nodiscard]] Start claim(std::function<void()> openRequested) override;

private:
    enum class Answer { yes, none, nobody };

    [[nodiscard]] bool listen();
    [[nodiscard]] Answer ask() const;

    SerialQueue& mainLoop_;
    Log& log_;
    std::chrono::milliseconds patience_;
    std::function<void()> openRequested_;
    /// Null unless this is the first one.
    CfRef<CFMessagePortRef> port_;
    CfRef<CFRunLoopSourceRef> source_;
    std::unique_ptr<ReopenRequests> reopenRequests_;
};

}  // namespace corvane
