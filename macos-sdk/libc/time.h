// From Apple's open-source Libc (include/time.h) and xnu (bsd/sys/_types/_timespec.h).
#pragma once

#include <stddef.h>
#include <sys/types.h>

#define CLOCKS_PER_SEC ((clock_t)1000000)
#define TIME_UTC 1

struct timespec {
    time_t tv_sec;
    long tv_nsec;
};

struct tm {
    int tm_sec;
    int tm_min;
    int tm_hour;
    int tm_mday;
    int tm_mon;
    int tm_year;
    int tm_wday;
    int tm_yday;
    int tm_isdst;
    long tm_gmtoff;
    char* tm_zone;
};

typedef enum {
    _CLOCK_REALTIME = 0,
#define CLOCK_REALTIME _CLOCK_REALTIME
    _CLOCK_MONOTONIC = 6,
#define CLOCK_MONOTONIC _CLOCK_MONOTONIC
    _CLOCK_MONOTONIC_RAW = 4,
#define CLOCK_MONOTONIC_RAW _CLOCK_MONOTONIC_RAW
    _CLOCK_UPTIME_RAW = 8,
#define CLOCK_UPTIME_RAW _CLOCK_UPTIME_RAW
    _CLOCK_PROCESS_CPUTIME_ID = 12,
#define CLOCK_PROCESS_CPUTIME_ID _CLOCK_PROCESS_CPUTIME_ID
    _CLOCK_THREAD_CPUTIME_ID = 16
#define CLOCK_THREAD_CPUTIME_ID _CLOCK_THREAD_CPUTIME_ID
} clockid_t;

__BEGIN_DECLS
clock_t clock(void);
time_t time(time_t*);
double difftime(time_t, time_t);
time_t mktime(struct tm*);
time_t timegm(struct tm*);
char* asctime(const struct tm*);
char* ctime(const time_t*);
struct tm* gmtime(const time_t*);
struct tm* gmtime_r(const time_t* __restrict, struct tm* __restrict);
struct tm* localtime(const time_t*);
struct tm* localtime_r(const time_t* __restrict, struct tm* __restrict);
size_t strftime(char* __restrict, size_t, const char* __restrict, const struct tm* __restrict);
char* strptime(const char* __restrict, const char* __restrict, struct tm* __restrict);
void tzset(void);
int nanosleep(const struct timespec*, struct timespec*);
int clock_gettime(clockid_t, struct timespec*);
uint64_t clock_gettime_nsec_np(clockid_t);
int timespec_get(struct timespec*, int);
__END_DECLS
