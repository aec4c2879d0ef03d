#pragma once

#include <QQmlComponent>
#include <QQmlEngine>

#include "lifecycle/service_control.h"
#include "shown_settings.h"

namespace varnhold::testing {

// The left pane and the top block on a record of their own.
struct ShownColumns : ShownSettings {
    QQuickItem* columns = nullptr;

    void show(const QSize& size = {1200, 850}, int paneWidth = 280) {
        ShownSettings::show(size);
        QQmlComponent component(page->engine(),
                                QUrl::fromLocalFile(QStringLiteral(VIEWS_TESTS) +
                                                    QStringLiteral("/settings/Columns.qml")));
        QObject* made = component.createWithInitialProperties(
            {{QStringLiteral("settings"), QVariant::fromValue(model.get())},
             {QStringLiteral("paneWidth"), paneWidth},
             {QStringLiteral("parent"), QVariant::fromValue(page->rootObject())}});
        ASSERT_NE(made, nullptr) << qPrintable(component.errorString());
        made->setParent(page);
        columns = qobject_cast<QQuickItem*>(made);
        settleScene();
    }

    // Lets what is queued be done and laid out.
    void settleScene() const {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        static_cast<void>(page->grab());
    }

    // How often everything was saved.
    [[nodiscard]] long saves() const {
        const auto& keys = platform.defaults.written;
        return std::count(keys.begin(), keys.end(), "api_key_cerebras");
    }

    [[nodiscard]] std::vector<BotConfig> botsOnDisk() const { return loadBots(constants); }
};

} // namespace varnhold::testing
