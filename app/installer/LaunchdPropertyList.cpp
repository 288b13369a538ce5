#include "app/installer/LaunchdPropertyList.h"

#include <string_view>

#include <fmt/format.h>

#include "platform/FanHelperProtocol.h"
#include "platform/XmlText.h"

namespace corvane {

namespace {

constexpr std::string_view plistForm = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
    <key>Label</key>
    <string>{label}</string>
    <key>ProgramArguments</key>
    <array>
        <string>{helper}</string>
        <string>--daemon</string>
    </array>
    <key>MachServices</key>
    <dict>
        <key>{label}</key>
        <true/>
    </dict>
    <key>StandardErrorPath</key>
    <string>{log}</string>
    <key>StandardOutPath</key>
    <string>{log}</string>
</dict>
</plist>
)";

}  // namespace

std::string makePlist(const LaunchdLocations& installed) {
    return fmt::format(plistForm, fmt::arg("label", FanHelperProtocol::serviceName),
                       fmt::arg("helper", xmlText(installed.helper.string())),
                       fmt::arg("log", xmlText(installed.log.string())));
}

}  // namespace corvane
