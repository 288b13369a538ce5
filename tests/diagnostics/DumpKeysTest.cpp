#include <string>

#include "smc/diagnostics/diagnostics.h"
#include "tests/diagnostics/DiagnosticsFixture.h"

namespace corvane {
namespace {

TEST(DumpKeys, ShowsEveryKeyOfATinyMac) {
    DiagnosticsPlatform platform;
    EXPECT_EQ(runDumpKeys(platform), 0);
    EXPECT_EQ(platform.recording.output,
              "#KEY: size=4 type=ui32 attrs=0x80  bytes=[00 00 00 09]  9\n"
              "F0Ac: size=4 type=flt  attrs=0x85  bytes=[00 00 00 00]  0.00\n"
              "F0Md: size=1 type=ui8  attrs=0xd0  bytes=[00]  0\n"
              "F0Mn: size=4 type=flt  attrs=0x84  bytes=[00 00 7a 44]  1000.00\n"
              "F0Mx: size=4 type=flt  attrs=0x84  bytes=[00 40 9c 45]  5000.00\n"
              "F0Tg: size=4 type=flt  attrs=0xd4  bytes=[00 00 00 00]  0.00\n"
              "FNum: size=1 type=ui8  attrs=0x80  bytes=[01]  1\n"
              "Ftst: size=1 type=ui8  attrs=0xd0  bytes=[00]  0\n"
              "Tp09: size=4 type=flt  attrs=0x84  bytes=[00 00 70 42]  60.00\n");
    EXPECT_EQ(platform.recording.errors, "");
}

TEST(DumpKeys, SaysWhichKeyCannotBeRead) {
    DiagnosticsPlatform platform;
    platform.machine.mac.setFault("Tp09", KeyFault::readFails());
    EXPECT_EQ(runDumpKeys(platform), 0);
    EXPECT_NE(platform.recording.output.find(
                  "Tp09: size=4 type=flt  attrs=0x84  bytes=[]  not readable (rc=133)\n"),
              std::string::npos);
}

TEST(DumpKeys, ShowsAsManyLinesAsThereAreKeys) {
    for (const MacModel& model : macModels()) {
        DiagnosticsPlatform platform(model);
        EXPECT_EQ(runDumpKeys(platform), 0);
        EXPECT_EQ(occurrences(platform.recording.output, "\n"),
                  static_cast<int>(platform.machine.mac.keys().size()))
            << model.name;
        EXPECT_EQ(platform.machine.mac.writeCount(), 0U);
    }
}

TEST(DumpKeys, SaysWhyThereIsNothingWithoutAController) {
    DiagnosticsPlatform platform;
    platform.machine.mac.setSmcPresent(false);
    EXPECT_EQ(runDumpKeys(platform), 0);
    EXPECT_EQ(platform.recording.output, "");
    EXPECT_EQ(platform.recording.errors, "csmc_open failed: -1\n");
}

}  // namespace
}  // namespace corvane
