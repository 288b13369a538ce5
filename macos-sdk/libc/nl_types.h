// From Apple's open-source Libc (include/nl_types.h).
#pragma once

#include <sys/cdefs.h>

#define NL_SETD 0
#define NL_CAT_LOCALE 1

typedef struct __nl_cat_d* nl_catd;

__BEGIN_DECLS
nl_catd catopen(const char*, int);
char* catgets(nl_catd, int, int, const char*);
int catclose(nl_catd);
__END_DECLS
