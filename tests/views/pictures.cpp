#include "pictures.h"

#include <QColor>
#include <QDir>
#include <QGuiApplication>
#include <gtest/gtest.h>

namespace varnhold::testing {

namespace {

constexpr int visibleDifference = 24;     // of a channel, of 255
constexpr double differentPixels = 0.005; // share of them that is let pass

QString fileName(const QString& name) {
    return QStringLiteral("%1@%2x.png").arg(name).arg(qGuiApp->devicePixelRatio());
}

bool differs(const QColor& one, const QColor& other) {
    const auto far = [](int a, int b) { return std::abs(a - b) > visibleDifference; };
    return far(one.red(), other.red()) || far(one.green(), other.green()) ||
           far(one.blue(), other.blue()) || far(one.alpha(), other.alpha());
}

double shareOfDifferences(const QImage& one, const QImage& other) {
    int different = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            different += differs(one.pixelColor(x, y), other.pixelColor(x, y)) ? 1 : 0;
        }
    }
    return double(different) / (one.width() * one.height());
}

} // namespace

void expectPicture(const QString& name, const QPixmap& pixmap) {
    QImage picture = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    picture.setDevicePixelRatio(1);
    const QString reference =
        QDir(QStringLiteral(VIEWS_TESTS "/reference")).filePath(fileName(name));
    if (qEnvironmentVariableIsSet("VARNHOLD_REFRESH_PICTURES")) {
        ASSERT_TRUE(picture.save(reference));
        return;
    }
    const QImage wanted(reference);
    const QString painted = QDir(QStringLiteral(VIEWS_OUTPUT)).filePath(fileName(name));
    QDir().mkpath(QStringLiteral(VIEWS_OUTPUT));
    picture.save(painted); // to look at, should they differ
    ASSERT_EQ(picture.size(), wanted.size()) << painted.toStdString();
    EXPECT_LE(shareOfDifferences(picture, wanted), differentPixels) << painted.toStdString();
}

} // namespace varnhold::testing
