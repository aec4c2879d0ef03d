#include "views/settings/settings_model.h"

#include <algorithm>

#include "settings/groups_wiring.h"

namespace varnhold {

SettingsModel::SettingsModel(const SettingsContext& context, QObject* parent)
    : QObject(parent), context_(context) {
    for (const ChainSection& section : chainSections()) {
        chains_.append(new ChainPart(context_, section, this));
        parts_.push_back(chains_.back());
    }
    groups_ = new GroupsPart(context_, this);
    parts_.push_back(groups_);
    context_.view.observe([this](Animation animation) { sync(animation); });
    sync(Animation::none);
}

ChainPart* SettingsModel::governorChain() const {
    const auto governor = std::find_if(chains_.begin(), chains_.end(),
                                       [](const ChainPart* chain) { return chain->row() == 0; });
    return governor == chains_.end() ? nullptr : *governor;
}

QVariantList SettingsModel::chainRows() const {
    QVariantList rows;
    for (int row = 1;; ++row) {
        QVariantList chains;
        for (ChainPart* const chain : chains_) {
            if (chain->row() == row) {
                chains.append(QVariant::fromValue(chain));
            }
        }
        if (chains.isEmpty()) {
            return rows;
        }
        rows.append(QVariant(chains));
    }
}

void SettingsModel::setShowHints(bool show) {
    context_.view.showHints = show;
    context_.view.changed();
}

void SettingsModel::appear() {
    groups_->forgetPaths();
    context_.view.appear();
    if (!springs_) {
        springs_ = true;
        emit springsChanged();
    }
}

void SettingsModel::openManageCustomGroups() {
    varnhold::openManageCustomGroups(context_.view);
}

void SettingsModel::reset() {
    context_.view.reset();
}

void SettingsModel::sync(Animation animation) {
    for (SettingsPart* part : parts_) {
        part->sync(animation);
    }
    if (showHints_ != context_.view.showHints) {
        showHints_ = context_.view.showHints;
        emit showHintsChanged();
    }
}

} // namespace varnhold
