#pragma once

#include <QColor>
#include <QStringList>

#include "settings/chain_sections.h"
#include "views/settings/chains/stepper_state.h"
#include "views/settings/keyed_list_model.h"
#include "views/settings/settings_part.h"

namespace varnhold {

// One chain's section for QML. Rows are named by the uid of their model, bots by their label. Main
// thread.
class ChainPart final : public SettingsPart {
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
    Q_PROPERTY(StepperState effort READ effort NOTIFY shownChanged)
    Q_PROPERTY(StepperState context READ context NOTIFY shownChanged)
    Q_PROPERTY(QString response READ response NOTIFY shownChanged)
    // "green", "orange" or "gray"; empty where there is no dot.
    Q_PROPERTY(QString dotColor READ dotColor NOTIFY shownChanged)
    Q_PROPERTY(QString dotHelp READ dotHelp NOTIFY shownChanged)
    Q_PROPERTY(bool topTargeted READ topTargeted WRITE setTopTargeted NOTIFY shownChanged)
    Q_PROPERTY(bool botsTargeted READ botsTargeted WRITE setBotsTargeted NOTIFY shownChanged)
    // What was dragged comes back gently.
    Q_PROPERTY(bool fading READ fading NOTIFY fadingChanged)
    Q_PROPERTY(KeyedListModel* bots READ bots CONSTANT)
    Q_PROPERTY(KeyedListModel* models READ models CONSTANT)

public:
    ChainPart(const SettingsContext& context, const ChainSection& section, QObject* parent);

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
    [[nodiscard]] const StepperState& effort() const { return shown_.effort; }
    [[nodiscard]] const StepperState& context() const { return shown_.context; }
    [[nodiscard]] const QString& response() const { return shown_.response; }
    [[nodiscard]] const QString& dotColor() const { return shown_.dotColor; }
    [[nodiscard]] const QString& dotHelp() const { return shown_.dotHelp; }
    [[nodiscard]] bool topTargeted() const { return shown_.topTargeted; }
    [[nodiscard]] bool botsTargeted() const { return shown_.botsTargeted; }
    void setTopTargeted(bool targeted);
    void setBotsTargeted(bool targeted);
    [[nodiscard]] bool fading() const { return fading_; }
    [[nodiscard]] KeyedListModel* bots() { return &bots_; }
    [[nodiscard]] KeyedListModel* models() { return &models_; }

    Q_INVOKABLE void effortLeft();
    Q_INVOKABLE void effortRight();
    Q_INVOKABLE void contextLeft();
    Q_INVOKABLE void contextRight();
    // One of responseValues.
    Q_INVOKABLE void chooseResponse(const QString& value);

    Q_INVOKABLE void dropOnBots(const QString& text);
    Q_INVOKABLE void unassignBot(const QString& label);

    Q_INVOKABLE void dropOnModels(const QString& text);
    Q_INVOKABLE void dropOnTop(const QString& text);
    // Gives the text that the drag carries; empty if the row has gone.
    Q_INVOKABLE QString startDrag(const QString& uid);
    Q_INVOKABLE void rowEntered(const QString& uid);
    // The row takes the drop in any case; it changes something only where it came from this chain.
    Q_INVOKABLE void rowDropped(const QString& uid);
    // Out of the library's file; the chain keeps its row.
    Q_INVOKABLE void deleteModel(const QString& uid);

    void sync(Animation animation) override;

signals:
    void shownChanged();
    void fadingChanged();

private:
    struct Shown {
        StepperState effort;
        StepperState context;
        QString response;
        QString dotColor;
        QString dotHelp;
        bool topTargeted = false;
        bool botsTargeted = false;

        bool operator==(const Shown&) const = default;
    };

    [[nodiscard]] Shown shownNow() const;
    [[nodiscard]] const AIModelItem* find(const QString& uid) const;

    const ChainSection& section_;
    Shown shown_;
    bool fading_ = false;
    KeyedListModel bots_;
    KeyedListModel models_;
};

} // namespace varnhold
