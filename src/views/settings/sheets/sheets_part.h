#pragma once

#include <QtQml/qqmlregistration.h>

#include "settings/overlays.h"
#include "views/settings/settings_part.h"
#include "views/settings/sheets/add_model_form.h"
#include "views/settings/sheets/bot_sheet_models.h"
#include "views/settings/sheets/manage_groups_model.h"

namespace varnhold {

// What stands over the settings window: one sheet or alert at a time, and the toast. Main thread.
class SheetsPart final : public SettingsPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    // "alert", "promptEditor", "tokenSheet", "welcome", "addModel", "libraryTip", "manageGroups"
    // or, where none of these is wanted, "about"; empty while the window is free.
    Q_PROPERTY(QString standing READ standing NOTIFY standingChanged)
    // How often what stood has gone. It changes while that is still there, for the last time.
    Q_PROPERTY(int partings READ partings NOTIFY parting)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString alertText READ alertText NOTIFY alertTextChanged)
    Q_PROPERTY(bool toastShown READ toastShown NOTIFY toastShownChanged)
    Q_PROPERTY(varnhold::TokenSheetModel* token READ token CONSTANT)
    Q_PROPERTY(varnhold::PromptEditorModel* prompt READ prompt CONSTANT)
    Q_PROPERTY(varnhold::AddModelForm* addModel READ addModel CONSTANT)
    Q_PROPERTY(varnhold::ManageGroupsModel* manageGroups READ manageGroups CONSTANT)

public:
    SheetsPart(const SettingsContext& context, QObject* parent);

    void sync(Animation animation) override;

    [[nodiscard]] QString standing() const;
    [[nodiscard]] int partings() const { return partings_; }
    [[nodiscard]] QString version() const;
    [[nodiscard]] QString alertText() const { return alertText_; }
    [[nodiscard]] bool toastShown() const { return toastShown_; }
    [[nodiscard]] TokenSheetModel* token() { return &token_; }
    [[nodiscard]] PromptEditorModel* prompt() { return &prompt_; }
    [[nodiscard]] AddModelForm* addModel() { return &addModel_; }
    [[nodiscard]] ManageGroupsModel* manageGroups() { return &manageGroups_; }

    Q_INVOKABLE void dismissAlert();
    Q_INVOKABLE void dismissWelcome();
    Q_INVOKABLE void dismissLibraryTip();

    // What the program is; no matter of the record.
    void showAbout();
    Q_INVOKABLE void dismissAbout();

signals:
    void parting();
    void standingChanged();
    void alertTextChanged();
    void toastShownChanged();

private:
    void part();
    void stand(Overlay overlay);

    Overlay standing_ = Overlay::none;
    bool aboutShown_ = false;
    int partings_ = 0;
    QString alertText_;
    bool toastShown_ = false;
    TokenSheetModel token_{this};
    PromptEditorModel prompt_{this};
    AddModelForm addModel_{this};
    ManageGroupsModel manageGroups_;
};

} // namespace varnhold
