#pragma once

extern "C" {

// Apple's open-source Libc, crt_externs.h: where the process keeps its environment, for libraries, which do
// not see `environ` itself.
char*** _NSGetEnviron(void);

}  // extern "C"
