// From Apple's open-source xnu (bsd/sys/select.h). Corvane waits with it for signals alone: a set is never
// looked into.
#pragma once

#include <signal.h>
#include <sys/time.h>
#include <time.h>

typedef struct fd_set fd_set;

__BEGIN_DECLS
int pselect(int, fd_set* __restrict, fd_set* __restrict, fd_set* __restrict,
            const struct timespec* __restrict, const sigset_t* __restrict);
__END_DECLS
