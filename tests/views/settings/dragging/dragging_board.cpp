#include "dragging_board.h"

#include <QGuiApplication>
#include <functional>
#include <initializer_list>
#include <vector>

#include "announced.h"

namespace varnhold::testing {

namespace {

constexpr int rowHeight = 30;
constexpr int listTop = 30; // under the zone's title

constexpr const char* boardQml = R"(
import QtQuick
import Varnhold

Item {
    id: root

    required property QtObject board
    required property KeyedListModel library
    required property KeyedListModel first
    required property KeyedListModel second

    component Entry: DragSource {
        required property int index
        required property string uid
        payload: uid
        kind: "model"
        Rectangle { anchors.fill: parent; color: Theme.accent }
        onBegan: { root.board.note(uid); root.board.tell("began " + uid) }
    }

    component Chain: DropZone {
        id: chain
        property alias list: rows
        property KeyedListModel model
        width: 200
        height: Math.max(rows.height + 30, 190)
        kinds: ["model"]
        onHoveredChanged: if (hovered) root.board.heard(name + " hovered")
        onTextDropped: text => root.board.tell(name + " zone " + text)
        DraggableList {
            id: rows
            y: 30
            width: 200
            rowHeight: 30
            spacing: 6
            kinds: ["model"]
            name: chain.name + " rows"
            model: chain.model
            delegate: Entry { required name }
            onRowEntered: uid => { root.board.tell(chain.name + " entered " + uid); root.board.reorder(model, uid) }
            onRowDropped: uid => root.board.tell(chain.name + " row " + uid)
            onZoneDropped: text => root.board.tell(chain.name + " list " + text)
        }
    }

    DropZone {
        objectName: "shelf"
        name: "Shelf"
        width: 140
        height: parent.height
        kinds: ["model"]
        onTextDropped: text => root.board.tell("Shelf zone " + text)
        Column {
            objectName: "library"
            spacing: 6
            y: 30
            Repeater {
                model: root.library
                delegate: Entry { required name; width: 140; height: 30 }
            }
        }
    }
    Flickable {
        objectName: "scroll"
        x: 150
        width: 250
        height: parent.height
        contentHeight: column.height
        clip: true
        Column {
            id: column
            Chain { objectName: "first"; name: "First"; model: root.first }
            Chain { objectName: "second"; name: "Second"; model: root.second }
        }
    }
    DropZone {
        objectName: "bots"
        name: "Bots"
        x: 420
        width: 100
        height: 100
        kinds: ["bot"]
        onTextDropped: text => root.board.tell("Bots zone " + text)
    }
    DragSource {
        objectName: "bot"
        x: 420
        y: 120
        width: 100
        height: 30
        payload: "com.example.bot"
        kind: "bot"
        name: "Bot"
    }
    DraggableList {
        objectName: "alone"
        name: "Alone"
        x: 540
        width: 100
        height: 150
        rowHeight: 30
        kinds: ["bot"]
        model: root.second
        delegate: Entry { required name }
        onRowDropped: uid => root.board.tell("Alone row " + uid)
        onZoneDropped: text => root.board.tell("Alone list " + text)
    }
    DragAnnouncer { objectName: "announcer" }
}
)";

} // namespace

Board::Board(const QSize& size) {
    fill(library, QStringLiteral("l0 l1 l2").split(QLatin1Char(' ')));
    fill(first, QStringLiteral("a b c d").split(QLatin1Char(' ')));
    fill(second, QStringLiteral("x y").split(QLatin1Char(' ')));
    page = new QQuickWidget(&window);
    page->setResizeMode(QQuickWidget::SizeRootObjectToView);
    page->setAcceptDrops(true);
    page->engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    auto* component = new QQmlComponent(page->engine(), page);
    component->setData(boardQml, QUrl(QStringLiteral("qrc:/board.qml")));
    if (!component->isReady()) {
        qFatal("%s", qPrintable(component->errorString()));
    }
    QObject* root = component->createWithInitialProperties(
        {{QStringLiteral("board"), QVariant::fromValue<QObject*>(this)},
         {QStringLiteral("library"), QVariant::fromValue(&library)},
         {QStringLiteral("first"), QVariant::fromValue(&first)},
         {QStringLiteral("second"), QVariant::fromValue(&second)}});
    page->setContent(QUrl(QStringLiteral("qrc:/board.qml")), component, root);
    window.setCentralWidget(page);
    window.resize(size);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    page->setFocus();
}

Board::~Board() {
    delete window.takeCentralWidget();
}

void Board::fill(KeyedListModel& list, const QStringList& uids) {
    std::vector<KeyedListModel::Row> rows;
    for (const QString& uid : uids) {
        rows.push_back({uid, {uid, QStringLiteral("Model ") + uid}});
    }
    list.sync(std::move(rows));
}

QStringList Board::uids(const KeyedListModel& list) {
    QStringList uids;
    for (int row = 0; row < list.count(); ++row) {
        uids.append(list.value(row, QStringLiteral("uid")).toString());
    }
    return uids;
}

void Board::reorder(KeyedListModel* list, const QString& over) {
    QStringList order = uids(*list);
    const auto from = order.indexOf(dragged);
    const auto to = order.indexOf(over);
    if (from >= 0 && to >= 0 && from != to) {
        order.move(from, to);
        fill(*list, order);
    }
}

QQuickItem* Board::find(const QString& name) const {
    auto* item = page->rootObject()->findChild<QQuickItem*>(name);
    EXPECT_NE(item, nullptr) << qPrintable(name);
    return item;
}

QQuickItem* Board::source(const QString& uid, QQuickItem* under) const {
    QQuickItem* item = under == nullptr ? page->rootObject() : under;
    if (item->property("uid").toString() == uid) {
        return item;
    }
    const QList<QQuickItem*> children = item->childItems();
    for (QQuickItem* child : children) {
        if (QQuickItem* found = source(uid, child)) {
            return found;
        }
    }
    return nullptr;
}

QPoint Board::row(const QString& list, int number) const {
    const int middle = listTop + number * (rowHeight + 6) + rowHeight / 2;
    return find(list)->mapToScene(QPointF(60, middle)).toPoint();
}

QPoint Board::middle(const QString& item) const {
    return middleOf(find(item));
}

DragSession& Board::session() const {
    return *page->engine()->singletonInstance<DragSession*>(
        qmlTypeId("Varnhold", 1, 0, "DragSession"));
}

KeyboardDrag& Board::keyboard() const {
    return *page->engine()->singletonInstance<KeyboardDrag*>(
        qmlTypeId("Varnhold", 1, 0, "KeyboardDrag"));
}

void Board::press(const QPoint& at) {
    pointer_ = at;
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, at);
}

void Board::moveTo(const QPoint& at) {
    constexpr int steps = 8;
    const QPoint from = pointer_;
    for (int step = 1; step <= steps; ++step) {
        pointer_ = from + (at - from) * step / steps;
        QTest::mouseMove(window.windowHandle(), pointer_);
        QCoreApplication::processEvents();
    }
}

void Board::release() {
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, pointer_);
}

bool Board::drag(const QPoint& from, const std::function<void(ScriptedDrag& drag)>& script,
                 const QPoint& by) {
    bool over = false;
    bool taken = false;
    const auto listening =
        connect(&session(), &DragSession::finished, this, [&](const QString&, bool dropped) {
            over = true;
            taken = dropped;
        });
    session().setCarrier([&](QDrag& drag) {
        ScriptedDrag scripted(window.windowHandle(), *drag.mimeData());
        scripted.picture = drag.pixmap();
        scripted.hotSpot = drag.hotSpot();
        script(scripted);
        return scripted.end();
    });
    press(from);
    moveTo(from + by);
    EXPECT_TRUE(QTest::qWaitFor([&over] { return over; })) << "no drag has begun";
    release();
    disconnect(listening);
    return taken;
}

void Board::keys(QQuickItem* from, std::initializer_list<Qt::Key> keys) const {
    from->forceActiveFocus(Qt::TabFocusReason);
    for (const Qt::Key key : keys) {
        QTest::keyClick(page, key);
    }
}

} // namespace varnhold::testing
