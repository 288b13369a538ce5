// What is declared of Apple's C library for other systems to compile with (macos-sdk/libc): compiled against
// the real one, this tells whether it is the same. All of it is about the C library's own names.

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <ctime>
#include <cwchar>

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace corvane {

namespace {

// Types whose width decides how they are handed over.
static_assert(sizeof(off_t) == 8);
static_assert(sizeof(time_t) == 8);
static_assert(sizeof(dev_t) == 4);
static_assert(sizeof(mode_t) == 2);
static_assert(sizeof(nlink_t) == 2);
static_assert(sizeof(ino_t) == 8);
static_assert(sizeof(pid_t) == 4);
static_assert(sizeof(uid_t) == 4);
static_assert(sizeof(sigset_t) == 4);
static_assert(sizeof(wchar_t) == 4);
static_assert(sizeof(mbstate_t) == 128);
static_assert(sizeof(pthread_mutex_t) == 64);
static_assert(sizeof(pthread_cond_t) == 48);
static_assert(sizeof(posix_spawnattr_t) == sizeof(void*));
static_assert(sizeof(struct timespec) == 16);
static_assert(sizeof(struct sigaction) == 16);
static_assert(sizeof(struct pollfd) == 8);
static_assert(sizeof(struct rlimit) == 16);

static_assert(sizeof(struct stat) == 144);
static_assert(offsetof(struct stat, st_mode) == 4);
static_assert(offsetof(struct stat, st_ino) == 8);
static_assert(offsetof(struct stat, st_size) == 96);

// Numbers that Linux has others for, or could.
static_assert(O_RDONLY == 0 && O_WRONLY == 1 && O_RDWR == 2);
static_assert(O_NONBLOCK == 0x4 && O_CREAT == 0x200 && O_TRUNC == 0x400 && O_EXCL == 0x800);
static_assert(O_NOCTTY == 0x20000 && O_DIRECTORY == 0x100000 && O_CLOEXEC == 0x1000000);
static_assert(F_SETFD == 2 && FD_CLOEXEC == 1);
static_assert(S_IFMT == 0170000 && S_IFREG == 0100000 && S_IFDIR == 0040000);
static_assert(ENOENT == 2 && EINTR == 4 && EEXIST == 17 && EAGAIN == 35 && ETIMEDOUT == 60 && ENOTSUP == 45);
static_assert(SIGHUP == 1 && SIGINT == 2 && SIGKILL == 9 && SIGTERM == 15 && SIGCHLD == 20 && SIGUSR1 == 30);
static_assert(SIG_BLOCK == 1 && SIG_UNBLOCK == 2 && SIG_SETMASK == 3);
static_assert(POSIX_SPAWN_SETSIGDEF == 0x4 && POSIX_SPAWN_SETSIGMASK == 0x8 &&
              POSIX_SPAWN_CLOEXEC_DEFAULT == 0x4000);
static_assert(RLIMIT_FSIZE == 1 && SIGXFSZ == 25);
static_assert(POLLIN == 0x1 && POLLHUP == 0x10);
static_assert(RTLD_NOW == 0x2 && RTLD_LOCAL == 0x4);
static_assert(CLOCK_REALTIME == 0 && CLOCK_MONOTONIC == 6 && CLOCK_UPTIME_RAW == 8);

}  // namespace

}  // namespace corvane
