// What the compiler's own limits.h leaves to the system. From Apple's open-source xnu (bsd/sys/syslimits.h).
#pragma once

#define NAME_MAX 255
#define PATH_MAX 1024
#define PIPE_BUF 512
#define IOV_MAX 1024
