// From Apple's open-source xnu (bsd/sys/resource.h).
#pragma once

#include <sys/cdefs.h>
#include <sys/types.h>

typedef uint64_t rlim_t;

#define RLIMIT_FSIZE 1

struct rlimit {
    rlim_t rlim_cur;
    rlim_t rlim_max;
};

__BEGIN_DECLS
int getrlimit(int, struct rlimit*);
int setrlimit(int, const struct rlimit*);
__END_DECLS
