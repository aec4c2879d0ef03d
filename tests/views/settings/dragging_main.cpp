// The page to drag things about on, on a real display. Writes a line to its output for all that it
// is told, and where things stand for whoever moves the pointer.
//
//   show_dragging_board           the page
//   show_dragging_board TEXT      another program: a small window to drag the text out of

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QRasterWindow>
#include <QStyleFactory>
#include <cstdio>

#include "dragging_board.h"

namespace {

void say(const QString& line) {
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

class Outsider final : public QRasterWindow {
public:
    explicit Outsider(QString text) : text_(std::move(text)) {}

protected:
    void mouseMoveEvent(QMouseEvent* event) override {
        if (event->buttons() & Qt::LeftButton) {
            auto* drag = new QDrag(this);
            auto* data = new QMimeData;
            data->setText(text_);
            drag->setMimeData(data);
            drag->exec(Qt::CopyAction);
        }
    }

private:
    QString text_;
};

void place(const char* name, const varnhold::testing::Board& board, const QPoint& at) {
    const QPoint onScreen = board.page->mapToGlobal(at);
    say(QStringLiteral("at %1 %2 %3").arg(QLatin1String(name)).arg(onScreen.x()).arg(onScreen.y()));
}

int showBoard() {
    varnhold::testing::Board board;
    QObject::connect(&board, &varnhold::testing::Board::heard, &board, &say);
    QObject::connect(
        &board.session(), &varnhold::DragSession::finished, &board,
        [](const QString& payload, bool taken) {
            say(QStringLiteral("finished %1 %2")
                    .arg(payload, taken ? QStringLiteral("taken") : QStringLiteral("left")));
        });
    const auto first = QStringLiteral("first");
    for (int row = 0; row < 5; ++row) {
        place(qPrintable(QStringLiteral("first%1").arg(row)), board, board.row(first, row));
    }
    place("library0", board, board.row(QStringLiteral("library"), 0) - QPoint(0, 30));
    place("bots", board, board.middle(QStringLiteral("bots")));
    place("bot", board, board.middle(QStringLiteral("bot")));
    place("nowhere", board, {410, 390});
    say(QStringLiteral("ready"));
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    if (argc > 1) {
        Outsider window(QString::fromLocal8Bit(argv[1]));
        window.setFlags(Qt::FramelessWindowHint);
        window.setTitle(QStringLiteral("outsider"));
        window.setGeometry(900, 20, 180, 60);
        window.show();
        return QApplication::exec();
    }
    return showBoard();
}
