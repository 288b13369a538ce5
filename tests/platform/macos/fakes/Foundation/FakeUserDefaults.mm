#include "tests/platform/macos/fakes/Foundation/FakeUserDefaults.h"

#include <map>

#import <Foundation/Foundation.h>
#include <fmt/format.h>

#include "platform/macos/NSStringText.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"
#include "tests/platform/macos/fakes/objc/LiveObjects.h"

namespace corvane {

namespace {

constexpr const char* domainOfAll = "NSGlobalDomain";

/// The domain of this program.
std::string ownDomain() {
    NSString* identifier = NSBundle.mainBundle.bundleIdentifier;
    return textOf(identifier == nil ? NSProcessInfo.processInfo.processName : identifier);
}

bool isOfPropertyLists(id value) {
    for (Class known : {[NSString class],
                        [NSNumber class],
                        [NSData class],
                        [NSDate class],
                        [NSArray class],
                        [NSDictionary class]}) {
        if ([value isKindOfClass:known]) {
            return true;
        }
    }
    return false;
}

}  // namespace

class FakeUserDefaults::State {
public:
    using Values = std::map<std::string, id>;
    using Domains = std::map<std::string, Values>;

    static State& shared();

    State();
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State();

    [[nodiscard]] id find(const std::string& key) const;

    Domains stored;
    /// As this process sees them.
    Domains seen;
    bool isFailing = false;
};

namespace {

FakeUserDefaults::State* currentDefaults = nullptr;

}  // namespace

FakeUserDefaults::State::State() {
    currentDefaults = this;
}

FakeUserDefaults::State::~State() {
    currentDefaults = nullptr;
}

FakeUserDefaults::State& FakeUserDefaults::State::shared() {
    if (currentDefaults == nullptr) {
        objc::fatal("settings are used without FakeUserDefaults");
    }
    return *currentDefaults;
}

id FakeUserDefaults::State::find(const std::string& key) const {
    for (const std::string& domain : {ownDomain(), std::string(domainOfAll)}) {
        if (const auto values = seen.find(domain); values != seen.end()) {
            if (const auto value = values->second.find(key); value != values->second.end()) {
                return value->second;
            }
        }
    }
    return nil;
}

FakeUserDefaults::FakeUserDefaults() : state_(std::make_unique<State>()) {}

FakeUserDefaults::~FakeUserDefaults() = default;

void FakeUserDefaults::endProcess() {
    state_->seen = state_->stored;
}

void FakeUserDefaults::setFailing(bool isFailing) {
    state_->isFailing = isFailing;
}

void FakeUserDefaults::storeList(const std::string& domain, const std::string& key) {
    state_->stored[domain][key] = @[ @1 ];
    endProcess();
}

void FakeUserDefaults::storeLargest(const std::string& domain, const std::string& key) {
    state_->stored[domain][key] = @(~0ULL);
    endProcess();
}

void FakeUserDefaults::storeForAll(const std::string& key, bool value) {
    state_->stored[domainOfAll][key] = @(value);
    endProcess();
}

std::vector<std::string> FakeUserDefaults::storedKeys(const std::string& domain) const {
    std::vector<std::string> keys;
    for (const auto& [key, value] : state_->stored[domain]) {
        keys.push_back(key);
    }
    return keys;
}

}  // namespace corvane

using DefaultsState = corvane::FakeUserDefaults::State;

@implementation NSUserDefaults

+ (NSUserDefaults*)standardUserDefaults {
    return [[NSUserDefaults alloc] init];
}

- (id)objectForKey:(NSString*)defaultName {
    return DefaultsState::shared().find(corvane::textOf(defaultName));
}

- (void)setObject:(id)value forKey:(NSString*)defaultName {
    if (!corvane::isOfPropertyLists(value)) {
        corvane::objc::complain("not of a property list: the real class raises an exception");
    }
    DefaultsState::shared().seen[corvane::ownDomain()][corvane::textOf(defaultName)] = [value copy];
}

- (void)removeObjectForKey:(NSString*)defaultName {
    DefaultsState::shared().seen[corvane::ownDomain()].erase(corvane::textOf(defaultName));
}

- (void)removePersistentDomainForName:(NSString*)domainName {
    DefaultsState::shared().seen.erase(corvane::textOf(domainName));
}

- (BOOL)synchronize {
    DefaultsState& state = DefaultsState::shared();
    if (!state.isFailing) {
        state.stored = state.seen;
    }
    return !state.isFailing;
}

@end
