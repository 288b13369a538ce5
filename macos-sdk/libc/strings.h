// From Apple's open-source Libc (include/strings.h).
#pragma once

#include <stddef.h>
#include <sys/cdefs.h>

__BEGIN_DECLS
int strcasecmp(const char*, const char*);
int strncasecmp(const char*, const char*, size_t);
__END_DECLS
