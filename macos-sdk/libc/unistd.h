// From Apple's open-source Libc (include/unistd.h) and xnu (bsd/sys/unistd.h).
#pragma once

#include <sys/types.h>

#define _POSIX_THREADS 200112L

#define STDIN_FILENO 0
#define STDOUT_FILENO 1
#define STDERR_FILENO 2

#define F_OK 0
#define X_OK 1
#define W_OK 2
#define R_OK 4

#define SEEK_SET 0
#define SEEK_CUR 1
#define SEEK_END 2

#define _SC_PAGESIZE 29
#define _SC_NPROCESSORS_ONLN 58

__BEGIN_DECLS
int access(const char*, int);
int chdir(const char*);
int close(int);
int dup(int);
int dup2(int, int);
int execv(const char*, char* const*);
int execve(const char*, char* const*, char* const*);
void _exit(int) __dead2;
pid_t fork(void);
int fsync(int);
int ftruncate(int, off_t);
char* getcwd(char*, size_t);
uid_t geteuid(void);
gid_t getgid(void);
pid_t getpid(void);
pid_t getppid(void);
uid_t getuid(void);
int isatty(int);
off_t lseek(int, off_t, int);
int mkostemp(char*, int);
int pipe(int[2]);
ssize_t read(int, void*, size_t);
ssize_t readlink(const char* __restrict, char* __restrict, size_t);
int rmdir(const char*);
pid_t setsid(void);
unsigned sleep(unsigned);
long sysconf(int);
int unlink(const char*);
int usleep(useconds_t);
ssize_t write(int, const void*, size_t);
__END_DECLS
