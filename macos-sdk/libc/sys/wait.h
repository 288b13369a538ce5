// From Apple's open-source xnu (bsd/sys/wait.h).
#pragma once

#include <sys/types.h>

#define WNOHANG 0x00000001

#define _WSTATUS(status) ((status)&0177)
#define WIFEXITED(status) (_WSTATUS(status) == 0)
#define WEXITSTATUS(status) (((status) >> 8) & 0x000000ff)
#define WIFSIGNALED(status) (_WSTATUS(status) != 0177 && _WSTATUS(status) != 0)
#define WTERMSIG(status) (_WSTATUS(status))

__BEGIN_DECLS
pid_t wait(int*);
pid_t waitpid(pid_t, int*, int);
__END_DECLS
