#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

namespace corvane::objc {
namespace {

NSMutableArray* numbersTo(int end) {
    NSMutableArray* numbers = [NSMutableArray array];
    for (int i = 0; i < end; ++i) {
        [numbers addObject:@(i)];
    }
    return numbers;
}

TEST(Arrays, AreGoneThroughInOrder) {
    int expected = 0;
    for (NSNumber* each in numbersTo(100)) {
        EXPECT_EQ(each.intValue, expected++);
    }
    EXPECT_EQ(expected, 100);
}

TEST(Arrays, CopyIntoOnesThatStayAsTheyAre) {
    NSMutableArray* numbers = numbersTo(2);
    NSArray* copy = [numbers copy];
    numbers[0] = @5;
    numbers[2] = @6;
    [numbers removeObject:@1];
    EXPECT_TRUE([numbers isEqual:(@[ @5, @6 ])]);
    EXPECT_TRUE([copy isEqual:(@[ @0, @1 ])]);
    EXPECT_EQ([copy copy], copy);
}

TEST(Arrays, FindWhatIsEqual) {
    NSArray* names = @[ @"a", @"b" ];
    EXPECT_TRUE([names containsObject:[NSString stringWithUTF8String:"b"]]);
    EXPECT_EQ([names indexOfObject:@"c"], static_cast<NSUInteger>(NSNotFound));
    EXPECT_EQ((@[]).firstObject, nil);
}

TEST(ArraysDeathTest, TakeNoNilAndKnowTheirEnd) {
    NSMutableArray* array = [NSMutableArray array];
    id none = nil;
    EXPECT_DEATH([array addObject:none], "nil given to addObject:");
    EXPECT_DEATH((void)array[0], "index 0 of an array of 0");
    EXPECT_DEATH((void)@[ none ], "nil given to arrayWithObjects");
}

TEST(ArraysDeathTest, AreNotChangedWhileTheyAreGoneThrough) {
    NSMutableArray* array = numbersTo(40);
    const auto change = [&] {
        for (id each in array) {
            [array addObject:each];
        }
    };
    EXPECT_DEATH(change(), "NSMutableArray was changed while it was gone through");
}

TEST(Dictionaries, FindByEqualKeys) {
    NSDictionary* fan = @{@"rpm" : @2000, @"name" : @"left", @1 : @[]};
    EXPECT_EQ([fan[[NSString stringWithUTF8String:"rpm"]] intValue], 2000);
    EXPECT_EQ(fan[@"none"], nil);
    EXPECT_EQ(fan.count, 3U);
    EXPECT_TRUE([fan isEqual:[fan mutableCopy]]);
}

TEST(Dictionaries, CopyTheirKeys) {
    NSMutableArray* key = numbersTo(1);
    NSMutableDictionary* dictionary = [NSMutableDictionary dictionary];
    dictionary[key] = @"value";
    [key removeAllObjects];
    EXPECT_STREQ([dictionary[@[ @0 ]] UTF8String], "value");
}

TEST(Dictionaries, DropAKeyThatIsSetToNil) {
    NSMutableDictionary* dictionary = [@{@"a" : @1, @"b" : @2} mutableCopy];
    dictionary[@"a"] = nil;
    EXPECT_EQ(dictionary.allKeys.count, 1U);
    EXPECT_EQ(dictionary[@"a"], nil);
}

TEST(DictionariesDeathTest, TakeNoNil) {
    NSMutableDictionary* dictionary = [NSMutableDictionary dictionary];
    id none = nil;
    EXPECT_DEATH([dictionary setObject:none forKey:@"a"], "nil given to setObject:forKey:");
    EXPECT_DEATH((void)@{@"a" : none}, "nil given to dictionaryWithObjects");
}

TEST(Sets, HoldEachOnce) {
    NSSet* set = [NSSet setWithObjects:@1, @1.0, @"1", [NSArray class], nil];
    EXPECT_EQ(set.count, 3U);
    EXPECT_TRUE([set containsObject:[NSArray class]]);
    EXPECT_TRUE([set isEqual:([NSSet setWithArray:@[ @"1", [NSArray class], @1 ]])]);
}

TEST(Values, OfOtherKindsCompare) {
    EXPECT_TRUE([[NSData dataWithBytes:"ab" length:2] isEqual:[NSData dataWithBytes:"ab" length:2]]);
    EXPECT_EQ([NSData data].length, 0U);
    EXPECT_TRUE([[NSDate dateWithTimeIntervalSince1970:5] isEqual:[NSDate dateWithTimeIntervalSince1970:5]]);
    EXPECT_EQ([NSNull null], [NSNull null]);
    NSError* error = [NSError errorWithDomain:NSCocoaErrorDomain
                                         code:4
                                     userInfo:@{NSLocalizedDescriptionKey : @"no such thing"}];
    EXPECT_STREQ(error.localizedDescription.UTF8String, "no such thing");
    EXPECT_EQ([error copy], error);
}

}  // namespace
}  // namespace corvane::objc
