#pragma once

#include <filesystem>
#include <string>

#include "shown_settings.h"
#include "views/text/qt_text.h"

namespace varnhold::testing {

// A shown window with the hands that its sheets need.
struct ShownSheets : ShownSettings {
    using ShownSettings::click;

    // Fills the record from the files of the sample fleet.
    void takeSampleFleet() {
        std::filesystem::copy(VIEWS_TESTS "/../../examples/fleet", constants.appSupportDir,
                              std::filesystem::copy_options::recursive |
                                  std::filesystem::copy_options::overwrite_existing);
        open();
        view->loadSettings();
        view->refresh();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(page, key, modifiers);
    }

    [[nodiscard]] QQuickItem* focused() const { return page->quickWindow()->activeFocusItem(); }

    // How what has the focus is announced.
    [[nodiscard]] std::string focusedName() const { return spokenName(focused()); }

    [[nodiscard]] static std::string spokenName(QObject* item) {
        const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(item);
        return spoken == nullptr ? "" : spoken->text(QAccessible::Name).toStdString();
    }

    [[nodiscard]] bool shows(const char* name) const {
        return named(QString::fromUtf8(name)) != nullptr;
    }

    // The control of that name; what it is called may stand beside it as a text of its own.
    [[nodiscard]] QQuickItem* control(const char* name) const {
        const QString wanted = QString::fromUtf8(name);
        return firstAnnounced(page->rootObject(), [&](const QAccessibleInterface& spoken) {
            return spoken.text(QAccessible::Name) == wanted &&
                   spoken.role() != QAccessible::StaticText;
        });
    }

    void click(const char* name) const {
        const QQuickItem* item = control(name);
        ASSERT_NE(item, nullptr) << name;
        click(item);
    }

    // Puts the focus on it, as Tab does.
    void focus(const char* name) const {
        QQuickItem* item = control(name);
        ASSERT_NE(item, nullptr) << name;
        item->forceActiveFocus(Qt::TabFocusReason);
        ASSERT_EQ(focusedName(), name);
    }

    // Replaces what stands in the field by typing.
    void fillIn(const char* name, const char* text) const {
        click(name);
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_Delete);
        type(QString::fromUtf8(text));
    }

    [[nodiscard]] std::string valueOf(const char* name, const char* property = "text") const {
        const QQuickItem* item = control(name);
        return item == nullptr ? "(none)" : item->property(property).toString().toStdString();
    }

    [[nodiscard]] bool isEnabled(const char* name) const {
        const QQuickItem* item = control(name);
        return item != nullptr && item->isEnabled();
    }
};

} // namespace varnhold::testing
