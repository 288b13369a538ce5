#import <Foundation/Foundation.h>

#include "tests/platform/macos/fakes/objc/Blocks.h"
#include "tests/platform/macos/fakes/objc/Complaints.h"
#include "tests/platform/macos/fakes/objc/Runtime.h"

extern "C" id _Block_copy(const void* block);

// Counts references by hand: it is what the others' counting ends in.

@interface Protocol : NSObject
@end

@implementation Protocol
@end

@interface NSBlock : NSObject <NSCopying>
@end

@implementation NSBlock

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return _Block_copy(self);
}

- (void)dealloc {
    corvane::objc::destroyCaptured(self);
    [super dealloc];
}

@end

namespace {

BOOL isBelow(Class aClass, Class ancestor) {
    while (aClass != Nil && aClass != ancestor) {
        aClass = class_getSuperclass(aClass);
    }
    return aClass != Nil;
}

BOOL anyConforms(Class aClass, Protocol* protocol) {
    while (aClass != Nil && !class_conformsToProtocol(aClass, protocol)) {
        aClass = class_getSuperclass(aClass);
    }
    return aClass != Nil;
}

}  // namespace

@implementation NSObject

+ (void)initialize {
}

+ (instancetype)alloc {
    return class_createInstance(self, 0);
}

+ (instancetype)new {
    return [[self alloc] init];
}

- (instancetype)init {
    return self;
}

- (void)dealloc {
    object_dispose(self);
}

- (instancetype)retain {
    return objc_retain(self);
}

- (oneway void)release {
    objc_release(self);
}

- (instancetype)autorelease {
    return objc_autorelease(self);
}

- (id)copy {
    return [static_cast<id<NSCopying>>(self) copyWithZone:nullptr];
}

- (id)mutableCopy {
    return [static_cast<id<NSMutableCopying>>(self) mutableCopyWithZone:nullptr];
}

+ (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

+ (Class)class {
    return self;
}

- (Class)class {
    return object_getClass(self);
}

+ (Class)superclass {
    return class_getSuperclass(self);
}

- (Class)superclass {
    return class_getSuperclass(object_getClass(self));
}

- (instancetype)self {
    return self;
}

- (BOOL)isEqual:(id)object {
    return self == object;
}

- (NSUInteger)hash {
    return reinterpret_cast<NSUInteger>(self) >> 4U;
}

- (BOOL)isKindOfClass:(Class)aClass {
    return isBelow(object_getClass(self), aClass);
}

- (BOOL)isMemberOfClass:(Class)aClass {
    return object_getClass(self) == aClass;
}

+ (BOOL)conformsToProtocol:(Protocol*)aProtocol {
    return anyConforms(self, aProtocol);
}

- (BOOL)conformsToProtocol:(Protocol*)aProtocol {
    return anyConforms(object_getClass(self), aProtocol);
}

- (BOOL)respondsToSelector:(SEL)aSelector {
    return class_respondsToSelector(object_getClass(self), aSelector);
}

- (NSString*)description {
    return [NSString
        stringWithFormat:@"<%s: %p>", class_getName(object_getClass(self)), static_cast<void*>(self)];
}

@end

NSString* NSStringFromSelector(SEL aSelector) {
    return [NSString stringWithUTF8String:sel_getName(aSelector)];
}

NSString* NSStringFromClass(Class aClass) {
    return [NSString stringWithUTF8String:class_getName(aClass)];
}
