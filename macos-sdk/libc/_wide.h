// Types of wide characters and of locales. From Apple's open-source xnu (bsd/arm/_types.h) and Libc
// (include/_types).
#pragma once

#include <sys/types.h>

typedef int wint_t;
typedef union {
    char __bytes[128];
    long long __alignment;
} __mbstate_t;
typedef __mbstate_t mbstate_t;
typedef int wctrans_t;
typedef uint32_t wctype_t;
typedef struct _xlocale* locale_t;

#define WEOF ((wint_t)-1)
