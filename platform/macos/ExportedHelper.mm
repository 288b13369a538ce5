#include "platform/macos/ExportedHelper.h"

#include <string>
#include <utility>

#include "platform/macos/NSStringText.h"
#include "platform/macos/StatusDictionary.h"

namespace {

using TextBlock = void (^)(BOOL ok, NSString* text);
using StatusBlock = void (^)(NSDictionary<NSString*, id>* status);
using Place = corvane::RequestLimiter::Place;

/// The place is given back with the reply.
corvane::FanHelperProtocol::Reply sendText(TextBlock reply, Place place) {
    return [reply, place = std::move(place)](bool ok, const std::string& text) {
        @autoreleasepool {
            // A caller may have sent none.
            if (reply != nil) {
                reply(ok, corvane::stringOf(text));
            }
        }
    };
}

corvane::FanHelperProtocol::StatusReply sendStatus(StatusBlock reply, Place place) {
    return [reply, place = std::move(place)](const corvane::StatusRecord& status) {
        @autoreleasepool {
            if (reply != nil) {
                reply(corvane::dictionaryOf(status));
            }
        }
    };
}

}  // namespace

@implementation CorvaneExportedHelper {
    std::shared_ptr<corvane::HelperEntrance> _entrance;
}

- (instancetype)initWithEntrance:(std::shared_ptr<corvane::HelperEntrance>)entrance {
    if ((self = [super init])) {
        _entrance = std::move(entrance);
    }
    return self;
}

- (void)pingWithReply:(TextBlock)reply {
    _entrance->enter([&](corvane::FanHelperProtocol& helper, Place place) {
        helper.pingWithReply(sendText(reply, std::move(place)));
    });
}

- (void)getStatusWithReply:(StatusBlock)reply {
    _entrance->enter([&](corvane::FanHelperProtocol& helper, Place place) {
        helper.getStatusWithReply(sendStatus(reply, std::move(place)));
    });
}

- (void)setFanFloorWithPercent:(double)percent withReply:(TextBlock)reply {
    _entrance->enter([&](corvane::FanHelperProtocol& helper, Place place) {
        helper.setFanFloorWithPercentWithReply(percent, sendText(reply, std::move(place)));
    });
}

- (void)stopBoostWithReply:(TextBlock)reply {
    _entrance->enter([&](corvane::FanHelperProtocol& helper, Place place) {
        helper.stopBoostWithReply(sendText(reply, std::move(place)));
    });
}

- (void)setLidStayAwake:(BOOL)on withReply:(TextBlock)reply {
    _entrance->enter([&](corvane::FanHelperProtocol& helper, Place place) {
        helper.setLidStayAwakeWithReply(on, sendText(reply, std::move(place)));
    });
}

@end
