// From Apple's open-source xnu (bsd/sys/signal.h) and Libc (include/signal.h).
#pragma once

#include <sys/types.h>

#define SIGHUP 1
#define SIGINT 2
#define SIGQUIT 3
#define SIGILL 4
#define SIGABRT 6
#define SIGFPE 8
#define SIGKILL 9
#define SIGSEGV 11
#define SIGPIPE 13
#define SIGALRM 14
#define SIGTERM 15
#define SIGCHLD 20
#define SIGXFSZ 25
#define SIGUSR1 30
#define SIGUSR2 31

#define SIG_BLOCK 1
#define SIG_UNBLOCK 2
#define SIG_SETMASK 3

#define SA_RESTART 0x0002
#define SA_RESETHAND 0x0004
#define SA_SIGINFO 0x0040

typedef int sig_atomic_t;
typedef uint32_t sigset_t;
typedef struct __siginfo siginfo_t;
typedef void (*sig_t)(int);

#define SIG_DFL ((void (*)(int))0)
#define SIG_IGN ((void (*)(int))1)
#define SIG_ERR ((void (*)(int)) - 1)

struct sigaction {
    union {
        void (*__sa_handler)(int);
        void (*__sa_sigaction)(int, siginfo_t*, void*);
    } __sigaction_u;
    sigset_t sa_mask;
    int sa_flags;
};

#define sa_handler __sigaction_u.__sa_handler
#define sa_sigaction __sigaction_u.__sa_sigaction

__BEGIN_DECLS
void (*signal(int, void (*)(int)))(int);
int raise(int);
int kill(pid_t, int);
int sigaction(int, const struct sigaction* __restrict, struct sigaction* __restrict);
int sigemptyset(sigset_t*);
int sigfillset(sigset_t*);
int sigaddset(sigset_t*, int);
int sigdelset(sigset_t*, int);
int sigpending(sigset_t*);
int sigismember(const sigset_t*, int);
int sigprocmask(int, const sigset_t*, sigset_t*);
int sigsuspend(const sigset_t*);
int sigwait(const sigset_t* __restrict, int* __restrict);
int pthread_sigmask(int, const sigset_t*, sigset_t*);
__END_DECLS
