#pragma once

#include <stdint.h>

// Public documentation (MacTypes.h): the classic names of the basic types.
typedef uint8_t UInt8;
typedef uint16_t UInt16;
typedef uint32_t UInt32;
typedef int32_t SInt32;
typedef unsigned char Boolean;

// Public documentation (MacTypes.h): result codes; four characters, the first in the most significant byte.
typedef SInt32 OSStatus;
typedef UInt32 FourCharCode;
typedef FourCharCode OSType;
enum { noErr = 0 };

// Public documentation (MacTypes.h): sizes, counts and sets of bits in 64-bit programs.
typedef unsigned long ByteCount;
typedef unsigned long ItemCount;
typedef UInt32 OptionBits;
