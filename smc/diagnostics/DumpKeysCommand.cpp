#include "smc/SmcReading.h"
#include "smc/SmcSession.h"
#include "smc/csmc.h"
#include "smc/diagnostics/KeyDescription.h"
#include "smc/diagnostics/PrintLine.h"
#include "smc/diagnostics/diagnostics.h"

namespace corvane {

int runDumpKeys(CommandPlatform& platform) {
    const SmcSession session(platform.makeSmcConnection());
    Console& console = platform.console();
    if (const std::int32_t code = csmc_open(); code != 0) {
        printErrorLine(console, "csmc_open failed: {}", code);
        return 0;
    }
    forEachKey([&](const char* key) { printLine(console, "{}", describeKey(key)); });
    return 0;
}

}  // namespace corvane
