#include <crt_externs.h>
#include <unistd.h>

char*** _NSGetEnviron(void) {
    return &environ;
}
