#include <QDir>
#include <QFile>
#include <cstdlib>

#include "tests/app/ui/ControlTest.h"

namespace corvane {
namespace {

/// Pictures of all controls, to be looked at: written into the folder that CORVANE_SCREENSHOTS names.
class GalleryTest : public ControlTest {
protected:
    void SetUp() override {
        const char* folder = std::getenv("CORVANE_SCREENSHOTS");
        if (folder == nullptr) {
            GTEST_SKIP() << "CORVANE_SCREENSHOTS names no folder";
        }
        folder_ = QDir(folder);
    }

    void show() {
        load("Loader { objectName: 'loader'; source: 'file://" CORVANE_GALLERY "' }");
        ASSERT_GT(item("loader").width(), 0) << "the gallery cannot be loaded";
        window->setResizeMode(QQuickView::SizeRootObjectToView);
        window->resize(item("loader").size().toSize());
        renderAll(*window);
    }
    void save(const char* name) {
        QTest::qWait(300);  // motion comes to its end
        EXPECT_TRUE(picture().save(folder_.filePath(name)));
    }

private:
    QDir folder_;
};

TEST_F(GalleryTest, IsLight) {
    show();
    focus("filled");
    save("gallery-light.png");
}

TEST_F(GalleryTest, IsDarkAndGermanWithAnOpenMenu) {
    look.setDark(true);
    speakGerman();
    show();
    click("menu");
    save("gallery-dark.png");
}

}  // namespace
}  // namespace corvane
