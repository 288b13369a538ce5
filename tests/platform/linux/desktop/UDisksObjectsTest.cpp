#include <map>
#include <memory>
#include <optional>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/desktop/UDisksObjects.h"
#include "tests/support/FakeUDisks.h"
#include "tests/support/PrivateBus.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Variants = std::map<std::string, sdbus::Variant>;
using Reply = std::map<sdbus::ObjectPath, std::map<std::string, Variants>>;

/// An internal and an external drive, and what is on them.
class UDisksObjectsTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
        // Messages are made for a connection; nothing is sent.
        connection = HelperBus{bus.address()}.connect();
        someone = sdbus::createProxy(*connection, "org.example.Name", "/");
        add("drives/ssd", FakeUDisks::drive(""));
        add("drives/usb", FakeUDisks::drive("usb"));
    }

    void add(const std::string& name, const FakeUDisks::Properties& properties) {
        auto& object = reply[sdbus::ObjectPath(FakeUDisks::path(name))];
        for (const auto& [interface, values] : properties) {
            object["org.freedesktop.UDisks2." + interface] = values;
        }
    }

    sdbus::Variant& property(const std::string& name, const std::string& interface,
                             const std::string& property) {
        return reply[sdbus::ObjectPath(FakeUDisks::path(name))]["org.freedesktop.UDisks2." + interface]
                    [property];
    }

    static sdbus::Variant pathOf(const std::string& name) {
        return sdbus::Variant(sdbus::ObjectPath(FakeUDisks::path(name)));
    }

    template <typename T>
    [[nodiscard]] UDisksObjects read(const T& value) const {
        sdbus::MethodCall message = someone->createMethodCall("org.example.Interface", "Carry");
        message << value;
        message.seal();
        return readUDisksObjects(message);
    }

    [[nodiscard]] std::vector<Volume> volumes() const { return volumesOf(read(reply)); }

    /// Whether the only volume counts as internal.
    [[nodiscard]] std::optional<bool> isInternal() const {
        const auto all = volumes();
        return all.size() == 1 ? all.front().isInternal : std::nullopt;
    }

    Reply reply;
    PrivateBus bus;
    std::unique_ptr<sdbus::IConnection> connection;
    std::unique_ptr<sdbus::IProxy> someone;
};

TEST_F(UDisksObjectsTest, AreVolumesByTheDriveTheyAreOn) {
    add("block_devices/nvme0n1p2", FakeUDisks::block("drives/ssd", "", {"/"}));
    add("block_devices/nvme0n1p3", FakeUDisks::block("drives/ssd", "home", {"/home"}));
    add("block_devices/sda", FakeUDisks::block("drives/usb", "", {}));
    add("block_devices/sda1", FakeUDisks::block("drives/usb", "My Drive", {"/media/anna/My Drive"}));
    EXPECT_THAT(volumes(),
                ElementsAre(Volume{"/", std::nullopt, true, false}, Volume{"/home", "home", true, true},
                            Volume{"/media/anna/My Drive", "My Drive", false, true}));
}

TEST_F(UDisksObjectsTest, AreExternalOnEveryBusForThatAndWhenTheyCanBeRemoved) {
    add("block_devices/sda1", FakeUDisks::block("drives/usb", "", {"/srv/data"}));
    for (const auto& [name, isExternal] : std::map<std::string, bool>{
             {"usb", true}, {"sdio", true}, {"ieee1394", true}, {"", false}, {"USB", false}}) {
        property("drives/usb", "Drive", "ConnectionBus") = sdbus::Variant(name);
        EXPECT_EQ(isInternal(), !isExternal) << name;
    }
    property("drives/usb", "Drive", "MediaRemovable") = sdbus::Variant(true);
    EXPECT_EQ(isInternal(), false);
    property("drives/usb", "Drive", "MediaRemovable") = sdbus::Variant(false);
    property("drives/usb", "Drive", "Removable") = sdbus::Variant(true);
    EXPECT_EQ(isInternal(), false);
    property("block_devices/sda1", "Block", "HintIgnore") = sdbus::Variant(true);
    EXPECT_EQ(isInternal(), true);
    EXPECT_EQ(volumes().front().isBrowsable, false);
}

TEST_F(UDisksObjectsTest, AreNothingToLookIntoWhereTheSystemStartsFrom) {
    add("block_devices/sda1",
        FakeUDisks::block("drives/usb", "", {"/", "/boot", "/boot/efi", "/efi", "/bootleg"}));
    std::vector<bool> browsable;
    for (const Volume& volume : volumes()) {
        browsable.push_back(volume.isBrowsable.value());
    }
    EXPECT_THAT(browsable, ElementsAre(false, false, false, false, true));
}

TEST_F(UDisksObjectsTest, LeadFromAnEncryptedVolumeToItsDrive) {
    add("block_devices/sda1", FakeUDisks::block("drives/usb", "", {}));
    add("block_devices/dm_2d0", FakeUDisks::block("none", "Secret", {"/srv/secret"}));
    property("block_devices/dm_2d0", "Block", "Drive") = sdbus::Variant(sdbus::ObjectPath("/"));
    EXPECT_EQ(isInternal(), true);
    property("block_devices/dm_2d0", "Block", "CryptoBackingDevice") = pathOf("block_devices/sda1");
    EXPECT_EQ(isInternal(), false);
}

TEST_F(UDisksObjectsTest, EndWhereDevicesLieOnEachOther) {
    for (const auto& [upper, lower] :
         {std::pair("block_devices/a", "block_devices/b"), std::pair("block_devices/b", "block_devices/a")}) {
        add(upper, FakeUDisks::block("none", "", {}));
        property(upper, "Block", "CryptoBackingDevice") = pathOf(lower);
    }
    property("block_devices/a", "Filesystem", "MountPoints") = FakeUDisks::mountPoints({"/srv/a"});
    EXPECT_EQ(isInternal(), true);
}

TEST_F(UDisksObjectsTest, AreExternalOnALoopDeviceThatAUserSetUp) {
    add("block_devices/loop0", FakeUDisks::block("none", "Image", {"/srv/image"}));
    property("block_devices/loop0", "Loop", "SetupByUID") = sdbus::Variant(std::uint32_t{0});
    EXPECT_EQ(isInternal(), true);
    property("block_devices/loop0", "Filesystem", "MountPoints") =
        FakeUDisks::mountPoints({"/run/media/anna/Image"});
    EXPECT_EQ(isInternal(), false);
    property("block_devices/loop0", "Filesystem", "MountPoints") = FakeUDisks::mountPoints({"/srv/image"});
    property("block_devices/loop0", "Loop", "SetupByUID") = sdbus::Variant(std::uint32_t{1000});
    EXPECT_EQ(isInternal(), false);

    property("block_devices/loop0", "Filesystem", "MountPoints") = FakeUDisks::mountPoints({});
    add("block_devices/loop0p1", FakeUDisks::block("none", "", {"/srv/part"}));
    property("block_devices/loop0p1", "Partition", "Table") = pathOf("block_devices/loop0");
    EXPECT_EQ(isInternal(), false) << "nor otherwise on a partition of it";
}

TEST_F(UDisksObjectsTest, AreOneVolumeForEachPathWithTheBytesItHas) {
    add("block_devices/sda1", FakeUDisks::block("drives/usb", "", {}));
    std::vector<std::vector<std::uint8_t>> points;
    for (const std::string path : {"/media/a", "relative", "", "/media/\xff"}) {
        points.emplace_back(path.begin(), path.end());
    }
    points.front().insert(points.front().end(), {0, 'x', 0});
    property("block_devices/sda1", "Filesystem", "MountPoints") = sdbus::Variant(points);
    EXPECT_THAT(volumes(), ElementsAre(Volume{"/media/a", std::nullopt, false, true},
                                       Volume{"/media/\xff", std::nullopt, false, true}));
}

TEST_F(UDisksObjectsTest, AreWithoutWhatIsNotInTheAgreedForm) {
    const std::vector<sdbus::Variant> values{sdbus::Variant(std::string("text")), sdbus::Variant(2.5),
                                             sdbus::Variant(std::vector<std::string>{"a"}),
                                             sdbus::Variant(sdbus::Struct<bool, std::string>(true, "x"))};
    for (const sdbus::Variant& value : values) {
        add("block_devices/sda1", FakeUDisks::block("drives/usb", "Label", {"/media/a"}));
        for (const char* name : {"Drive", "CryptoBackingDevice", "HintIgnore"}) {
            property("block_devices/sda1", "Block", name) = value;
        }
        property("block_devices/sda1", "Loop", "SetupByUID") = value;
        property("block_devices/sda1", "Partition", "Table") = value;
        EXPECT_THAT(volumes(), ElementsAre(Volume{"/media/a", "Label", false, true}));
        property("block_devices/sda1", "Filesystem", "MountPoints") = value;
        EXPECT_THAT(volumes(), IsEmpty());
    }
}

TEST_F(UDisksObjectsTest, AreNotBelievedInAnotherForm) {
    EXPECT_THROW(static_cast<void>(read(std::string("nonsense"))), sdbus::Error);
    EXPECT_THROW(static_cast<void>(read(Variants{{"a", sdbus::Variant(true)}})), sdbus::Error);
}

TEST_F(UDisksObjectsTest, AreNotBelievedWhenThereAreTooMany) {
    for (int i = 0; i < 100'000; ++i) {
        reply[sdbus::ObjectPath(fmt::format("/o{}", i))];
    }
    EXPECT_THROW(static_cast<void>(read(reply)), sdbus::Error);
}

TEST_F(UDisksObjectsTest, HaveOnlySoManyMountPoints) {
    add("block_devices/sda1",
        FakeUDisks::block("drives/usb", "", std::vector<std::string>(10'000, "/media/a")));
    EXPECT_EQ(volumes().size(), maxMountPoints);
}

}  // namespace
}  // namespace corvane
