#pragma once

#include <QAbstractListModel>
#include <QByteArrayList>
#include <QHash>
#include <QVariant>
#include <QtQml/qqmlregistration.h>
#include <vector>

namespace varnhold {

// A list for QML whose rows keep their identity.
//
// Whoever owns it says how the rows should be now; the list gets there by the fewest moves, inserts
// and removes, never by a reset, so that delegates live on, animate from where they stand and keep
// their focus. Main thread.
class KeyedListModel final : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("filled by the program")
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    struct Row {
        QString key;         // rows with one key are told apart by their order
        QVariantList values; // one for each name given to the constructor

        bool operator==(const Row&) const = default;
    };

    // `names` are those under which delegates know the values.
    explicit KeyedListModel(const QByteArrayList& names, QObject* parent = nullptr);

    [[nodiscard]] int count() const { return static_cast<int>(rows_.size()); }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override { return names_; }

    // -1 if there is none.
    Q_INVOKABLE [[nodiscard]] int rowOf(const QString& key) const;
    // The value of that name; invalid if row or name isn't there.
    Q_INVOKABLE [[nodiscard]] QVariant value(int row, const QString& name) const;

    void sync(std::vector<Row> wanted);

signals:
    void countChanged();

private:
    void removeAllBut(const QHash<QString, int>& wanted);
    void arrange(const std::vector<Row>& wanted, const QHash<QString, int>& places);
    void update(const std::vector<Row>& wanted);

    QHash<int, QByteArray> names_;
    std::vector<Row> rows_;
};

} // namespace varnhold
