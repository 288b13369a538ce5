#pragma once

#include <memory>

#include "platform/macos/FanHelperXpc.h"
#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpcEnd.h"

/// What stands for the helper in the application's process. The real ones are made for any protocol as the
/// program runs; this one knows the messages of the one that there is.
@interface FakeFanHelperProxy : NSObject <FanHelperProtocol>
- (instancetype)initWithEnd:(std::shared_ptr<corvane::FakeXpcEnd>)end
               errorHandler:(void (^)(NSError* error))handler;
@end
