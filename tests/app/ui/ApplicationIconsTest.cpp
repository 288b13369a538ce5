#include <QImage>
#include <QUrl>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "app/ui/ApplicationIcons.h"
#include "tests/app/ui/GuiApplication.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

class ApplicationIconsTest : public testing::Test {
protected:
    ApplicationIconsTest() { needGuiApplication(); }

    QImage icon(const std::string& name, QSize requested = {32, 32}) {
        const QString id = QUrl::toPercentEncoding(QString::fromStdString(name));
        return icons.requestPixmap(id, &reported, requested).toImage();
    }
    /// A red image in a file of its own.
    std::string redFile(const std::string& name, int width, int height) {
        std::string path = (folder.path() / name).string();
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::red);
        EXPECT_TRUE(image.save(QString::fromStdString(path)));
        return path;
    }
    bool isSymbol(const QImage& image) { return image == icon(""); }

    TemporaryFolder folder;
    ApplicationIcons icons;
    QSize reported;
};

TEST_F(ApplicationIconsTest, ReadAnImageAsLargeAsItIsAskedFor) {
    const QImage image = icon(redFile("a b%2F#1.png", 64, 64));
    EXPECT_EQ(image.size(), QSize(32, 32));
    EXPECT_EQ(reported, QSize(32, 32));
    EXPECT_EQ(image.pixelColor(16, 16), QColor(Qt::red));
}

TEST_F(ApplicationIconsTest, KeepTheShapeOfAnImage) {
    EXPECT_EQ(icon(redFile("wide.png", 64, 32)).size(), QSize(32, 16));
}

TEST_F(ApplicationIconsTest, AreNoLargerThanAnIconIs) {
    EXPECT_EQ(icon(redFile("icon.png", 512, 512), {4000, 4000}).size(), QSize(256, 256));
    EXPECT_EQ(icon("", {100000, 100000}).size(), QSize(256, 256));
    EXPECT_EQ(icon("", {}).size(), QSize(48, 48));
}

TEST_F(ApplicationIconsTest, ShowTheSymbolForWhatIsNoIcon) {
    const std::string text = folder.write("text.png", "no image").string();
    EXPECT_GT(icon("").pixelColor(16, 16).alpha(), 0);
    for (const std::string& name :
         {std::string("no-such-icon"), std::string("/no/such/file.png"), std::string("/"),
          std::string("/dev/zero"), std::string("../../etc/passwd"), folder.path().string(), text,
          redFile("huge.png", 2049, 1)}) {
        EXPECT_TRUE(isSymbol(icon(name))) << name;
    }
}

TEST_F(ApplicationIconsTest, DoNotWaitForTheOtherEndOfAPipe) {
    const std::string pipe = (folder / "pipe.png").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_TRUE(isSymbol(icon(pipe)));
}

TEST_F(ApplicationIconsTest, ReadNoMoreOfAFileThanAnIconTakes) {
    const std::string square = R"(<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64"></svg>)";
    const auto padded = [&](std::size_t bytes) { return square + std::string(bytes - square.size(), ' '); };
    EXPECT_FALSE(isSymbol(icon(folder.write("full.svg", padded(1 << 20)).string())));
    EXPECT_TRUE(isSymbol(icon(folder.write("long.svg", padded((1 << 20) + 1)).string())));
}

TEST_F(ApplicationIconsTest, ReadAFileWhoseNameIsNotOfTheLettersAtoZ) {
    EXPECT_EQ(icon(redFile("Größe — 図.png", 64, 64)).pixelColor(16, 16), QColor(Qt::red));
}

}  // namespace
}  // namespace corvane
