#include <utility>

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/Foundation/StringText.h"
#include "tests/platform/macos/fakes/Foundation/XPC/FakeFanHelperProxy.h"
#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpcServices.h"
#include "tests/platform/macos/fakes/Foundation/XPC/NSXPCFakes.h"

@implementation NSXPCConnection {
    std::shared_ptr<corvane::FakeXpcEnd> _end;
}

- (instancetype)initWithEnd:(std::shared_ptr<corvane::FakeXpcEnd>)end {
    if ((self = [super init])) {
        _end = std::move(end);
    }
    return self;
}

- (instancetype)initWithMachServiceName:(NSString*)name options:(NSXPCConnectionOptions)options {
    self = [self initWithEnd:std::make_shared<corvane::FakeXpcEnd>(corvane::objc::textOf(name))];
    _end->process = corvane::FakeXpcServices::current()->caller;
    _end->isPrivileged = (options & NSXPCConnectionPrivileged) != 0;
    return self;
}

- (instancetype)initWithListenerEndpoint:(NSXPCListenerEndpoint*)endpoint {
    return [self initWithMachServiceName:endpoint.serviceName options:NSXPCConnectionPrivileged];
}

- (void)dealloc {
    EXPECT_TRUE(!_end->isResumed || _end->isInvalid) << "a connection was released that was not invalidated";
}

- (NSXPCInterface*)exportedInterface {
    return _end->exportedInterface;
}

- (void)setExportedInterface:(NSXPCInterface*)interface {
    _end->exportedInterface = interface;
}

- (id)exportedObject {
    return _end->exportedObject;
}

- (void)setExportedObject:(id)object {
    _end->exportedObject = object;
}

- (NSXPCInterface*)remoteObjectInterface {
    return _end->remoteInterface;
}

- (void)setRemoteObjectInterface:(NSXPCInterface*)interface {
    _end->remoteInterface = interface;
}

- (void (^)(void))interruptionHandler {
    return _end->interruptionHandler;
}

- (void)setInterruptionHandler:(void (^)(void))handler {
    _end->interruptionHandler = [handler copy];
}

- (void (^)(void))invalidationHandler {
    return _end->invalidationHandler;
}

- (void)setInvalidationHandler:(void (^)(void))handler {
    _end->invalidationHandler = [handler copy];
}

- (pid_t)processIdentifier {
    return _end->peerProcess;
}

- (void)resume {
    _end->isResumed = true;
}

- (void)invalidate {
    corvane::FakeXpcServices::current()->invalidate(_end);
}

- (id)remoteObjectProxyWithErrorHandler:(void (^)(NSError* error))handler {
    return [[FakeFanHelperProxy alloc] initWithEnd:_end errorHandler:handler];
}

@end
