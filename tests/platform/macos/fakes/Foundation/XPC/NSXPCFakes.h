#pragma once

#include <memory>

#import <Foundation/Foundation.h>

#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpcEnd.h"

// What the fakes of XPC's classes tell each other.

@interface NSXPCConnection ()
- (instancetype)initWithEnd:(std::shared_ptr<corvane::FakeXpcEnd>)end;
@end

@interface NSXPCListener ()
/// Asks the delegate, on the listener's queue.
- (BOOL)offer:(NSXPCConnection*)connection;
@end

@interface NSXPCListenerEndpoint ()
@property(copy) NSString* serviceName;
@end

@interface NSXPCInterface ()
- (BOOL)isOfProtocol:(Protocol*)protocol;
- (BOOL)hasSelector:(SEL)selector;
/// What a collection in the reply may be and hold; nil when that was never said.
- (NSSet<Class>*)classesOfReplyTo:(SEL)selector;
@end
