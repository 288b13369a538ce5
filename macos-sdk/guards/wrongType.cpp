// finds: no matching function for call to 'IOServiceMatching'
#include <IOKit/IOKitLib.h>

int main() {
    return IOServiceMatching(1) == nullptr ? 1 : 0;
}
