// The page to drag things about on, on a real display. Writes a line to its output for all that it
// is told, and where things stand for whoever moves the pointer.
//
//   show_dragging_board                the page
//   show_dragging_board low            the same, too low for its lists
//   show_dragging_board forgetful      the same; rows go as soon as they are dragged
//   show_dragging_board outside TEXT   another program: a small window to drag the text out of
//   show_dragging_board files PATH     the same with a file

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QRasterWindow>
#include <QStyleFactory>
#include <QTimer>
#include <cstdio>

#include "dragging_board.h"

namespace {

void say(const QString& line) {
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

void sayAction(Qt::DropAction action) {
    say(action == Qt::IgnoreAction ? QStringLiteral("refused") : QStringLiteral("welcome"));
}

class Outsider final : public QRasterWindow {
public:
    Outsider(QString text, bool isPath) : text_(std::move(text)), isPath_(isPath) {}

protected:
    void mouseMoveEvent(QMouseEvent* event) override {
        if (event->buttons() & Qt::LeftButton) {
            auto* drag = new QDrag(this);
            auto* data = new QMimeData;
            if (isPath_) {
                data->setUrls({QUrl::fromLocalFile(text_)});
            } else {
                data->setText(text_);
            }
            drag->setMimeData(data);
            connect(drag, &QDrag::actionChanged, this, &sayAction);
            drag->exec(Qt::CopyAction);
        }
    }

private:
    QString text_;
    bool isPath_;
};

void place(const char* name, const varnhold::testing::Board& board, const QPoint& at) {
    const QPoint onScreen = board.page->mapToGlobal(at);
    say(QStringLiteral("at %1 %2 %3").arg(QLatin1String(name)).arg(onScreen.x()).arg(onScreen.y()));
}

int showBoard(const QString& manner) {
    constexpr int height = 400;
    varnhold::testing::Board board({700, manner == QStringLiteral("low") ? height / 2 : height});
    QObject::connect(&board, &varnhold::testing::Board::heard, &board, &say);
    QObject::connect(
        &board.session(), &varnhold::DragSession::finished, &board,
        [](const QString& payload, bool taken) {
            say(QStringLiteral("finished %1 %2")
                    .arg(payload, taken ? QStringLiteral("taken") : QStringLiteral("left")));
        });
    board.session().setCarrier([&board, &manner](QDrag& drag) {
        say(QStringLiteral("carried"));
        if (manner == QStringLiteral("forgetful")) {
            QTimer::singleShot(0, &board, [&board] {
                varnhold::testing::Board::fill(board.library, {});
                varnhold::testing::Board::fill(board.first, {});
            });
        }
        return drag.exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
    });
    const auto first = QStringLiteral("first");
    board.window.setWindowTitle(QStringLiteral("Board"));
    for (int row = 0; row < 4; ++row) {
        place(qPrintable(QStringLiteral("first%1").arg(row)), board, board.row(first, row));
    }
    place("free", board, board.row(first, 4));
    place("library0", board, board.row(QStringLiteral("library"), 0) - QPoint(0, 30));
    place("edge", board,
          board.find(QStringLiteral("scroll"))
              ->mapToScene({60, board.page->height() - 6.0})
              .toPoint());
    place("bots", board, board.middle(QStringLiteral("bots")));
    place("bot", board, board.middle(QStringLiteral("bot")));
    say(QStringLiteral("ready"));
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    const QStringList words = QApplication::arguments();
    const bool isPath = words.value(1) == QStringLiteral("files");
    if (isPath || words.value(1) == QStringLiteral("outside")) {
        Outsider window(words.value(2), isPath);
        window.setFlags(Qt::FramelessWindowHint);
        window.setTitle(QStringLiteral("outsider"));
        window.setGeometry(900, 20, 180, 60);
        window.show();
        say(QStringLiteral("at text 990 50"));
        say(QStringLiteral("ready"));
        return QApplication::exec();
    }
    return showBoard(words.value(1));
}
