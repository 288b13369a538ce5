#include <string>

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/Foundation/StringText.h"
#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpcServices.h"
#include "tests/platform/macos/fakes/Foundation/XPC/NSXPCFakes.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

@implementation NSXPCListenerEndpoint
@end

@implementation NSXPCListener {
    std::string _name;
    corvane::VirtualQueue* _queue;
}

- (instancetype)initWithMachServiceName:(NSString*)name {
    if ((self = [super init])) {
        _name = corvane::objc::textOf(name);
        _queue = &corvane::FakeDispatch::current().makeQueue();
    }
    return self;
}

+ (NSXPCListener*)anonymousListener {
    static int made = 0;
    NSString* name = corvane::objc::stringOf("anonymous listener " + std::to_string(++made));
    NSXPCListener* listener = [[self alloc] initWithMachServiceName:name];
    corvane::FakeXpcServices::current()->known.try_emplace(listener->_name);
    return listener;
}

- (NSXPCListenerEndpoint*)endpoint {
    NSXPCListenerEndpoint* endpoint = [[NSXPCListenerEndpoint alloc] init];
    endpoint.serviceName = corvane::objc::stringOf(_name);
    return endpoint;
}

- (void)resume {
    corvane::FakeXpcServices::current()->listen(_name, self);
}

- (void)invalidate {
    corvane::FakeXpcServices::current()->unlisten(_name, self);
}

- (BOOL)offer:(NSXPCConnection*)connection {
    id<NSXPCListenerDelegate> delegate = self.delegate;
    BOOL isAccepted = NO;
    if (delegate != nil) {
        corvane::FakeDispatch::current().runOn(
            *_queue, [&] { isAccepted = [delegate listener:self shouldAcceptNewConnection:connection]; });
    }
    return isAccepted;
}

@end
