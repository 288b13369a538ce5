#pragma once

#include <memory>

#include "platform/macos/FanHelperXpc.h"
#include "platform/macos/HelperEntrance.h"

/// What one connection calls: hands each call to the served object, and its reply back.
@interface CorvaneExportedHelper : NSObject <FanHelperProtocol>
- (instancetype)initWithEntrance:(std::shared_ptr<corvane::HelperEntrance>)entrance NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;
@end
