#include "platform/linux/desktop/UPowerSources.h"

#include <mutex>
#include <utility>

namespace corvane {

/// What UPower said last. Any thread.
class UPowerSources::Known {
public:
    void set(std::optional<UPowerClient::Batteries> batteries) {
        const std::lock_guard lock(mutex_);
        batteries_ = std::move(batteries).value_or(UPowerClient::Batteries());
    }

    /// Empty while nothing is known, and while UPower knows no battery.
    [[nodiscard]] UPowerClient::Batteries get() const {
        const std::lock_guard lock(mutex_);
        return batteries_;
    }

private:
    mutable std::mutex mutex_;
    UPowerClient::Batteries batteries_;
};

UPowerSources::UPowerSources(BusThread& bus, std::string sysfsRoot, UPowerPatience patience)
    : bus_(bus),
      kernel_(std::move(sysfsRoot)),
      known_(std::make_shared<Known>()),
      client_(std::make_shared<UPowerClient>(
          bus.context(), patience, [known = known_](std::optional<UPowerClient::Batteries> batteries) {
              known->set(std::move(batteries));
          })) {
    bus_.post([client = client_] { client->start(); });
}

UPowerSources::~UPowerSources() {
    bus_.post([client = std::move(client_)] {});
}

std::vector<std::optional<PowerSourceDescription>> UPowerSources::descriptions() const {
    const UPowerClient::Batteries known = known_->get();
    if (known.empty()) {
        return kernel_.descriptions();
    }
    return {known.begin(), known.end()};
}

}  // namespace corvane
