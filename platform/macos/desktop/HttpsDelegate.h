#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#import <Foundation/Foundation.h>

/// Takes in one document: at most so many bytes, by at most 5 redirects, all to https. On the session's own
/// queue.
@interface CorvaneHttpsDelegate : NSObject <NSURLSessionDataDelegate>

/// `finished` runs once, on that queue, with the body or with none when there is no complete answer.
- (instancetype)initWithLargestBody:(std::size_t)largestBody
                           finished:(std::function<void(std::optional<std::string>)>)finished;

@end
