#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/installer/LaunchdPropertyList.h"

namespace corvane {
namespace {

TEST(LaunchdPropertyList, RegistersTheHelperToBeStartedOnDemand) {
    EXPECT_EQ(makePlist({}),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
              "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
              "<plist version=\"1.0\">\n"
              "<dict>\n"
              "    <key>Label</key>\n"
              "    <string>de.tavrin.corvane.smchelper</string>\n"
              "    <key>ProgramArguments</key>\n"
              "    <array>\n"
              "        <string>/Library/PrivilegedHelperTools/de.tavrin.corvane</string>\n"
              "        <string>--daemon</string>\n"
              "    </array>\n"
              "    <key>MachServices</key>\n"
              "    <dict>\n"
              "        <key>de.tavrin.corvane.smchelper</key>\n"
              "        <true/>\n"
              "    </dict>\n"
              "    <key>StandardErrorPath</key>\n"
              "    <string>/var/log/corvane-smchelper.log</string>\n"
              "    <key>StandardOutPath</key>\n"
              "    <string>/var/log/corvane-smchelper.log</string>\n"
              "</dict>\n"
              "</plist>\n");
}

TEST(LaunchdPropertyList, KeepsAPathWithMarkupAText) {
    EXPECT_THAT(makePlist({.helper = "/R&D <1>/helper"}),
                testing::HasSubstr("<string>/R&amp;D &lt;1&gt;/helper</string>"));
}

}  // namespace
}  // namespace corvane
