// From Apple's open-source Libc (include/assert.h). Without a guard: each inclusion looks at NDEBUG anew.
#include <sys/cdefs.h>

#undef assert
#ifdef NDEBUG
#define assert(condition) ((void)0)
#else
#define assert(condition) \
    (__builtin_expect(!(condition), 0) ? __assert_rtn(__func__, __FILE__, __LINE__, #condition) : (void)0)
#endif

#ifndef __cplusplus
#undef static_assert
#define static_assert _Static_assert
#endif

__BEGIN_DECLS
void __assert_rtn(const char*, const char*, int, const char*) __dead2;
__END_DECLS
