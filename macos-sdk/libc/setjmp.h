// From Apple's open-source Libc (include/setjmp.h); the buffer is that of arm64.
#pragma once

#include <sys/cdefs.h>

typedef int jmp_buf[48];

__BEGIN_DECLS
int setjmp(jmp_buf);
void longjmp(jmp_buf, int) __dead2;
__END_DECLS
