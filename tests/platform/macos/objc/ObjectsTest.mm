#include <algorithm>
#include <stdexcept>
#include <string>
#include <thread>

#import <Foundation/Foundation.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "tests/platform/macos/fakes/objc/LiveObjects.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"

namespace {

struct Box {
    double values[6];
};

}  // namespace

@protocol ToldOfEnd
- (void)ended:(NSString*)name;
@optional
- (void)neverThere;
@end

@interface EndBook : NSObject <ToldOfEnd>
@property(readonly) std::string names;
@end

@implementation EndBook {
    std::string _names;
}
- (void)ended:(NSString*)name {
    _names += name.UTF8String;
}
- (std::string)names {
    return _names;
}
@end

@interface Mortal : NSObject
@property(copy) NSString* name;
@property(strong) id<ToldOfEnd> book;
@property(weak) id other;
@property int number;
- (Box)box;
- (void)fail;
@end

@implementation Mortal
- (void)dealloc {
    [self.book ended:self.name];
}
- (Box)box {
    return {{1, 2, 3, 4, 5, 6}};
}
- (void)fail {
    throw std::runtime_error("as it should");
}
@end

@interface Heir : Mortal
@property double share;
@end

@implementation Heir
- (Box)box {
    Box box = [super box];
    box.values[0] = self.share;
    return box;
}
@end

@interface Mortal (Addition)
- (int)twice;
@end

@implementation Mortal (Addition)
- (int)twice {
    return 2 * self.number;
}
@end

@interface LateLearner : NSObject
@property(readonly) int answer;
@end

namespace {

int learntAnswer(id /*self*/, SEL /*selector*/) {
    return 42;
}

Mortal* makeMortal(NSString* name, EndBook* book) {
    Mortal* mortal = [[Mortal alloc] init];
    mortal.name = name;
    mortal.book = book;
    return mortal;
}

}  // namespace

@implementation LateLearner
@dynamic answer;
+ (BOOL)resolveInstanceMethod:(SEL)selector {
    return class_addMethod(self, selector, reinterpret_cast<IMP>(learntAnswer), "i@:");
}
@end

namespace corvane::objc {
namespace {

TEST(Objects, EndWithTheirLastReference) {
    EndBook* book = [[EndBook alloc] init];
    Mortal* first = nil;
    @autoreleasepool {
        first = makeMortal(@"first ", book);
        Mortal* second = makeMortal(@"a name that is no short string ", book);
        first.other = second;
        EXPECT_EQ(first.other, second);
        EXPECT_EQ(book.names, "");
    }
    EXPECT_EQ(first.other, nil);
    EXPECT_EQ(book.names, "a name that is no short string ");
    first = nil;
    EXPECT_EQ(book.names, "a name that is no short string first ");
}

TEST(Objects, HaveTheVariablesOfTheirClassesBehindEachOther) {
    Heir* heir = [[Heir alloc] init];
    heir.number = 21;
    heir.share = 0.5;
    heir.name = @"heir";
    EXPECT_EQ([heir twice], 42);
    EXPECT_EQ([heir box].values[0], 0.5);
    EXPECT_EQ([heir box].values[5], 6);
    EXPECT_STREQ(heir.name.UTF8String, "heir");
}

TEST(Objects, ThatAreNotThereAnswerZeroes) {
    Heir* const none = nil;
    EXPECT_EQ(none.share, 0);
    EXPECT_EQ([none twice], 0);
    EXPECT_EQ([none box].values[5], 0);
    EXPECT_EQ(none.name, nil);
}

TEST(Objects, KnowTheirClassTheirProtocolsAndTheirMethods) {
    Heir* heir = [[Heir alloc] init];
    EXPECT_TRUE([heir isKindOfClass:[Mortal class]]);
    EXPECT_FALSE([heir isMemberOfClass:[Mortal class]]);
    EXPECT_TRUE([EndBook conformsToProtocol:@protocol(ToldOfEnd)]);
    EXPECT_FALSE([heir conformsToProtocol:@protocol(ToldOfEnd)]);
    EXPECT_TRUE([heir respondsToSelector:@selector(twice)]);
    EXPECT_FALSE([heir respondsToSelector:@selector(ended:)]);
    EXPECT_STREQ(NSStringFromClass([heir class]).UTF8String, "Heir");
}

TEST(Objects, MayLearnAMethodWhenItIsAskedFor) {
    EXPECT_EQ([[LateLearner alloc] init].answer, 42);
}

TEST(Objects, LetExceptionsOfCppPass) {
    EndBook* book = [[EndBook alloc] init];
    @autoreleasepool {
        Mortal* mortal = makeMortal(@"gone", book);
        EXPECT_THROW([mortal fail], std::runtime_error);
    }
    EXPECT_EQ(book.names, "gone");
}

TEST(Objects, AreListedWithTheirClassesWhileTheyLive) {
    const std::size_t before = liveObjects().size();
    @autoreleasepool {
        Mortal* mortal = [[Mortal alloc] init];
        mortal.number = 1;
        const std::vector<std::string> after = liveObjects();
        EXPECT_EQ(after.size(), before + 1);
        EXPECT_NE(std::ranges::find(after, "Mortal"), after.end());
        EXPECT_EQ(mortal.number, 1);
    }
    EXPECT_EQ(liveObjects().size(), before);
}

TEST(Objects, ThatLiveForEverAreNotListed) {
    static Mortal* const eternal = [[Mortal alloc] init];
    makeImmortal(eternal);
    const std::vector<std::string> after = liveObjects();
    EXPECT_EQ(std::ranges::find(after, "Mortal"), after.end());
}

TEST(Objects, AutoreleasedOnAThreadWithoutAPoolFailTheTest) {
    const auto work = [] {
        std::thread([] { objc_autorelease(class_createInstance([Mortal class], 0)); }).join();
    };
    EXPECT_NONFATAL_FAILURE_ON_ALL_THREADS(work(), "autoreleased without a pool: Mortal");
}

TEST(ObjectsDeathTest, OfUnknownMethodsEndTheProgram) {
    id mortal = [[Mortal alloc] init];
    EXPECT_DEATH([mortal neverThere], "unrecognized selector: -\\[Mortal neverThere\\]");
}

TEST(ObjectsDeathTest, ThatAreNoMoreEndTheProgramWhenTheyGetAMessage) {
    __unsafe_unretained id gone = nil;
    @autoreleasepool {
        Mortal* mortal = [[Mortal alloc] init];
        gone = mortal;
    }
    EXPECT_DEATH([gone twice], "once Mortal");
}

TEST(ObjectsDeathTest, ReleasedTooOftenEndTheProgram) {
    const auto releaseTwice = [] {
        id object = class_createInstance([Mortal class], 0);
        objc_release(object);
        objc_release(object);
    };
    EXPECT_DEATH(releaseTwice(), "release of an object that is no more, once Mortal");
}

}  // namespace
}  // namespace corvane::objc
