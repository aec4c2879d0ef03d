#include "views/settings/chains/chain_part.h"

#include "records/model_rows.h"
#include "settings/chain_editing.h"
#include "settings/keepalive.h"
#include "views/settings/chains/shown_rows.h"

namespace varnhold {

namespace {

QString colorName(WarmthColor color) {
    switch (color) {
    case WarmthColor::green:
        return QStringLiteral("green");
    case WarmthColor::orange:
        return QStringLiteral("orange");
    case WarmthColor::gray:
        break;
    }
    return QStringLiteral("gray");
}

} // namespace

ChainPart::ChainPart(const SettingsContext& context, const ChainSection& section, QObject* parent)
    : SettingsPart(context, parent),
      section_(section),
      bots_(botRowNames),
      models_(modelRowNames) {}

QString ChainPart::key() const {
    return toQString(chainKey(section_.list));
}

QString ChainPart::title() const {
    return toQString(section_.title);
}

QString ChainPart::hint() const {
    return toQString(section_.hint);
}

QString ChainPart::help() const {
    return toQString(section_.help);
}

QColor ChainPart::tint() const {
    return toQColor(section_.tint);
}

QStringList ChainPart::menuLines() const {
    QStringList lines;
    for (const std::string_view line : chainMenuLines) {
        lines.append(toQString(line));
    }
    return lines;
}

QString ChainPart::contextHelp() const {
    return toQString(contextStepperHelp);
}

QStringList ChainPart::responseValues() const {
    QStringList values;
    if (section_.responseMode != nullptr) {
        for (const ResponseMode mode : allResponseModes) {
            values.append(toQString(label(mode)));
        }
    }
    return values;
}

QStringList ChainPart::builtIns() const {
    QStringList names;
    if (section_.list == TargetList::voice) {
        for (const AIModelItem& tool : view().localToolModels) {
            names.append(toQString(tool.displayName()));
        }
    }
    return names;
}

void ChainPart::setTopTargeted(bool targeted) {
    view().*section_.topTargeted = targeted;
    view().changed();
}

void ChainPart::setBotsTargeted(bool targeted) {
    view().chainBotDropTargeted[std::string(chainKey(section_.list))] = targeted;
    view().changed();
}

void ChainPart::effortLeft() {
    stepEffort(view(), section_, StepDirection::left);
}

void ChainPart::effortRight() {
    stepEffort(view(), section_, StepDirection::right);
}

void ChainPart::contextLeft() {
    stepContext(view(), section_, StepDirection::left, fleet().constants.contextLadder);
}

void ChainPart::contextRight() {
    stepContext(view(), section_, StepDirection::right, fleet().constants.contextLadder);
}

void ChainPart::chooseResponse(const QString& value) {
    for (const ResponseMode mode : allResponseModes) {
        if (toQString(label(mode)) == value) {
            varnhold::chooseResponse(view(), section_, mode);
        }
    }
}

void ChainPart::dropOnBots(const QString& text) {
    view().handleBotDrop(dropped(text), section_.list);
}

void ChainPart::unassignBot(const QString& label) {
    view().unassignBot(label.toStdString(), section_.list);
}

void ChainPart::dropOnModels(const QString& text) {
    view().handleDrop(dropped(text), section_.list);
}

void ChainPart::dropOnTop(const QString& text) {
    view().handleDrop(dropped(text), section_.list, 0);
}

QString ChainPart::startDrag(const QString& uid) {
    const AIModelItem* item = find(uid);
    return item == nullptr ? QString() : toQString(view().modelRow(*item).onDrag());
}

void ChainPart::rowEntered(const QString& uid) {
    if (const AIModelItem* item = find(uid)) {
        view().rowDropDelegate(*item, section_.list).dropEntered();
    }
}

void ChainPart::rowDropped(const QString& uid) {
    if (const AIModelItem* item = find(uid)) {
        view().rowDropDelegate(*item, section_.list).performDrop();
    }
}

void ChainPart::deleteModel(const QString& uid) {
    if (const AIModelItem* item = find(uid)) {
        view().modelRow(*item).onDelete();
    }
}

void ChainPart::sync(Animation animation) {
    if (const bool fading = animation == Animation::easeOut; fading_ != fading) {
        fading_ = fading; // before the rows, which then take their time
        emit fadingChanged();
    }
    bots_.sync(shownBots(botsOf(view(), section_.list)));
    std::vector<KeyedListModel::Row> rows;
    for (const AIModelItem& model : view().chainArray(section_.list)) {
        const ModelRow row = view().modelRow(model);
        rows.push_back(shownModel(row.model, row.isDragging, row.isDownloading));
    }
    models_.sync(std::move(rows));
    if (Shown now = shownNow(); shown_ != now) {
        shown_ = std::move(now);
        emit shownChanged();
    }
}

ChainPart::Shown ChainPart::shownNow() const {
    const SettingsFields& settings = view();
    Shown now{.effort = stepperState(effortRow(settings, section_)),
              .context =
                  stepperState(contextRow(settings, section_, fleet().constants.contextLadder)),
              .topTargeted = settings.*section_.topTargeted};
    if (section_.responseMode != nullptr) {
        now.response = toQString(label(settings.*section_.responseMode));
    }
    if (const auto dot = warmthDot(settings, section_.list)) {
        now.dotColor = colorName(dot->color);
        now.dotHelp = toQString(dot->toolTip);
    }
    const auto targeted = settings.chainBotDropTargeted.find(std::string(chainKey(section_.list)));
    now.botsTargeted = targeted != settings.chainBotDropTargeted.end() && targeted->second;
    return now;
}

const AIModelItem* ChainPart::find(const QString& uid) const {
    const ModelRows& rows = view().chainArray(section_.list);
    const auto row = rowOf(rows, uid.toStdString());
    return row ? &rows[*row] : nullptr;
}

} // namespace varnhold
