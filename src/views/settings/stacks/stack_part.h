#pragma once

#include "stacks/stack.h"
#include "views/settings/keyed_list_model.h"
#include "views/settings/settings_part.h"
#include "views/settings/stacks/stepper_state.h"

namespace varnhold {

// One stack of models for QML, be it a chain or a custom group: its steppers, its bots, its models
// and what is dropped on them. Rows are named by the uid of their model, bots by their label. Once
// the stack has gone from the record, the operations do nothing. Main thread.
class StackPart : public SettingsPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("a chain and a group are one each")
    Q_PROPERTY(varnhold::StepperState effort READ effort NOTIFY shownChanged)
    Q_PROPERTY(varnhold::StepperState context READ context NOTIFY shownChanged)
    Q_PROPERTY(varnhold::KeyedListModel* bots READ bots CONSTANT)
    Q_PROPERTY(varnhold::KeyedListModel* models READ models CONSTANT)

public:
    [[nodiscard]] const StepperState& effort() const { return effort_; }
    [[nodiscard]] const StepperState& context() const { return context_; }
    [[nodiscard]] KeyedListModel* bots() { return &bots_; }
    [[nodiscard]] KeyedListModel* models() { return &models_; }

    Q_INVOKABLE void effortLeft() { stack_.stepEffort(StepDirection::left); }
    Q_INVOKABLE void effortRight() { stack_.stepEffort(StepDirection::right); }
    Q_INVOKABLE void contextLeft() { stack_.stepContext(StepDirection::left); }
    Q_INVOKABLE void contextRight() { stack_.stepContext(StepDirection::right); }

    // Whether a drop of the text would come to anything.
    Q_INVOKABLE [[nodiscard]] bool takesModel(const QString& text) const;
    Q_INVOKABLE [[nodiscard]] bool takesBot(const QString& text) const;

    Q_INVOKABLE void dropOnBots(const QString& text);
    Q_INVOKABLE void unassignBot(const QString& label);

    Q_INVOKABLE void dropOnModels(const QString& text);
    Q_INVOKABLE void dropOnTop(const QString& text);
    Q_INVOKABLE void startDrag(const QString& uid);
    Q_INVOKABLE void rowEntered(const QString& uid);
    // The row takes the drop in any case; it changes something only where it came from this stack.
    Q_INVOKABLE void rowDropped(const QString& uid);
    // Out of the stack.
    Q_INVOKABLE void removeModel(const QString& uid);

signals:
    // Any of what is shown beside the rows.
    void shownChanged();

protected:
    StackPart(const SettingsContext& context, Stack stack, QObject* parent);

    [[nodiscard]] const Stack& stack() const { return stack_; }

    // Takes over what the stack is now. True if something beside the rows is different; whoever
    // derives from the part then tells so, together with what it shows itself.
    [[nodiscard]] bool syncStack(const Stack& stack);

private:
    [[nodiscard]] virtual bool isDownloading(const AIModelItem& model) const = 0;

    Stack stack_;
    StepperState effort_;
    StepperState context_;
    KeyedListModel bots_;
    KeyedListModel models_;
};

} // namespace varnhold
