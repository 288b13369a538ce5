#include "platform/linux/desktop/PortalHotKeys.h"

#include <utility>

#include <fmt/format.h>

#include "platform/linux/desktop/PortalShortcuts.h"

namespace corvane {

class PortalHotKeys::Registration final : public HotKeyRegistration {
public:
    Registration(PortalHotKeys& keys, std::uint64_t number) : keys_(keys), number_(number) {}
    ~Registration() override { keys_.remove(number_); }

private:
    PortalHotKeys& keys_;
    std::uint64_t number_;
};

/// Keeps the portal's shortcuts. Belongs to the bus thread.
class PortalHotKeys::Binder {
public:
    Binder(asio::io_context& context, HelperBus bus, Log& log, std::function<void(std::uint32_t id)> pressed)
        : context_(context), bus_(std::move(bus)), log_(log), pressed_(std::move(pressed)) {}

    /// Gives back what was bound before.
    void bind(const std::vector<HotKey>& keys) {
        shortcuts_.reset();
        if (keys.empty()) {
            return;
        }
        const auto report = [this](const std::string& reason) {
            log_.write(fmt::format("No hot keys: {}.", reason));
        };
        try {
            shortcuts_ = std::make_unique<PortalShortcuts>(
                context_, bus_, keys, PortalShortcuts::Events{.pressed = pressed_, .failed = report});
            shortcuts_->start();
        } catch (const sdbus::Error&) {
            report("there is no session bus");
        }
    }

private:
    asio::io_context& context_;
    HelperBus bus_;
    Log& log_;
    std::function<void(std::uint32_t id)> pressed_;
    std::unique_ptr<PortalShortcuts> shortcuts_;
};

PortalHotKeys::PortalHotKeys(BusThread& busThread, SerialQueue& mainLoop, Log& log, HelperBus bus)
    : busThread_(busThread), mainLoop_(mainLoop) {
    auto pressed = [&mainLoop, deliver = lifetime_.bound([this](std::uint32_t id) { this->deliver(id); })](
                       std::uint32_t id) { mainLoop.async([deliver, id]() mutable { deliver(id); }); };
    binder_ = std::make_shared<Binder>(busThread.context(), std::move(bus), log, std::move(pressed));
}

PortalHotKeys::~PortalHotKeys() {
    // The last to let go of it is the bus thread.
    busThread_.post([binder = std::move(binder_)] {});
}

std::unique_ptr<HotKeyRegistration> PortalHotKeys::add(const HotKey& key,
                                                       std::function<void(std::uint32_t id)> pressed) {
    keys_.emplace(++lastNumber_, Key{key, std::move(pressed)});
    bindSoon();
    return std::make_unique<Registration>(*this, lastNumber_);
}

void PortalHotKeys::remove(std::uint64_t number) {
    keys_.erase(number);
    bindSoon();
}

void PortalHotKeys::bindSoon() {
    if (!std::exchange(isBindingSoon_, true)) {
        mainLoop_.async(lifetime_.bound([this] { bind(); }));
    }
}

void PortalHotKeys::bind() {
    isBindingSoon_ = false;
    std::vector<HotKey> wanted;
    for (const auto& [number, key] : keys_) {
        wanted.push_back(key.hotKey);
    }
    if (std::exchange(bound_, wanted) != wanted) {
        busThread_.post([binder = binder_, wanted = std::move(wanted)] { binder->bind(wanted); });
    }
}

void PortalHotKeys::deliver(std::uint32_t id) {
    for (const auto& [number, key] : keys_) {
        if (key.hotKey.id == id) {
            // It may add others.
            const auto pressed = key.pressed;
            pressed(id);
            return;
        }
    }
}

}  // namespace corvane
