#include "platform/macos/ConnectionAcceptor.h"

#include <string>
#include <utility>

#include "platform/macos/ExportedHelper.h"

@implementation CorvaneConnectionAcceptor {
    std::shared_ptr<corvane::HelperReception> _reception;
}

- (instancetype)initWithReception:(std::shared_ptr<corvane::HelperReception>)reception {
    if ((self = [super init])) {
        _reception = std::move(reception);
    }
    return self;
}

- (BOOL)listener:(NSXPCListener*)listener shouldAcceptNewConnection:(NSXPCConnection*)newConnection {
    (void)listener;
    // Weak: the connection owns what it exports.
    __weak NSXPCConnection* connection = newConnection;
    auto entrance = _reception->admit(std::to_string(newConnection.processIdentifier),
                                      [connection] { [connection invalidate]; });
    if (!entrance) {
        return NO;
    }
    newConnection.exportedInterface = corvane::makeFanHelperInterface();
    newConnection.exportedObject = [[CorvaneExportedHelper alloc] initWithEntrance:std::move(entrance)];
    [newConnection resume];
    return YES;
}

@end
