#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QTimer>
#include <vector>

#include "views/status/menu_protocol.h"
#include "views/status/status_menu.h"

namespace varnhold {

// The status menu for panels that draw it themselves from what they are told over the session bus
// (com.canonical.dbusmenu). Main thread.
//
// Rows that only change what they say do so in place, even while the panel shows them. Rows that
// come and go wait until a moment after the panel has closed the menu, so that nobody's click lands
// on a row that has just moved or gone. No number is given to two rows: a click that comes late
// hits the row that was meant, or none.
class ExportedMenu final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)
public:
    // `choose` is called from the event loop.
    explicit ExportedMenu(StatusMenu::Choose choose);
    ~ExportedMenu() override;

    // Where it stands on the bus.
    [[nodiscard]] static QString path() { return QStringLiteral("/StatusMenu"); }

    void setRows(const std::vector<MenuRow>& rows);

public slots:
    // NOLINTBEGIN(readability-identifier-naming): the interface's own names
    [[nodiscard]] uint GetLayout(int parent, int depth, const QStringList& names,
                                 varnhold::MenuLayout& layout) const;
    [[nodiscard]] QList<varnhold::MenuProperties>
    GetGroupProperties(const QList<int>& ids, const QStringList& names) const;
    [[nodiscard]] QDBusVariant GetProperty(int id, const QString& name) const;
    void Event(int id, const QString& name, const QDBusVariant& data, uint time);
    [[nodiscard]] QList<int> EventGroup(const QList<varnhold::MenuEvent>& events);
    [[nodiscard]] bool AboutToShow(int id);
    [[nodiscard]] QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& unknown);

signals:
    void ItemsPropertiesUpdated(const QList<varnhold::MenuProperties>& updated,
                                const QList<varnhold::MenuPropertyNames>& removed);
    void LayoutUpdated(uint revision, int parent);
    // NOLINTEND(readability-identifier-naming)

private:
    struct Row {
        int id = 0;
        MenuRow row;
    };

    [[nodiscard]] static uint version() { return 3; }
    [[nodiscard]] static QString textDirection();
    [[nodiscard]] static QString status() { return QStringLiteral("normal"); }
    [[nodiscard]] static QStringList iconThemePath() { return {}; }
    [[nodiscard]] const Row* find(int id) const;
    void opened();
    void closed();
    void settled();
    void rebuild();
    void updateInPlace();

    StatusMenu::Choose choose_;
    std::vector<MenuRow> rows_; // wanted
    std::vector<Row> shown_;
    int lastId_ = 0;
    uint revision_ = 0;
    bool isOpen_ = false;
    QTimer forgotten_;
    QTimer settled_;
};

} // namespace varnhold
