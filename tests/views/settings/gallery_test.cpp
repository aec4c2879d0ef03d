#include <QApplication>

#include "../pictures.h"
#include "shown_item.h"
#include "views/colours.h"

namespace varnhold::testing {
namespace {

class SettingsPictures : public ::testing::TestWithParam<bool> {
protected:
    void SetUp() override { QApplication::setPalette(GetParam() ? darkPalette() : lightPalette()); }
    void TearDown() override { QApplication::setPalette(lightPalette()); }
};

TEST_P(SettingsPictures, GalleryOfTheControls) {
    ShownItem shown("Gallery {}", {960, 820});
    shown.press(Qt::Key_Tab); // a ring to see
    QTest::mouseMove(&shown.widget, middleOf(shown.named(QStringLiteral("Delete"))));
    expectPicture(GetParam() ? QStringLiteral("gallery-dark") : QStringLiteral("gallery"),
                  QPixmap::fromImage(shown.widget.grabFramebuffer()));
}

INSTANTIATE_TEST_SUITE_P(All, SettingsPictures, ::testing::Bool(),
                         [](const auto& which) { return which.param ? "Dark" : "Light"; });

} // namespace
} // namespace varnhold::testing
