#pragma once

#import <Foundation/Foundation.h>

// What travels between the application and the fan helper: both ends build their interface of it. Each reply
// block is called at most once. The selectors are the protocol's names; `corvane::FanHelperProtocol` says
// what they do.
@protocol FanHelperProtocol
- (void)pingWithReply:(void (^)(BOOL ok, NSString* text))reply;
// The record as an NSDictionary of NSNumber, NSString, NSArray and NSDictionary.
- (void)getStatusWithReply:(void (^)(NSDictionary<NSString*, id>* status))reply;
- (void)setFanFloorWithPercent:(double)percent withReply:(void (^)(BOOL ok, NSString* text))reply;
- (void)stopBoostWithReply:(void (^)(BOOL ok, NSString* text))reply;
- (void)setLidStayAwake:(BOOL)on withReply:(void (^)(BOOL ok, NSString* text))reply;
@end

namespace corvane {

/// The protocol, with what the status may be made of.
NSXPCInterface* makeFanHelperInterface();

}  // namespace corvane
