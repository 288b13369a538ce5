// From Apple's open-source xnu (bsd/sys/poll.h).
#pragma once

#include <sys/cdefs.h>

#define POLLIN 0x0001
#define POLLOUT 0x0004
#define POLLERR 0x0008
#define POLLHUP 0x0010

struct pollfd {
    int fd;
    short events;
    short revents;
};

typedef unsigned int nfds_t;

__BEGIN_DECLS
int poll(struct pollfd*, nfds_t, int);
__END_DECLS
