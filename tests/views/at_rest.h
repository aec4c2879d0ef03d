#pragma once

#include <QImage>
#include <QScreen>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

namespace varnhold::testing {

// What is on the screen of a window once it has been the same for so many frames.
inline QImage seenAtRest(const QWidget& window, int stillFrames = 12) {
    constexpr int frame = 16; // milliseconds
    QImage last;
    int same = 0;
    const bool rests = QTest::qWaitFor([&] {
        QTest::qWait(frame);
        const QImage now = window.screen()->grabWindow(window.winId()).toImage();
        same = now == last ? same + 1 : 0;
        last = now;
        return same == stillFrames;
    });
    EXPECT_TRUE(rests) << "it never comes to rest";
    return last.convertToFormat(QImage::Format_RGB32);
}

// Where two pictures of one size differ; empty if nowhere.
inline QRect difference(const QImage& one, const QImage& other) {
    EXPECT_EQ(one.size(), other.size());
    QRect where;
    for (int y = 0; y < std::min(one.height(), other.height()); ++y) {
        for (int x = 0; x < std::min(one.width(), other.width()); ++x) {
            if (one.pixel(x, y) != other.pixel(x, y)) {
                where |= QRect(x, y, 1, 1);
            }
        }
    }
    return where;
}

} // namespace varnhold::testing
