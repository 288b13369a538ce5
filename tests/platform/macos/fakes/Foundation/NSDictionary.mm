#include <unordered_map>

#import <Foundation/Foundation.h>

#include "tests/platform/macos/fakes/Foundation/Collections.h"

using corvane::objc::EqualObjects;
using corvane::objc::HashOfObject;
using corvane::objc::notNil;

@interface NSDictionary () {
@protected
    std::unordered_map<id, id, HashOfObject, EqualObjects> _objects;
    unsigned long _mutations;
}
@end

@implementation NSDictionary

+ (BOOL)supportsSecureCoding {
    return YES;
}

+ (instancetype)dictionary {
    return [[self alloc] init];
}

+ (instancetype)dictionaryWithObject:(id)object forKey:(id<NSCopying>)key {
    return [self dictionaryWithObjects:&object forKeys:&key count:1];
}

+ (instancetype)dictionaryWithObjects:(const id[])objects
                              forKeys:(const id<NSCopying>[])keys
                                count:(NSUInteger)cnt {
    NSDictionary* dictionary = [[self alloc] init];
    for (NSUInteger i = 0; i < cnt; ++i) {
        id key = [notNil(keys[i], "dictionaryWithObjects:forKeys:count:") copy];
        dictionary->_objects[key] = notNil(objects[i], "dictionaryWithObjects:forKeys:count:");
    }
    return dictionary;
}

+ (instancetype)dictionaryWithDictionary:(NSDictionary*)dict {
    NSDictionary* dictionary = [[self alloc] init];
    if (dict != nil) {
        dictionary->_objects = dict->_objects;
    }
    return dictionary;
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return [self isKindOfClass:[NSMutableDictionary class]] ? [NSDictionary dictionaryWithDictionary:self]
                                                            : self;
}

- (id)mutableCopyWithZone:(NSZone*)zone {
    (void)zone;
    return [NSMutableDictionary dictionaryWithDictionary:self];
}

- (NSUInteger)count {
    return _objects.size();
}

- (id)objectForKey:(id)aKey {
    const auto found = aKey == nil ? _objects.end() : _objects.find(aKey);
    return found == _objects.end() ? nil : found->second;
}

- (id)objectForKeyedSubscript:(id)key {
    return [self objectForKey:key];
}

- (NSArray*)allKeys {
    NSMutableArray* keys = [NSMutableArray array];
    for (const auto& [key, object] : _objects) {
        [keys addObject:key];
    }
    return [keys copy];
}

- (BOOL)isEqualToDictionary:(NSDictionary*)otherDictionary {
    if (self.count != otherDictionary.count) {
        return NO;
    }
    for (const auto& [key, object] : _objects) {
        if (![object isEqual:[otherDictionary objectForKey:key]]) {
            return NO;
        }
    }
    return otherDictionary != nil;
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSDictionary class]] && [self isEqualToDictionary:object];
}

- (NSUInteger)hash {
    return _objects.size();
}

- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)len {
    return corvane::objc::enumerate(state, buffer, len, _objects.begin(), _objects.end(), &_mutations,
                                    [](const auto& entry) { return entry.first; });
}

@end

@implementation NSMutableDictionary

- (void)setObject:(id)anObject forKey:(id<NSCopying>)aKey {
    id key = [notNil(aKey, "setObject:forKey:") copy];
    _objects[key] = notNil(anObject, "setObject:forKey:");
    ++_mutations;
}

- (void)setObject:(id)obj forKeyedSubscript:(id<NSCopying>)key {
    if (obj == nil) {
        [self removeObjectForKey:key];
    } else {
        [self setObject:obj forKey:key];
    }
}

- (void)removeObjectForKey:(id)aKey {
    _objects.erase(notNil(aKey, "removeObjectForKey:"));
    ++_mutations;
}

- (void)removeAllObjects {
    _objects.clear();
    ++_mutations;
}

@end
