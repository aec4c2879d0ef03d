#include "views/settings/chains/chain_part.h"

#include <string>
#include <string_view>

#include "settings/chain_editing.h"
#include "settings/keepalive.h"
#include "views/settings/stacks/shown_rows.h"

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
    : StackPart(context, context.view.chain(section.list), parent), section_(section) {}

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
            names.append(shownText(tool.displayName()));
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

void ChainPart::chooseResponse(const QString& value) {
    for (const ResponseMode mode : allResponseModes) {
        if (toQString(label(mode)) == value) {
            varnhold::chooseResponse(view(), section_, mode);
        }
    }
}

void ChainPart::deleteModel(const QString& uid) {
    if (const AIModelItem* item = stack().model(uid.toStdString())) {
        view().modelRow(*item).onDelete();
    }
}

void ChainPart::sync(Animation animation) {
    if (const bool fading = animation == Animation::easeOut; fading_ != fading) {
        fading_ = fading; // before the rows, which then take their time
        emit fadingChanged();
    }
    Shown now = shownNow();
    const bool stackChanged = syncStack(stack());
    if (stackChanged || shown_ != now) {
        shown_ = std::move(now);
        emit shownChanged();
    }
}

bool ChainPart::isDownloading(const AIModelItem& model) const {
    return view().modelRow(model).isDownloading;
}

ChainPart::Shown ChainPart::shownNow() const {
    const SettingsFields& settings = view();
    Shown now{.topTargeted = settings.*section_.topTargeted};
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

} // namespace varnhold
