#pragma once

#include <span>
#include <string>

#include "platform/CommandPlatform.h"

/// The diagnostic commands: which keys a machine's controller has, what its sensors read, and whether its
/// fans can be driven.
///
/// Each runs once on the calling thread, prints to the platform's console and returns the process's exit
/// status. While it runs, csmc uses a connection that the command takes from the platform. `arguments` are
/// all arguments without the program's name; the first is the flag that chose the command.
namespace corvane {

/// Exit status of `runDiag` when a termination signal cut a write test short. The fans were put back first.
inline constexpr int interruptedStatus = 130;

/// `--smc-write KEY[:u8] VALUE ...`: raw writes, in pairs; a last argument without a partner is ignored. A
/// pair that fails is reported on standard error and the next one still runs. 0; 1 when any pair failed; 2
/// when the controller cannot be opened.
int runSmcWrite(CommandPlatform& platform, std::span<const std::string> arguments);

/// `--temps`: what the safety sensors read and what the thermal curve makes of it. Always 0.
int runTemps(CommandPlatform& platform);

/// `--diag [probe|loop]`: the fans' keys and, as root, a write test, after which the fans are as they were.
/// 0; 1 when the controller cannot be opened or a fan could not be put back; `interruptedStatus`.
int runDiag(CommandPlatform& platform, std::span<const std::string> arguments);

/// `--dumpkeys`: every key that the controller lists, in its order, one per line. Always 0.
int runDumpKeys(CommandPlatform& platform);

}  // namespace corvane
