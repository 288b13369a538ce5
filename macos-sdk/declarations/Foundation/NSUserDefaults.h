// Settings. From: Apple's public documentation of NSUserDefaults.
#pragma once

#import <Foundation/NSObject.h>

@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (id)objectForKey:(NSString*)defaultName;
// Takes objects of property lists alone; nil removes.
- (void)setObject:(id)value forKey:(NSString*)defaultName;
- (void)removeObjectForKey:(NSString*)defaultName;
- (void)removePersistentDomainForName:(NSString*)domainName;
// Waits until what was set is with the service that stores it.
- (BOOL)synchronize;
@end
