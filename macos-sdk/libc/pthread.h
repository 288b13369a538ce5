// From Apple's open-source libpthread (include/pthread/pthread.h, include/sys/_pthread/_pthread_types.h).
#pragma once

#include <sys/types.h>
#include <time.h>

typedef struct _opaque_pthread_t* pthread_t;
typedef unsigned long pthread_key_t;

struct _opaque_pthread_attr_t {
    long __sig;
    char __opaque[56];
};
typedef struct _opaque_pthread_attr_t pthread_attr_t;

struct _opaque_pthread_mutexattr_t {
    long __sig;
    char __opaque[8];
};
typedef struct _opaque_pthread_mutexattr_t pthread_mutexattr_t;

struct _opaque_pthread_mutex_t {
    long __sig;
    char __opaque[56];
};
typedef struct _opaque_pthread_mutex_t pthread_mutex_t;

struct _opaque_pthread_condattr_t {
    long __sig;
    char __opaque[8];
};
typedef struct _opaque_pthread_condattr_t pthread_condattr_t;

struct _opaque_pthread_cond_t {
    long __sig;
    char __opaque[40];
};
typedef struct _opaque_pthread_cond_t pthread_cond_t;

struct _opaque_pthread_once_t {
    long __sig;
    char __opaque[8];
};
typedef struct _opaque_pthread_once_t pthread_once_t;

#define PTHREAD_MUTEX_INITIALIZER \
    {                             \
        0x32AAABA7, {             \
            0                     \
        }                         \
    }
#define PTHREAD_COND_INITIALIZER \
    {                            \
        0x3CB0B1BB, {            \
            0                    \
        }                        \
    }
#define PTHREAD_ONCE_INIT \
    {                     \
        0x30B1BCBA, {     \
            0             \
        }                 \
    }
#define PTHREAD_MUTEX_RECURSIVE 2

__BEGIN_DECLS
int pthread_create(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
int pthread_join(pthread_t, void**);
int pthread_detach(pthread_t);
int pthread_equal(pthread_t, pthread_t);
pthread_t pthread_self(void);
int pthread_main_np(void);
int pthread_setname_np(const char*);

int pthread_mutexattr_init(pthread_mutexattr_t*);
int pthread_mutexattr_destroy(pthread_mutexattr_t*);
int pthread_mutexattr_settype(pthread_mutexattr_t*, int);
int pthread_mutex_init(pthread_mutex_t*, const pthread_mutexattr_t*);
int pthread_mutex_destroy(pthread_mutex_t*);
int pthread_mutex_lock(pthread_mutex_t*);
int pthread_mutex_trylock(pthread_mutex_t*);
int pthread_mutex_unlock(pthread_mutex_t*);

int pthread_cond_init(pthread_cond_t*, const pthread_condattr_t*);
int pthread_cond_destroy(pthread_cond_t*);
int pthread_cond_signal(pthread_cond_t*);
int pthread_cond_broadcast(pthread_cond_t*);
int pthread_cond_wait(pthread_cond_t*, pthread_mutex_t*);
int pthread_cond_timedwait(pthread_cond_t*, pthread_mutex_t*, const struct timespec*);

int pthread_once(pthread_once_t*, void (*)(void));
int pthread_key_create(pthread_key_t*, void (*)(void*));
int pthread_key_delete(pthread_key_t);
void* pthread_getspecific(pthread_key_t);
int pthread_setspecific(pthread_key_t, const void*);
__END_DECLS
