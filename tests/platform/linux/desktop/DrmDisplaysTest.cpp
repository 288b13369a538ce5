#include <filesystem>
#include <string>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/DrmDisplays.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

constexpr Display panel{.isBuiltIn = true};
constexpr Display monitor{.isBuiltIn = false};

class DrmDisplaysTest : public testing::Test {
protected:
    void connector(const std::string& name, const std::string& status) const {
        sys.write(fmt::format("class/drm/{}/status", name), status);
    }

    const TemporaryFolder sys;
    VirtualTime time;
    VirtualQueue mainLoop{time};
    DrmDisplays displays{mainLoop, sys.path().string()};
};

TEST_F(DrmDisplaysTest, OfALaptopAtItsDock) {
    sys.write("class/drm/version", "drm 1.1.0 20060810\n");
    sys.write("class/drm/card1/dev", "226:1\n");
    sys.write("class/drm/renderD128/dev", "226:128\n");
    connector("card1-eDP-1", "connected\n");
    connector("card1-DP-1", "disconnected\n");
    connector("card1-DP-2-8", "connected\n");
    connector("card1-HDMI-A-1", "unknown\n");
    connector("card1-Writeback-1", "connected\n");
    EXPECT_THAT(displays.online(), Optional(ElementsAre(monitor, panel)));
}

TEST_F(DrmDisplaysTest, AreBuiltInAtTheConnectorsOfPanels) {
    for (const char* kind : {"eDP", "LVDS", "DSI"}) {
        connector(fmt::format("card0-{}-1", kind), "connected\n");
    }
    EXPECT_THAT(displays.online(), Optional(ElementsAre(panel, panel, panel)));
}

TEST_F(DrmDisplaysTest, AreNotBuiltInElsewhere) {
    for (const char* kind : {"DP", "DVI-D", "DVI-I", "HDMI-A", "HDMI-B", "VGA", "TV", "Virtual", "USB"}) {
        connector(fmt::format("card0-{}-1", kind), "connected\n");
    }
    EXPECT_EQ(displays.online(), std::optional(std::vector<Display>(9, monitor)));
}

TEST_F(DrmDisplaysTest, AreNotWhatTheKernelCannotName) {
    connector("card0-Unknown-1", "connected\n");
    EXPECT_THAT(displays.online(), Optional(IsEmpty()));
}

TEST_F(DrmDisplaysTest, AreReadAfresh) {
    connector("card0-DP-1", "disconnected\n");
    EXPECT_THAT(displays.online(), Optional(IsEmpty()));
    connector("card0-DP-1", "connected\n");
    EXPECT_THAT(displays.online(), Optional(ElementsAre(monitor)));
    std::filesystem::remove_all(sys / "class/drm/card0-DP-1");
    EXPECT_THAT(displays.online(), Optional(IsEmpty()));
}

TEST_F(DrmDisplaysTest, WithoutAReadableStatusAreLeftOut) {
    connector("card0-DP-1", "connected\n");
    connector("card0-DP-2", "");
    connector("card0-DP-3", std::string(100'000, 'c'));
    connector("card0-DP-4", "connected and more\n");
    std::filesystem::create_directories(sys / "class/drm/card0-DP-5/status");
    std::filesystem::create_directories(sys / "class/drm/card0-DP-6");
    std::filesystem::create_directory_symlink("/no/such/folder", sys / "class/drm/card0-DP-7");
    connector("card0-1", "connected\n");
    connector("card0", "connected\n");
    connector("-DP-1", "connected\n");
    EXPECT_THAT(displays.online(), Optional(ElementsAre(monitor)));
}

TEST_F(DrmDisplaysTest, AreUnknownWithoutConnectors) {
    EXPECT_EQ(displays.online(), std::nullopt);
    EXPECT_EQ(DrmDisplays(mainLoop, "/no/such/folder").online(), std::nullopt);
    std::filesystem::create_directories(sys / "class/drm");
    EXPECT_THAT(displays.online(), Optional(IsEmpty()));
}

}  // namespace
}  // namespace corvane
