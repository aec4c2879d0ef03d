#pragma once

#include <QColor>
#include <QUrl>
#include <optional>
#include <string>
#include <vector>

#include "groups/custom_groups_column.h"
#include "views/settings/stacks/stack_part.h"

namespace varnhold {

// One custom group for QML: its stack, and what groups have beside it. Main thread; the column must
// outlive it.
// The base is named in full for the tools that list QML types.
class GroupPart final : public varnhold::StackPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with its group")
    Q_PROPERTY(QString name READ name NOTIFY shownChanged)
    Q_PROPERTY(QColor ground READ ground NOTIFY shownChanged)
    Q_PROPERTY(QString objectives READ objectives NOTIFY shownChanged)
    Q_PROPERTY(bool expanded READ expanded NOTIFY shownChanged)
    Q_PROPERTY(double chipSpacing READ chipSpacing NOTIFY shownChanged)
    // Rows of path, name and image; empty where there is nothing to show.
    Q_PROPERTY(varnhold::KeyedListModel* attachments READ attachments CONSTANT)
    Q_PROPERTY(varnhold::KeyedListModel* doctrine READ doctrine CONSTANT)

public:
    GroupPart(const SettingsContext& context, const Uuid& id, CustomGroupsColumn& column,
              QObject* parent);

    [[nodiscard]] const QString& name() const { return shown_.name; }
    [[nodiscard]] const QColor& ground() const { return shown_.ground; }
    [[nodiscard]] const QString& objectives() const { return shown_.objectives; }
    [[nodiscard]] bool expanded() const { return shown_.expanded; }
    [[nodiscard]] double chipSpacing() const { return shown_.chipSpacing; }
    [[nodiscard]] KeyedListModel* attachments() { return &attachments_; }
    [[nodiscard]] KeyedListModel* doctrine() { return &doctrine_; }

    // Each shows a dialog and returns.
    Q_INVOKABLE void attachFiles();
    Q_INVOKABLE void attachFolder();
    // What is no file of this machine is left out.
    Q_INVOKABLE void attachUrls(const QList<QUrl>& urls);
    Q_INVOKABLE void removeAttachment(const QString& path);
    Q_INVOKABLE void removeDoctrine(const QString& path);

    Q_INVOKABLE void toggleObjectives();
    Q_INVOKABLE void setObjectives(const QString& text);

    // Where among the groups it stands: of several with one identity, each shows its own.
    void standAt(std::size_t place) { place_ = place; }
    void sync(Animation animation) override;
    // Which paths are folders is asked anew with the next sync.
    void forgetPaths();

private:
    struct Shown {
        QString name;
        QColor ground;
        QString objectives;
        bool expanded = false;
        double chipSpacing = 0;

        bool operator==(const Shown&) const = default;
    };

    [[nodiscard]] bool isDownloading(const AIModelItem&) const override { return false; }
    [[nodiscard]] const CustomBotGroup* find() const;
    void attach(const QStringList& paths);
    static void show(const std::optional<PathChipsView>& chips,
                     std::optional<std::vector<std::string>>& seen, KeyedListModel& rows);

    Uuid id_;
    std::size_t place_ = 0;
    CustomGroupsColumn& column_;
    Shown shown_;
    // Looking at paths costs a call of the system each: only when they are others, or on demand.
    std::optional<std::vector<std::string>> seenAttachments_;
    std::optional<std::vector<std::string>> seenDoctrine_;
    KeyedListModel attachments_;
    KeyedListModel doctrine_;
};

} // namespace varnhold
