#include "platform/macos/XpcHelperListener.h"

#include <utility>

#include "platform/macos/ConnectionAcceptor.h"
#include "platform/macos/HelperReception.h"
#include "platform/macos/NSStringText.h"

namespace corvane {

class XpcHelperListener::Service {
public:
    explicit Service(HelperListenerDelegate& delegate)
        : reception_(std::make_shared<HelperReception>(delegate)),
          acceptor_([[CorvaneConnectionAcceptor alloc] initWithReception:reception_]),
          listener_(
              [[NSXPCListener alloc] initWithMachServiceName:stringOf(FanHelperProtocol::serviceName)]) {
        listener_.delegate = acceptor_;
        [listener_ resume];
    }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;
    ~Service() {
        [listener_ invalidate];
        reception_->close();
    }

private:
    std::shared_ptr<HelperReception> reception_;
    /// The listener does not keep it.
    CorvaneConnectionAcceptor* acceptor_;
    NSXPCListener* listener_;
};

XpcHelperListener::XpcHelperListener() = default;

XpcHelperListener::~XpcHelperListener() = default;

std::optional<std::string> XpcHelperListener::resume(HelperListenerDelegate& delegate) {
    @autoreleasepool {
        service_ = std::make_unique<Service>(delegate);
    }
    return std::nullopt;
}

}  // namespace corvane
