// Messages between processes. From: Apple's public documentation of NSXPCConnection, NSXPCListener and
// NSXPCInterface.
#pragma once

#import <Foundation/NSObject.h>
#include <sys/types.h>

@class NSError, NSSet<ObjectType>, NSXPCConnection, NSXPCInterface, NSXPCListener, NSXPCListenerEndpoint;

@protocol NSXPCProxyCreating
// The handler runs on a queue of the connection's, when the message's reply will not come.
- (id)remoteObjectProxyWithErrorHandler:(void (^)(NSError* error))handler;
@end

typedef NS_OPTIONS(NSUInteger, NSXPCConnectionOptions) {
    // The service lives in the system's domain, not in the user's.
    NSXPCConnectionPrivileged = (1 << 12UL)
};

@interface NSXPCConnection : NSObject <NSXPCProxyCreating>
- (instancetype)initWithMachServiceName:(NSString*)name options:(NSXPCConnectionOptions)options;
- (instancetype)initWithListenerEndpoint:(NSXPCListenerEndpoint*)endpoint;
@property(retain) NSXPCInterface* exportedInterface;
@property(retain) id exportedObject;
@property(retain) NSXPCInterface* remoteObjectInterface;
// Both run on a queue of the connection's. After an interruption the next message may reach the service
// again, after an invalidation none does.
@property(copy) void (^interruptionHandler)(void);
@property(copy) void (^invalidationHandler)(void);
@property(readonly) pid_t processIdentifier;
- (void)resume;
- (void)invalidate;
@end

@protocol NSXPCListenerDelegate <NSObject>
@optional
// The connection is suspended until it is resumed, which is done before this returns YES.
- (BOOL)listener:(NSXPCListener*)listener shouldAcceptNewConnection:(NSXPCConnection*)newConnection;
@end

@interface NSXPCListener : NSObject
- (instancetype)initWithMachServiceName:(NSString*)name;
+ (NSXPCListener*)anonymousListener;
@property(weak) id<NSXPCListenerDelegate> delegate;
@property(readonly, retain) NSXPCListenerEndpoint* endpoint;
- (void)resume;
- (void)invalidate;
@end

@interface NSXPCListenerEndpoint : NSObject
@end

@interface NSXPCInterface : NSObject
+ (NSXPCInterface*)interfaceWithProtocol:(Protocol*)protocol;
// What collections may hold, and which they may be.
- (void)setClasses:(NSSet<Class>*)classes
       forSelector:(SEL)selector
     argumentIndex:(NSUInteger)argumentIndex
           ofReply:(BOOL)ofReply;
@end

// From: Apple's public documentation of FoundationErrors.
enum : NSInteger {
    NSXPCConnectionInterrupted = 4097,
    NSXPCConnectionInvalid = 4099,
    NSXPCConnectionReplyInvalid = 4101,
};
