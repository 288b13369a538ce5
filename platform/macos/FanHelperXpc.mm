#include "platform/macos/FanHelperXpc.h"

namespace corvane {

NSXPCInterface* makeFanHelperInterface() {
    NSXPCInterface* interface = [NSXPCInterface interfaceWithProtocol:@protocol(FanHelperProtocol)];
    // The collections themselves count as well as what they hold.
    NSSet<Class>* classes =
        [NSSet setWithObjects:[NSArray class], [NSDictionary class], [NSNumber class], [NSString class], nil];
    [interface setClasses:classes forSelector:@selector(getStatusWithReply:) argumentIndex:0 ofReply:YES];
    return interface;
}

}  // namespace corvane
