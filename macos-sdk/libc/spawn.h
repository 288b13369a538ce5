// From Apple's open-source xnu (libsyscall/wrappers/spawn/spawn.h).
#pragma once

#include <signal.h>
#include <sys/types.h>

typedef void* posix_spawnattr_t;
typedef void* posix_spawn_file_actions_t;

#define POSIX_SPAWN_SETSIGDEF 0x0004
#define POSIX_SPAWN_SETSIGMASK 0x0008
#define POSIX_SPAWN_CLOEXEC_DEFAULT 0x4000

__BEGIN_DECLS
int posix_spawn(pid_t* __restrict, const char* __restrict, const posix_spawn_file_actions_t*,
                const posix_spawnattr_t* __restrict, char* const*, char* const*);
int posix_spawnp(pid_t* __restrict, const char* __restrict, const posix_spawn_file_actions_t*,
                 const posix_spawnattr_t* __restrict, char* const*, char* const*);
int posix_spawnattr_init(posix_spawnattr_t*);
int posix_spawnattr_destroy(posix_spawnattr_t*);
int posix_spawnattr_setflags(posix_spawnattr_t*, short);
int posix_spawnattr_setsigdefault(posix_spawnattr_t* __restrict, const sigset_t* __restrict);
int posix_spawnattr_setsigmask(posix_spawnattr_t* __restrict, const sigset_t* __restrict);
int posix_spawn_file_actions_init(posix_spawn_file_actions_t*);
int posix_spawn_file_actions_destroy(posix_spawn_file_actions_t*);
int posix_spawn_file_actions_addopen(posix_spawn_file_actions_t* __restrict, int, const char* __restrict, int,
                                     mode_t);
int posix_spawn_file_actions_adddup2(posix_spawn_file_actions_t*, int, int);
int posix_spawn_file_actions_addclose(posix_spawn_file_actions_t*, int);
__END_DECLS
