#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <vector>

#include "pictures.h"
#include "shown_item.h"
#include "views/colors/colors.h"

namespace varnhold::testing {
namespace {

constexpr const char* gallery =
    "import \"file://" VIEWS_TESTS "/settings/controls/gallery\"\nGallery {}";

// As the pointer does it; the screen of a test may be too small for its cursor to get everywhere.
void moveTo(QWidget& widget, const QPoint& at) {
    QMouseEvent move(QEvent::MouseMove, at, widget.mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
    QCoreApplication::sendEvent(&widget, &move);
}

QImage oneUnderTheOther(const std::vector<QImage>& pictures) {
    QSize size;
    for (const QImage& each : pictures) {
        size = QSize(std::max(size.width(), each.width()), size.height() + each.height());
    }
    QImage all(size, QImage::Format_ARGB32_Premultiplied);
    all.fill(pictures.front().pixelColor(0, 0));
    QPainter painter(&all);
    int y = 0;
    for (QImage each : pictures) {
        each.setDevicePixelRatio(1);
        painter.drawImage(0, y, each);
        y += each.height();
    }
    return all;
}

class SettingsPictures : public ::testing::TestWithParam<bool> {
protected:
    void SetUp() override { QApplication::setPalette(GetParam() ? darkPalette() : lightPalette()); }
    void TearDown() override { QApplication::setPalette(lightPalette()); }
};

TEST_P(SettingsPictures, GalleryOfTheControls) {
    ShownItem shown(gallery, {960, 820});
    shown.press(Qt::Key_Tab); // a ring to see
    QTest::mouseMove(&shown.widget, middleOf(shown.named(QStringLiteral("Delete"))));
    expectPicture(GetParam() ? QStringLiteral("gallery-dark") : QStringLiteral("gallery"),
                  QPixmap::fromImage(shown.widget.grabFramebuffer()));
}

// What tells a pointer that something can be pressed is seen on nothing but the control itself.
TEST_P(SettingsPictures, ControlsUnderThePointer) {
    ShownItem shown(gallery, {960, 820});
    const auto picture = [&shown](const QQuickItem* item) {
        const QRect place = item->mapRectToScene(item->boundingRect()).toAlignedRect();
        const QImage all = shown.widget.grabFramebuffer();
        const qreal scale = all.devicePixelRatio();
        const QRect part = place.adjusted(-4, -4, 4, 4);
        return all.copy(QRect(part.topLeft() * scale, part.size() * scale));
    };
    std::vector<QImage> hovered;
    for (const char* name :
         {"Reset", "Save", "Delete", "Connect", "Attach File / Folder", "Objectives", "paperclip",
          "More Effort", "Short", "Provider", "Remove doctrine", "Remove from library"}) {
        const QQuickItem* control = shown.named(QString::fromUtf8(name));
        ASSERT_NE(control, nullptr) << name;
        moveTo(shown.widget, {950, 810});
        const QImage before = picture(control);
        moveTo(shown.widget, middleOf(control));
        hovered.push_back(picture(control));
        EXPECT_NE(hovered.back(), before) << name;
    }
    expectPicture(GetParam() ? QStringLiteral("hover-dark") : QStringLiteral("hover"),
                  QPixmap::fromImage(oneUnderTheOther(hovered)));
}

INSTANTIATE_TEST_SUITE_P(All, SettingsPictures, ::testing::Bool(),
                         [](const auto& which) { return which.param ? "Dark" : "Light"; });

} // namespace
} // namespace varnhold::testing
