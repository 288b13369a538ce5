#include <algorithm>
#include <cstdarg>
#include <unordered_set>

#import <Foundation/Foundation.h>

#include "tests/platform/macos/fakes/Foundation/Collections.h"

using corvane::objc::EqualObjects;
using corvane::objc::HashOfObject;
using corvane::objc::notNil;

@interface NSSet () {
    std::unordered_set<id, HashOfObject, EqualObjects> _objects;
    unsigned long _mutations;
}
@end

@implementation NSSet

+ (BOOL)supportsSecureCoding {
    return YES;
}

+ (instancetype)set {
    return [[self alloc] init];
}

+ (instancetype)setWithObjects:(const id[])objects count:(NSUInteger)cnt {
    NSSet* set = [[self alloc] init];
    for (NSUInteger i = 0; i < cnt; ++i) {
        set->_objects.insert(notNil(objects[i], "setWithObjects:count:"));
    }
    return set;
}

+ (instancetype)setWithObjects:(id)firstObj, ... {
    NSSet* set = [[self alloc] init];
    va_list arguments;
    va_start(arguments, firstObj);
    for (id object = firstObj; object != nil; object = va_arg(arguments, id)) {
        set->_objects.insert(object);
    }
    va_end(arguments);
    return set;
}

+ (instancetype)setWithArray:(NSArray*)array {
    NSSet* set = [[self alloc] init];
    for (id object in array) {
        set->_objects.insert(object);
    }
    return set;
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

- (NSUInteger)count {
    return _objects.size();
}

- (NSArray*)allObjects {
    NSMutableArray* objects = [NSMutableArray array];
    for (id object : _objects) {
        [objects addObject:object];
    }
    return [objects copy];
}

- (BOOL)containsObject:(id)anObject {
    return anObject != nil && _objects.contains(anObject);
}

- (BOOL)isEqualToSet:(NSSet*)otherSet {
    return self.count == otherSet.count &&
           std::ranges::all_of(_objects, [&](id object) { return [otherSet containsObject:object]; });
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSSet class]] && [self isEqualToSet:object];
}

- (NSUInteger)hash {
    return _objects.size();
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)len {
    return corvane::objc::enumerate(state, buffer, len, _objects.begin(), _objects.end(), &_mutations,
                                    [](id object) { return object; });
}

@end
