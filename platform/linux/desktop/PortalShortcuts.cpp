#include "platform/linux/desktop/PortalShortcuts.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>
#include <systemd/sd-bus.h>

#include "platform/linux/BusNameWatch.h"

namespace corvane {

namespace {

// The names are those of the desktop portals' own documentation.
constexpr const char* busName = "org.freedesktop.portal.Desktop";
constexpr const char* objectPath = "/org/freedesktop/portal/desktop";
constexpr const char* shortcutsInterface = "org.freedesktop.portal.GlobalShortcuts";
constexpr const char* requestInterface = "org.freedesktop.portal.Request";
constexpr const char* sessionInterface = "org.freedesktop.portal.Session";

/// The same each time: some portals know the keys that the user has chosen by it.
constexpr const char* sessionToken = "corvane";

constexpr std::uint32_t success = 0;
constexpr std::uint32_t cancelled = 1;

std::string shortcutIdOf(const HotKey& key) {
    return fmt::format("hot-key-{}", key.id);
}

/// As desktops write shortcuts among themselves.
std::string triggerOf(const HotKey& key) {
    return fmt::format("{}{}{}", (key.modifiers & HotKeyModifier::command) != 0 ? "LOGO+" : "",
                       (key.modifiers & HotKeyModifier::option) != 0 ? "ALT+" : "", key.letter);
}

/// Where the answer to a connection's request with this token will come from.
std::string requestPath(const std::string& uniqueName, const std::string& token) {
    std::string sender = uniqueName.substr(1);
    std::ranges::replace(sender, '.', '_');
    return fmt::format("{}/request/{}/{}", objectPath, sender, token);
}

/// Empty when there is no such text.
std::string textIn(const std::map<std::string, sdbus::Variant>& dictionary, const std::string& key) {
    const auto found = dictionary.find(key);
    const bool isText = found != dictionary.end() && found->second.containsValueOfType<std::string>();
    return isText ? found->second.get<std::string>() : std::string();
}

bool isObjectPath(const std::string& text) {
    return sd_bus_object_path_is_valid(text.c_str()) != 0;
}

}  // namespace

PortalShortcuts::PortalShortcuts(asio::io_context& context, const HelperBus& bus, std::vector<HotKey> keys,
                                 Events events)
    : keys_(std::move(keys)),
      events_(std::move(events)),
      heldTimer_(context),
      connection_(bus.connect()),
      portal_(sdbus::createProxy(*connection_, busName, objectPath)),
      // Without a bus the session ends.
      pump_(context, *connection_, [](const std::string& /*reason*/) {}) {
    subscribe();
}

void PortalShortcuts::start() {
    createSession();
    pump_.process();
}

void PortalShortcuts::subscribe() {
    subscriptions_.push_back(watchBusName(
        *connection_, busName, [this](const OwnerChange& change) { changeOwner(change.current); }));
    owner_ = busNameOwner(*connection_, busName);
    on(requestInterface, "Response", [this](sdbus::Message& signal) { takeResponse(signal); });
    on(sessionInterface, "Closed", [this](sdbus::Message& signal) { takeClosing(signal); });
    on(shortcutsInterface, "Activated", [this](sdbus::Message& signal) { activate(signal); });
    on(shortcutsInterface, "Deactivated", [this](sdbus::Message& signal) { deactivate(signal); });
}

/// Believes nobody but the portal, and drops what is of another shape.
void PortalShortcuts::on(const char* interface, const char* member,
                         std::function<void(sdbus::Message& signal)> handle) {
    subscriptions_.push_back(connection_->addMatch(
        fmt::format("type='signal',sender='{}',interface='{}',member='{}'", busName, interface, member),
        [this, handle = std::move(handle)](sdbus::Message& signal) {
            if (signal.getSender() != owner_) {
                return;
            }
            try {
                handle(signal);
            } catch (const sdbus::Error&) {
                // An error that leaves its handler would be taken for one of the bus.
                return;
            }
        }));
}

void PortalShortcuts::changeOwner(const std::string& owner) {
    const bool wasThere = !std::exchange(owner_, owner).empty();
    if (wasThere) {
        // Another one knows nothing of what this one was asked.
        forget();
    }
    // One that comes up because it was asked is not asked again.
    if (!owner.empty() && token_.empty()) {
        createSession();
    }
}

void PortalShortcuts::createSession() {
    Dictionary options = newRequest([this](const Dictionary& results) { bindShortcuts(results); });
    options["session_handle_token"] = std::string(sessionToken);
    pump_.send([&] {
        auto call = portal_->createMethodCall(shortcutsInterface, "CreateSession");
        call << options;
        send(call);
    });
}

void PortalShortcuts::bindShortcuts(const Dictionary& session) {
    session_ = textIn(session, "session_handle");
    if (!isObjectPath(session_)) {
        session_.clear();
        fail("the desktop's portal names no session");
        return;
    }
    std::vector<sdbus::Struct<std::string, Dictionary>> shortcuts;
    for (const HotKey& key : keys_) {
        shortcuts.emplace_back(shortcutIdOf(key),
                               Dictionary{{"description", sdbus::Variant(key.description)},
                                          {"preferred_trigger", sdbus::Variant(triggerOf(key))}});
    }
    const std::string noParentWindow;
    const Dictionary options = newRequest([this](const Dictionary& /*results*/) { hasFailed_ = false; });
    pump_.send([&] {
        auto call = portal_->createMethodCall(shortcutsInterface, "BindShortcuts");
        call << sdbus::ObjectPath(session_) << shortcuts << noParentWindow << options;
        send(call);
    });
}

/// Begins a request; what it returns belongs to its options.
PortalShortcuts::Dictionary PortalShortcuts::newRequest(OnResults onResults) {
    token_ = fmt::format("corvane{}", ++requests_);
    request_ = requestPath(connection_->getUniqueName(), token_);
    onResults_ = std::move(onResults);
    return {{"handle_token", sdbus::Variant(token_)}};
}

void PortalShortcuts::send(const sdbus::MethodCall& call) {
    portal_->callMethod(call, [this, token = token_](sdbus::MethodReply& reply, const sdbus::Error* error) {
        takeReply(token, reply, error);
    });
}

/// The call was taken or refused; what came of it is told by a signal, which may have come before.
void PortalShortcuts::takeReply(const std::string& token, sdbus::MethodReply& reply,
                                const sdbus::Error* error) {
    if (token != token_) {
        return;
    }
    if (error != nullptr) {
        fail(fmt::format("the desktop has no portal for them ({})", error->getName()));
        return;
    }
    try {
        sdbus::ObjectPath request;
        reply >> request;
        // Old portals choose a path of their own.
        request_ = request;
    } catch (const sdbus::Error&) {
        fail("the desktop's portal answers nonsense");
    }
}

void PortalShortcuts::takeResponse(sdbus::Message& signal) {
    if (token_.empty() || signal.getPath() != request_) {
        return;
    }
    token_.clear();
    std::uint32_t code = success;
    Dictionary results;
    try {
        signal >> code >> results;
    } catch (const sdbus::Error&) {
        fail("the desktop's portal answers nonsense");
        return;
    }
    if (code == success) {
        // It may begin the next request.
        std::exchange(onResults_, nullptr)(results);
    } else {
        fail(code == cancelled ? "the user does not want them" : "the desktop's portal refuses them");
    }
}

/// The user no longer wants the keys, or the desktop cannot go on with them. To ask for them again at once
/// would only nag.
void PortalShortcuts::takeClosing(const sdbus::Message& signal) {
    if (!session_.empty() && signal.getPath() == session_) {
        forget();
        fail("the desktop has taken them back");
    }
}

void PortalShortcuts::forget() {
    session_.clear();
    token_.clear();
    held_.clear();
}

void PortalShortcuts::activate(sdbus::Message& signal) {
    const HotKey* const key = keyOf(signal);
    if (key == nullptr) {
        return;
    }
    heldTimer_.expires_after(repeatTime);
    heldTimer_.async_wait(lifetime_.bound([this](const std::error_code& error) {
        if (!error) {
            held_.clear();
        }
    }));
    if (held_.insert(key->id).second) {
        events_.pressed(key->id);
    }
}

void PortalShortcuts::deactivate(sdbus::Message& signal) {
    if (const HotKey* const key = keyOf(signal)) {
        held_.erase(key->id);
    }
}

/// Which key of this session a signal is about; null for another's.
const HotKey* PortalShortcuts::keyOf(sdbus::Message& signal) const {
    sdbus::ObjectPath session;
    std::string id;
    signal >> session >> id;
    const auto found = std::ranges::find(keys_, id, shortcutIdOf);
    return !session_.empty() && session == session_ && found != keys_.end() ? &*found : nullptr;
}

void PortalShortcuts::fail(const std::string& reason) {
    token_.clear();
    if (!std::exchange(hasFailed_, true)) {
        events_.failed(reason);
    }
}

}  // namespace corvane
