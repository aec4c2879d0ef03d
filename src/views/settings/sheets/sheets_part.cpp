#include "views/settings/sheets/sheets_part.h"

#include <optional>
#include <utility>

#include "settings/first_run.h"
#include "views/text/qt_text.h"

namespace varnhold {

SheetsPart::SheetsPart(const SettingsContext& context, QObject* parent)
    : SettingsPart(context, parent), manageGroups_(context, this) {}

QString SheetsPart::standing() const {
    return standing_ == Overlay::none && aboutShown_ ? QStringLiteral("about")
                                                     : toQString(name(standing_));
}

QString SheetsPart::version() const {
    return toQString(fleet().constants.VARNHOLD_VERSION);
}

void SheetsPart::sync(Animation animation) {
    manageGroups_.sync(animation);
    if (const QString text = shownText(view().alertMsg); text != alertText_) {
        alertText_ = text;
        emit alertTextChanged();
    }
    if (toastShown_ != view().showSaveToast) {
        toastShown_ = view().showSaveToast;
        emit toastShownChanged();
    }
    if (const Overlay next = nextOverlay(view(), standing_); next != standing_) {
        stand(next);
    }
}

void SheetsPart::part() {
    ++partings_;
    emit parting();
}

// A form begins with what the record says as it comes up, and keeps what is typed while it stands.
// What has closed goes from the window before its form is let go of, lest it be seen to empty.
void SheetsPart::stand(Overlay overlay) {
    if (overlay == Overlay::tokenSheet) {
        token_.show(tokenSheet(view()));
    } else if (overlay == Overlay::promptEditor) {
        prompt_.show(promptEditor(view()));
    } else if (overlay == Overlay::addModel) {
        addModel_.show(addModelSheet(view()));
    }
    if (!standing().isEmpty()) {
        part();
    }
    const Overlay former = std::exchange(standing_, overlay);
    emit standingChanged();
    if (former == Overlay::tokenSheet) {
        token_.show(std::nullopt);
    } else if (former == Overlay::promptEditor) {
        prompt_.show(std::nullopt);
    } else if (former == Overlay::addModel) {
        addModel_.show(std::nullopt);
    }
}

void SheetsPart::showAbout() {
    aboutShown_ = true;
    emit standingChanged();
}

void SheetsPart::dismissAbout() {
    part();
    aboutShown_ = false;
    emit standingChanged();
}

void SheetsPart::dismissAlert() {
    view().showAlert = false;
    view().changed();
}

void SheetsPart::dismissWelcome() {
    if (const auto sheet = welcomeSheet(view())) {
        sheet->onDismiss();
    }
}

void SheetsPart::dismissLibraryTip() {
    if (const auto sheet = libraryTipSheet(view())) {
        sheet->onDismiss();
    }
}

} // namespace varnhold
