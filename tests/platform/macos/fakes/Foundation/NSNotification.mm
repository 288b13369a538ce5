#include <algorithm>
#include <vector>

#import "tests/platform/macos/fakes/Foundation/Notices.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"
#include "tests/platform/macos/fakes/objc/LiveObjects.h"

@interface NSNotification ()
@property(readwrite, copy) NSNotificationName name;
@property(readwrite, strong) id object;
@end

@implementation NSNotification
@end

namespace {

struct NoticeObserver {
    id token;
    NSNotificationName name;
    id object;
    void (^block)(NSNotification*);
};

}  // namespace

@implementation NSNotificationCenter {
    std::vector<NoticeObserver> _observers;
}

+ (NSNotificationCenter*)defaultCenter {
    static NSNotificationCenter* const centre = [] {
        NSNotificationCenter* made = [[NSNotificationCenter alloc] init];
        corvane::objc::makeImmortal(made);
        return made;
    }();
    return centre;
}

- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)obj
                             queue:(NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* note))block {
    if (queue != nil) {
        corvane::objc::complain("the fake knows no operation queues");
    }
    id token = [[NSObject alloc] init];
    _observers.push_back({token, [name copy], obj, [block copy]});
    return token;
}

- (void)removeObserver:(id)observer {
    std::erase_if(_observers, [&](const NoticeObserver& known) { return known.token == observer; });
}

- (void)postNotificationName:(NSNotificationName)name object:(id)object {
    NSNotification* notice = [[NSNotification alloc] init];
    notice.name = name;
    notice.object = object;
    // Whoever is told may end observations.
    for (const NoticeObserver& observer : std::vector(_observers)) {
        const bool isThere = std::ranges::any_of(
            _observers, [&](const NoticeObserver& known) { return known.token == observer.token; });
        if (isThere && [observer.name isEqualToString:name] &&
            (observer.object == nil || observer.object == object)) {
            observer.block(notice);
        }
    }
}

@end
