// From Apple's open-source xnu (bsd/sys/time.h, bsd/sys/_types/_timeval.h).
#pragma once

#include <sys/types.h>
#include <time.h>

struct timeval {
    time_t tv_sec;
    suseconds_t tv_usec;
};

__BEGIN_DECLS
int gettimeofday(struct timeval* __restrict, void* __restrict);
__END_DECLS
