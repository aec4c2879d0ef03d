#include "views/settings/stacks/stack_part.h"

#include <utility>
#include <vector>

#include "views/settings/stacks/shown_rows.h"
#include "views/text/qt_text.h"

namespace varnhold {

namespace {

// A text dropped on one of our zones: it is at hand already.
platform::PayloadProviders dropped(const QString& text) {
    return {platform::textPayload(text.toStdString())};
}

} // namespace

StackPart::StackPart(const SettingsContext& context, Stack stack, QObject* parent)
    : SettingsPart(context, parent),
      stack_(std::move(stack)),
      bots_(botRowNames()),
      models_(modelRowNames()) {}

bool StackPart::takesModel(const QString& text) const {
    return stack_.takesModel(text.toStdString());
}

bool StackPart::takesBot(const QString& text) const {
    return stack_.takesBot(text.toStdString());
}

void StackPart::dropOnBots(const QString& text) {
    stack_.dropBots(dropped(text));
}

void StackPart::unassignBot(const QString& label) {
    stack_.unassignBot(label.toStdString());
}

void StackPart::dropOnModels(const QString& text) {
    stack_.dropModels(dropped(text));
}

void StackPart::dropOnTop(const QString& text) {
    stack_.dropModels(dropped(text), 0);
}

void StackPart::startDrag(const QString& uid) {
    stack_.startDrag(uid.toStdString());
}

void StackPart::rowEntered(const QString& uid) {
    stack_.rowEntered(uid.toStdString());
}

void StackPart::rowDropped(const QString& uid) {
    stack_.rowDropped(uid.toStdString());
}

void StackPart::removeModel(const QString& uid) {
    stack_.removeModels(uid.toStdString());
}

bool StackPart::syncStack(const Stack& stack) {
    bots_.sync(shownBots(stack.bots()));
    std::vector<KeyedListModel::Row> rows;
    if (const auto parts = stack.parts()) {
        for (const AIModelItem& model : parts->models) {
            rows.push_back(shownModel({model, stack.isDragging(model), isDownloading(model)}));
        }
    }
    models_.sync(std::move(rows));
    StepperState effort = stepperState(stack.effortRow());
    StepperState context = stepperState(stack.contextRow());
    const bool different = effort_ != effort || context_ != context;
    effort_ = std::move(effort);
    context_ = std::move(context);
    return different;
}

} // namespace varnhold
