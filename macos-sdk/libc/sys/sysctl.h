// From Apple's open-source xnu (bsd/sys/sysctl.h).
#pragma once

#include <sys/time.h>
#include <sys/types.h>

#define CTL_KERN 1
#define KERN_BOOTTIME 21

__BEGIN_DECLS
int sysctl(int*, u_int, void*, size_t*, void*, size_t);
int sysctlbyname(const char*, void*, size_t*, void*, size_t);
__END_DECLS
