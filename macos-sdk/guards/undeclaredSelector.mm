// finds: undeclared selector 'isEquall:'
#import <Foundation/Foundation.h>

int main() {
    @autoreleasepool {
        return [[NSSet set] respondsToSelector:@selector(isEquall:)] ? 0 : 1;
    }
}
