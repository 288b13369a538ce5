// finds: nothing
#import <Foundation/Foundation.h>

int main() {
    @autoreleasepool {
        return [[NSSet set] respondsToSelector:@selector(isEqual:)] ? 0 : 1;
    }
}
