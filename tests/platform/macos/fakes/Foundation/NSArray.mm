#include <algorithm>
#include <cstdarg>
#include <vector>

#import <Foundation/Foundation.h>
#include <fmt/format.h>

#include "tests/platform/macos/fakes/Foundation/Collections.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"

using corvane::objc::EqualObjects;
using corvane::objc::notNil;

@interface NSArray () {
@protected
    std::vector<id> _objects;
    unsigned long _mutations;
}
@end

@implementation NSArray

+ (BOOL)supportsSecureCoding {
    return YES;
}

+ (instancetype)array {
    return [[self alloc] init];
}

+ (instancetype)arrayWithObject:(id)anObject {
    return [self arrayWithObjects:&anObject count:1];
}

+ (instancetype)arrayWithObjects:(const id[])objects count:(NSUInteger)cnt {
    NSArray* array = [[self alloc] init];
    for (NSUInteger i = 0; i < cnt; ++i) {
        array->_objects.push_back(notNil(objects[i], "arrayWithObjects:count:"));
    }
    return array;
}

+ (instancetype)arrayWithObjects:(id)firstObj, ... {
    NSArray* array = [[self alloc] init];
    va_list arguments;
    va_start(arguments, firstObj);
    for (id object = firstObj; object != nil; object = va_arg(arguments, id)) {
        array->_objects.push_back(object);
    }
    va_end(arguments);
    return array;
}

+ (instancetype)arrayWithArray:(NSArray*)other {
    NSArray* array = [[self alloc] init];
    if (other != nil) {
        array->_objects = other->_objects;
    }
    return array;
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return [self isKindOfClass:[NSMutableArray class]] ? [NSArray arrayWithArray:self] : self;
}

- (id)mutableCopyWithZone:(NSZone*)zone {
    (void)zone;
    return [NSMutableArray arrayWithArray:self];
}

- (NSUInteger)count {
    return _objects.size();
}

- (id)objectAtIndex:(NSUInteger)index {
    if (index >= _objects.size()) {
        corvane::objc::fatal(fmt::format("index {} of an array of {}", index, _objects.size()));
    }
    return _objects[index];
}

- (id)objectAtIndexedSubscript:(NSUInteger)idx {
    return [self objectAtIndex:idx];
}

- (id)firstObject {
    return _objects.empty() ? nil : _objects.front();
}

- (NSUInteger)indexOfObject:(id)anObject {
    const auto found =
        std::ranges::find_if(_objects, [&](id each) { return EqualObjects()(each, anObject); });
    return found == _objects.end() ? static_cast<NSUInteger>(NSNotFound)
                                   : static_cast<NSUInteger>(found - _objects.begin());
}

- (BOOL)containsObject:(id)anObject {
    return [self indexOfObject:anObject] != NSNotFound;
}

- (BOOL)isEqualToArray:(NSArray*)otherArray {
    return otherArray != nil && std::ranges::equal(_objects, otherArray->_objects, EqualObjects());
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSArray class]] && [self isEqualToArray:object];
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

@implementation NSMutableArray

- (void)addObject:(id)anObject {
    _objects.push_back(notNil(anObject, "addObject:"));
    ++_mutations;
}

- (void)replaceObjectAtIndex:(NSUInteger)index withObject:(id)anObject {
    [self objectAtIndex:index];
    _objects[index] = notNil(anObject, "replaceObjectAtIndex:withObject:");
    ++_mutations;
}

- (void)setObject:(id)obj atIndexedSubscript:(NSUInteger)idx {
    if (idx == _objects.size()) {
        [self addObject:obj];
    } else {
        [self replaceObjectAtIndex:idx withObject:obj];
    }
}

- (void)removeObject:(id)anObject {
    id const kept = anObject;
    std::erase_if(_objects, [&](id each) { return EqualObjects()(each, kept); });
    ++_mutations;
}

- (void)removeAllObjects {
    _objects.clear();
    ++_mutations;
}

@end
