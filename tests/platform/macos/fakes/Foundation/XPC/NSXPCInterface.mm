#include <map>
#include <string>

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/Foundation/XPC/NSXPCFakes.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"

@implementation NSXPCInterface {
    Protocol* _protocol;
    std::map<std::string, NSSet<Class>*> _replyClasses;
}

+ (NSXPCInterface*)interfaceWithProtocol:(Protocol*)protocol {
    NSXPCInterface* interface = [[self alloc] init];
    interface->_protocol = protocol;
    return interface;
}

- (void)setClasses:(NSSet<Class>*)classes
       forSelector:(SEL)selector
     argumentIndex:(NSUInteger)argumentIndex
           ofReply:(BOOL)ofReply {
    EXPECT_TRUE([self hasSelector:selector]) << "the protocol has no " << sel_getName(selector);
    EXPECT_TRUE(argumentIndex == 0 && ofReply) << "the fake knows classes of a reply's first argument alone";
    _replyClasses[sel_getName(selector)] = classes;
}

- (BOOL)isOfProtocol:(Protocol*)protocol {
    return std::string(protocol_getName(_protocol)) == protocol_getName(protocol);
}

- (BOOL)hasSelector:(SEL)selector {
    return protocol_getMethodDescription(_protocol, selector, YES, YES).name != nullptr;
}

- (NSSet<Class>*)classesOfReplyTo:(SEL)selector {
    const auto found = _replyClasses.find(sel_getName(selector));
    return found == _replyClasses.end() ? nil : found->second;
}

@end
