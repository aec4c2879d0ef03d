#pragma once

#include <QColor>
#include <QStringList>

#include "settings/chain_sections.h"
#include "views/settings/stacks/stack_part.h"

namespace varnhold {

// One chain's section for QML: its stack, and what chains have beside it. Main thread.
// The base is named in full for the tools that list QML types.
class ChainPart final : public varnhold::StackPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(QString key READ key CONSTANT)
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QString hint READ hint CONSTANT)
    Q_PROPERTY(QString help READ help CONSTANT)
    Q_PROPERTY(QColor tint READ tint CONSTANT)
    Q_PROPERTY(QStringList menuLines READ menuLines CONSTANT)
    Q_PROPERTY(QString contextHelp READ contextHelp CONSTANT)
    Q_PROPERTY(bool showEffort READ showEffort CONSTANT)
    // Empty where the chain has no response mode.
    Q_PROPERTY(QStringList responseValues READ responseValues CONSTANT)
    // Names of the tools that stand before the chain's own rows.
    Q_PROPERTY(QStringList builtIns READ builtIns CONSTANT)
    Q_PROPERTY(QString response READ response NOTIFY shownChanged)
    // "green", "orange" or "gray"; empty where there is no dot.
    Q_PROPERTY(QString dotColor READ dotColor NOTIFY shownChanged)
    Q_PROPERTY(QString dotHelp READ dotHelp NOTIFY shownChanged)
    Q_PROPERTY(bool topTargeted READ topTargeted WRITE setTopTargeted NOTIFY shownChanged)
    Q_PROPERTY(bool botsTargeted READ botsTargeted WRITE setBotsTargeted NOTIFY shownChanged)
    // What was dragged comes back gently.
    Q_PROPERTY(bool fading READ fading NOTIFY fadingChanged)

public:
    ChainPart(const SettingsContext& context, const ChainSection& section, QObject* parent);

    [[nodiscard]] int row() const { return section_.row; }
    [[nodiscard]] QString key() const;
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString hint() const;
    [[nodiscard]] QString help() const;
    [[nodiscard]] QColor tint() const;
    [[nodiscard]] QStringList menuLines() const;
    [[nodiscard]] QString contextHelp() const;
    [[nodiscard]] bool showEffort() const { return section_.showEffort; }
    [[nodiscard]] QStringList responseValues() const;
    [[nodiscard]] QStringList builtIns() const;
    [[nodiscard]] const QString& response() const { return shown_.response; }
    [[nodiscard]] const QString& dotColor() const { return shown_.dotColor; }
    [[nodiscard]] const QString& dotHelp() const { return shown_.dotHelp; }
    [[nodiscard]] bool topTargeted() const { return shown_.topTargeted; }
    [[nodiscard]] bool botsTargeted() const { return shown_.botsTargeted; }
    void setTopTargeted(bool targeted);
    void setBotsTargeted(bool targeted);
    [[nodiscard]] bool fading() const { return fading_; }

    // One of responseValues.
    Q_INVOKABLE void chooseResponse(const QString& value);

    // Out of the library's file; the chain keeps its row.
    Q_INVOKABLE void deleteModel(const QString& uid);

    void sync(Animation animation) override;

signals:
    void fadingChanged();

private:
    struct Shown {
        QString response;
        QString dotColor;
        QString dotHelp;
        bool topTargeted = false;
        bool botsTargeted = false;

        bool operator==(const Shown&) const = default;
    };

    [[nodiscard]] bool isDownloading(const AIModelItem& model) const override;
    [[nodiscard]] Shown shownNow() const;

    const ChainSection& section_;
    Shown shown_;
    bool fading_ = false;
};

} // namespace varnhold
