// From Apple's open-source dyld (include/dlfcn.h).
#pragma once

#include <sys/cdefs.h>

#define RTLD_LAZY 0x1
#define RTLD_NOW 0x2
#define RTLD_LOCAL 0x4
#define RTLD_GLOBAL 0x8

__BEGIN_DECLS
void* dlopen(const char*, int);
void* dlsym(void*, const char*);
int dlclose(void*);
char* dlerror(void);
__END_DECLS
