#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/awake/DriveMachine.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using Names = std::vector<std::string>;

Volume external(std::string path, std::optional<std::string> name) {
    return {.path = std::move(path), .name = std::move(name), .isInternal = false, .isBrowsable = true};
}

class DriveChoice : public testing::Test {
protected:
    DriveChoice() { machine.open(); }

    QList<DriveItem> drivesOf(std::vector<Volume> mounted) {
        machine.volumes.setMounted(std::move(mounted));
        return machine.manager->availableDrives();
    }
    Names namesOf(std::vector<Volume> mounted) {
        Names names;
        for (const DriveItem& drive : drivesOf(std::move(mounted))) {
            names.push_back(drive.name.toStdString());
        }
        return names;
    }
    /// External volumes of these names, mounted in this order.
    Names sorted(const Names& names) {
        std::vector<Volume> mounted;
        mounted.reserve(names.size());
        for (const std::string& name : names) {
            mounted.push_back(external("/media/" + name, name));
        }
        return namesOf(std::move(mounted));
    }

    DriveMachine machine;
};

TEST_F(DriveChoice, IsEmptyWithoutVolumes) {
    EXPECT_EQ(drivesOf({}), QList<DriveItem>());
}

TEST_F(DriveChoice, OffersExternalVolumesByPathAndName) {
    EXPECT_EQ(drivesOf({external("/media/me/1234-ABCD", "Backup")}),
              (QList<DriveItem>{{.path = "/media/me/1234-ABCD", .name = "Backup"}}));
}

TEST_F(DriveChoice, OffersNoInternalVolumes) {
    Volume volume = external("/media/a", "a");
    volume.isInternal = true;
    EXPECT_EQ(drivesOf({volume}), QList<DriveItem>());
    volume.isInternal = std::nullopt;
    EXPECT_EQ(drivesOf({volume}), QList<DriveItem>()) << "when the system does not say";
}

TEST_F(DriveChoice, OffersNoVolumesThatAreNotToBeLookedInto) {
    Volume volume = external("/media/a", "a");
    volume.isBrowsable = false;
    EXPECT_EQ(drivesOf({volume}), QList<DriveItem>());
    volume.isBrowsable = std::nullopt;
    EXPECT_EQ(drivesOf({volume}), QList<DriveItem>()) << "when the system does not say";
}

TEST_F(DriveChoice, OffersNothingOfWhichNothingIsKnown) {
    Volume volume;
    volume.path = "/media/a";
    EXPECT_EQ(drivesOf({volume}), QList<DriveItem>());
}

TEST_F(DriveChoice, NeverOffersTheRoot) {
    EXPECT_EQ(drivesOf({external("/", "Stick")}), QList<DriveItem>());
}

TEST_F(DriveChoice, CallsAVolumeWithoutANameByTheEndOfItsPath) {
    EXPECT_THAT(namesOf({external("/media/me/Backup", std::nullopt)}), ElementsAre("Backup"));
    EXPECT_THAT(namesOf({external("/media/me/Backup", "")}), ElementsAre("Backup"));
    EXPECT_THAT(namesOf({external("/media/me/Backup/", std::nullopt)}), ElementsAre("Backup"));
}

TEST_F(DriveChoice, OffersNoPathThatIsNoText) {
    EXPECT_EQ(drivesOf({external("/media/\xff\xfe", "Stick")}), QList<DriveItem>())
        << "it could not be found again";
    EXPECT_EQ(drivesOf({external("/media/\xc3\xa4", "Stick")}).size(), 1);
}

TEST_F(DriveChoice, SortsByNameWithoutRegardToCase) {
    EXPECT_THAT(sorted({"beta", "Alpha", "gamma"}), ElementsAre("Alpha", "beta", "gamma"));
    EXPECT_THAT(sorted({"gamma", "BETA", "alpha"}), ElementsAre("alpha", "BETA", "gamma"));
}

TEST_F(DriveChoice, KeepsEqualNamesInTheSystemsOrder) {
    EXPECT_EQ(drivesOf({external("/media/3", "disk"), external("/media/1", "Disk"),
                        external("/media/2", "DISK"), external("/media/0", "Alpha")}),
              (QList<DriveItem>{{.path = "/media/0", .name = "Alpha"},
                                {.path = "/media/3", .name = "disk"},
                                {.path = "/media/1", .name = "Disk"},
                                {.path = "/media/2", .name = "DISK"}}));
}

TEST_F(DriveChoice, SortsAsTheUsersLanguageDoes) {
    const Names names{"Öl", "Zebra", "Ofen"};
    machine.locale.prefer({"de-CH", "sv"});
    EXPECT_THAT(sorted(names), ElementsAre("Ofen", "Öl", "Zebra"));
    machine.locale.prefer({"sv", "de-CH"});
    EXPECT_THAT(sorted(names), ElementsAre("Ofen", "Zebra", "Öl"));
}

TEST_F(DriveChoice, SortsAsEnglishWithoutALanguageThatIsKnown) {
    for (const std::vector<std::string>& languages :
         {std::vector<std::string>{}, {""}, {"C"}, {"xx-YY"}, {"\xff"}}) {
        machine.locale.prefer(languages);
        EXPECT_THAT(sorted({"zebra", "Öl", "apple", "Banana"}),
                    ElementsAre("apple", "Banana", "Öl", "zebra"));
    }
}

TEST_F(DriveChoice, IsMadeAfreshEachTime) {
    EXPECT_EQ(drivesOf({external("/media/a", "a")}).size(), 1);
    EXPECT_EQ(drivesOf({}).size(), 0);
}

TEST_F(DriveChoice, OffersWhatIsChosenAlready) {
    machine.volumes.setMounted({external("/media/a", "a")});
    const QList<DriveItem> offered = machine.manager->availableDrives();
    ASSERT_EQ(offered.size(), 1);
    machine.manager->add(offered.constFirst());
    EXPECT_EQ(machine.manager->availableDrives(), offered);
}

}  // namespace
}  // namespace corvane
