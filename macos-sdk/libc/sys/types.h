// The system's integer types. From Apple's open-source xnu (bsd/sys/types.h, bsd/arm/_types.h).
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <sys/cdefs.h>

typedef uint32_t __uint32_t;
typedef uint16_t __uint16_t;
typedef int32_t __int32_t;
typedef int64_t __int64_t;
typedef uint64_t __uint64_t;

typedef unsigned char u_char;
typedef unsigned short u_short;
typedef unsigned int u_int;
typedef unsigned long u_long;
typedef uint8_t u_int8_t;
typedef uint16_t u_int16_t;
typedef uint32_t u_int32_t;
typedef uint64_t u_int64_t;

typedef long ssize_t;
typedef int64_t off_t;
typedef long time_t;
typedef unsigned long clock_t;
typedef int32_t suseconds_t;
typedef uint32_t useconds_t;

typedef int32_t pid_t;
typedef uint32_t uid_t;
typedef uint32_t gid_t;
typedef uint32_t id_t;

typedef int32_t dev_t;
typedef uint64_t ino_t;
typedef uint16_t mode_t;
typedef uint16_t nlink_t;
typedef int32_t blksize_t;
typedef int64_t blkcnt_t;
