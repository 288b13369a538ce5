#pragma once

#include <memory>

#import <Foundation/Foundation.h>

#include "platform/macos/HelperReception.h"

/// Serves each connection that the reception lets in.
@interface CorvaneConnectionAcceptor : NSObject <NSXPCListenerDelegate>
- (instancetype)initWithReception:(std::shared_ptr<corvane::HelperReception>)reception
    NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;
@end
