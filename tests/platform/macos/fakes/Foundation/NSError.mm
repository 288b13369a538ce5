#import <Foundation/Foundation.h>

NSErrorDomain const NSCocoaErrorDomain = @"NSCocoaErrorDomain";
NSErrorDomain const NSPOSIXErrorDomain = @"NSPOSIXErrorDomain";
NSErrorDomain const NSOSStatusErrorDomain = @"NSOSStatusErrorDomain";
NSErrorUserInfoKey const NSLocalizedDescriptionKey = @"NSLocalizedDescription";
NSErrorUserInfoKey const NSUnderlyingErrorKey = @"NSUnderlyingError";

@implementation NSError {
    NSErrorDomain _domain;
    NSInteger _code;
    NSDictionary<NSErrorUserInfoKey, id>* _userInfo;
}

+ (BOOL)supportsSecureCoding {
    return YES;
}

+ (instancetype)errorWithDomain:(NSErrorDomain)domain
                           code:(NSInteger)code
                       userInfo:(NSDictionary<NSErrorUserInfoKey, id>*)dict {
    NSError* error = [[self alloc] init];
    error->_domain = [domain copy];
    error->_code = code;
    error->_userInfo = dict == nil ? @{} : [dict copy];
    return error;
}

- (id)copyWithZone:(NSZone*)zone {
    (void)zone;
    return self;
}

- (NSErrorDomain)domain {
    return _domain;
}

- (NSInteger)code {
    return _code;
}

- (NSDictionary<NSErrorUserInfoKey, id>*)userInfo {
    return _userInfo;
}

- (NSString*)localizedDescription {
    NSString* text = _userInfo[NSLocalizedDescriptionKey];
    return text != nil ? text
                       : [NSString stringWithFormat:@"The operation couldn’t be completed. (%@ error %ld.)",
                                                    _domain, static_cast<long>(_code)];
}

- (BOOL)isEqual:(id)object {
    return [object isKindOfClass:[NSError class]] && [_domain isEqual:[object domain]] &&
           _code == [object code] && [_userInfo isEqual:[object userInfo]];
}

- (NSUInteger)hash {
    return static_cast<NSUInteger>(_code);
}

- (NSString*)description {
    return [NSString stringWithFormat:@"Error Domain=%@ Code=%ld \"%@\"", _domain, static_cast<long>(_code),
                                      self.localizedDescription];
}

@end
