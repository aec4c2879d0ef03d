#pragma once

#include <QWidget>

namespace varnhold {

// A text of several lines that wraps at words, with its emoji in colour. Plain text: nothing in it
// is taken for markup. Its height follows its width, so a layout never cuts it.
class TextBlock final : public QWidget {
    Q_OBJECT
public:
    explicit TextBlock(const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text_;
};

} // namespace varnhold
