#import <ServiceManagement/ServiceManagement.h>

#include "platform/macos/NSStringText.h"
#include "tests/platform/macos/fakes/ServiceManagement/FakeLoginItems.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"

namespace corvane {

namespace {

FakeLoginItems& loginItems() {
    auto* const fake = Current<FakeLoginItems>::get();
    if (fake == nullptr) {
        objc::fatal("login items are used without FakeLoginItems");
    }
    return *fake;
}

NSError* loginItemError(const FakeLoginItems& items) {
    if (!items.error()) {
        return nil;
    }
    return [NSError errorWithDomain:@"SMAppServiceErrorDomain"
                               code:1
                           userInfo:@{NSLocalizedDescriptionKey : stringOf(*items.error())}];
}

}  // namespace

bool FakeLoginItems::enroll() {
    if (isFailing_) {
        return false;
    }
    status_ = isApprovalMissing_ ? Status::requiresApproval : Status::enabled;
    ++changes_;
    return true;
}

bool FakeLoginItems::withdraw() {
    const bool isThere = status_ == Status::enabled || status_ == Status::requiresApproval;
    if (isFailing_ || !isThere) {
        return false;
    }
    status_ = Status::notRegistered;
    ++changes_;
    return true;
}

}  // namespace corvane

@implementation SMAppService

+ (SMAppService*)mainAppService {
    return [[SMAppService alloc] init];
}

- (SMAppServiceStatus)status {
    return static_cast<SMAppServiceStatus>(corvane::loginItems().status());
}

- (BOOL)registerAndReturnError:(NSError**)error {
    const bool isDone = corvane::loginItems().enroll();
    if (!isDone && error != nullptr) {
        *error = corvane::loginItemError(corvane::loginItems());
    }
    return isDone;
}

- (BOOL)unregisterAndReturnError:(NSError**)error {
    const bool isDone = corvane::loginItems().withdraw();
    if (!isDone && error != nullptr) {
        *error = corvane::loginItemError(corvane::loginItems());
    }
    return isDone;
}

@end
