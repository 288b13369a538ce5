#include <QImage>
#include <QUrl>
#include <string>

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace corvane
