// What wraps C declarations. From Apple's open-source xnu (bsd/sys/cdefs.h).
#pragma once

#ifdef __cplusplus
#define __BEGIN_DECLS extern "C" {
#define __END_DECLS }
#else
#define __BEGIN_DECLS
#define __END_DECLS
#endif

#define __printflike(format, arguments) __attribute__((__format__(__printf__, format, arguments)))
#define __dead2 __attribute__((__noreturn__))
