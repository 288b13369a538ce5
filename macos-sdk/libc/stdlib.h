// From Apple's open-source Libc (include/stdlib.h).
#pragma once

#include <stddef.h>
#include <sys/types.h>

#define EXIT_SUCCESS 0
#define EXIT_FAILURE 1
#define RAND_MAX 0x7fffffff
#define MB_CUR_MAX (___mb_cur_max())

typedef struct {
    int quot;
    int rem;
} div_t;

typedef struct {
    long quot;
    long rem;
} ldiv_t;

typedef struct {
    long long quot;
    long long rem;
} lldiv_t;

__BEGIN_DECLS
int ___mb_cur_max(void);

void* malloc(size_t);
void* calloc(size_t, size_t);
void* realloc(void*, size_t);
void* aligned_alloc(size_t, size_t);
int posix_memalign(void**, size_t, size_t);
void free(void*);

void abort(void) __dead2;
void exit(int) __dead2;
void _Exit(int) __dead2;
void quick_exit(int) __dead2;
int atexit(void (*)(void));
int at_quick_exit(void (*)(void));

char* getenv(const char*);
int setenv(const char*, const char*, int);
int unsetenv(const char*);
int system(const char*);
char* realpath(const char* __restrict, char* __restrict);
int mkstemp(char*);
char* mkdtemp(char*);

int atoi(const char*);
long atol(const char*);
long long atoll(const char*);
double atof(const char*);
double strtod(const char*, char**);
float strtof(const char*, char**);
long double strtold(const char*, char**);
long strtol(const char*, char**, int);
long long strtoll(const char*, char**, int);
unsigned long strtoul(const char*, char**, int);
unsigned long long strtoull(const char*, char**, int);

int abs(int);
long labs(long);
long long llabs(long long);
div_t div(int, int);
ldiv_t ldiv(long, long);
lldiv_t lldiv(long long, long long);
int rand(void);
void srand(unsigned);
uint32_t arc4random(void);
void arc4random_buf(void*, size_t);
void qsort(void*, size_t, size_t, int (*)(const void*, const void*));
void* bsearch(const void*, const void*, size_t, size_t, int (*)(const void*, const void*));

int mblen(const char*, size_t);
int mbtowc(wchar_t* __restrict, const char* __restrict, size_t);
int wctomb(char*, wchar_t);
size_t mbstowcs(wchar_t* __restrict, const char* __restrict, size_t);
size_t wcstombs(char* __restrict, const wchar_t* __restrict, size_t);
__END_DECLS
