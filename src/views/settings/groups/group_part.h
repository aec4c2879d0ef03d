#pragma once

#include <QColor>
#include <QUrl>

#include "groups/custom_groups_column.h"
#include "views/settings/chains/stepper_state.h"
#include "views/settings/keyed_list_model.h"

namespace varnhold {

// One custom group for QML. Its operations do nothing once the group has gone from the record.
// Main thread; list and column must outlive it.
class GroupPart final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with its group")
    Q_PROPERTY(QString name READ name NOTIFY shownChanged)
    Q_PROPERTY(QColor ground READ ground NOTIFY shownChanged)
    Q_PROPERTY(StepperState effort READ effort NOTIFY shownChanged)
    Q_PROPERTY(StepperState context READ context NOTIFY shownChanged)
    Q_PROPERTY(QString objectives READ objectives NOTIFY shownChanged)
    Q_PROPERTY(bool expanded READ expanded NOTIFY shownChanged)
    Q_PROPERTY(double chipSpacing READ chipSpacing NOTIFY shownChanged)
    Q_PROPERTY(KeyedListModel* bots READ bots CONSTANT)
    Q_PROPERTY(KeyedListModel* models READ models CONSTANT)
    // Rows of path, name and image; empty where there is nothing to show.
    Q_PROPERTY(KeyedListModel* attachments READ attachments CONSTANT)
    Q_PROPERTY(KeyedListModel* doctrine READ doctrine CONSTANT)

public:
    GroupPart(const Uuid& id, std::vector<CustomBotGroup>& groups, CustomGroupsColumn& column,
              QObject* parent);

    [[nodiscard]] const QString& name() const { return shown_.name; }
    [[nodiscard]] const QColor& ground() const { return shown_.ground; }
    [[nodiscard]] const StepperState& effort() const { return shown_.effort; }
    [[nodiscard]] const StepperState& context() const { return shown_.context; }
    [[nodiscard]] const QString& objectives() const { return shown_.objectives; }
    [[nodiscard]] bool expanded() const { return shown_.expanded; }
    [[nodiscard]] double chipSpacing() const { return shown_.chipSpacing; }
    [[nodiscard]] KeyedListModel* bots() { return &bots_; }
    [[nodiscard]] KeyedListModel* models() { return &models_; }
    [[nodiscard]] KeyedListModel* attachments() { return &attachments_; }
    [[nodiscard]] KeyedListModel* doctrine() { return &doctrine_; }

    Q_INVOKABLE void effortLeft();
    Q_INVOKABLE void effortRight();
    Q_INVOKABLE void contextLeft();
    Q_INVOKABLE void contextRight();

    Q_INVOKABLE void dropOnBots(const QString& text);
    Q_INVOKABLE void unassignBot(const QString& label);

    Q_INVOKABLE void dropOnModels(const QString& text);
    Q_INVOKABLE void dropOnTop(const QString& text);
    // Gives the text that the drag carries; empty if the row has gone.
    Q_INVOKABLE QString startDrag(const QString& uid);
    Q_INVOKABLE void rowEntered(const QString& uid);
    // The row takes the drop in any case; it changes something only where it came from this group.
    Q_INVOKABLE void rowDropped(const QString& uid);
    Q_INVOKABLE void removeModel(const QString& uid);

    // Each shows a dialog and returns.
    Q_INVOKABLE void attachFiles();
    Q_INVOKABLE void attachFolder();
    // What is no file of this machine is left out.
    Q_INVOKABLE void attachUrls(const QList<QUrl>& urls);
    Q_INVOKABLE void removeAttachment(const QString& path);
    Q_INVOKABLE void removeDoctrine(const QString& path);

    Q_INVOKABLE void toggleObjectives();
    Q_INVOKABLE void setObjectives(const QString& text);

    // Takes over what the group is now.
    void sync(const CustomBotGroup& group, std::span<const int> contextLadder);

signals:
    void shownChanged();

private:
    struct Shown {
        QString name;
        QColor ground;
        StepperState effort;
        StepperState context;
        QString objectives;
        bool expanded = false;
        double chipSpacing = 0;

        bool operator==(const Shown&) const = default;
    };

    [[nodiscard]] const CustomBotGroup* find() const;
    [[nodiscard]] const AIModelItem* find(const QString& uid) const;
    void attach(const QStringList& paths);

    Uuid id_;
    std::vector<CustomBotGroup>& groups_;
    CustomGroupsColumn& column_;
    Shown shown_;
    KeyedListModel bots_;
    KeyedListModel models_;
    KeyedListModel attachments_;
    KeyedListModel doctrine_;
};

} // namespace varnhold
