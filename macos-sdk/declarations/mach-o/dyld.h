#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

// Apple's open-source dyld, mach-o/dyld.h: 0 when the path fits in, with a zero at its end; otherwise -1 and
// the size that it takes. It may hold symbolic links.
int _NSGetExecutablePath(char* path, uint32_t* size);

#ifdef __cplusplus
}
#endif
