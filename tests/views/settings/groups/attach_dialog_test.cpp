#include <gtest/gtest.h>
#include <optional>
#include <utility>

#include <QApplication>
#include <QFileDialog>

#include "views/settings/groups/attach_dialog.h"

namespace varnhold::testing {
namespace {

QFileDialog* shownDialog() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<QFileDialog*>(window);
        if (dialog != nullptr && dialog->isVisible()) {
            return dialog;
        }
    }
    return nullptr;
}

// There is no bus here, and so no portal.
struct AttachDialog : ::testing::Test {
    QObject owner;
    std::optional<QStringList> used;

    QFileDialog* ask(AttachKind kind) {
        askForPaths(kind, &owner, [this](const QStringList& paths) { used = paths; });
        return shownDialog();
    }
};

TEST_F(AttachDialog, IsTheToolkitsWhereNoPortalIs) {
    const QStringList chosen{QStringLiteral("/a"), QStringLiteral("/b")};
    for (const auto& [kind, mode] : {std::pair(AttachKind::files, QFileDialog::ExistingFiles),
                                     std::pair(AttachKind::folder, QFileDialog::Directory)}) {
        QFileDialog* dialog = ask(kind);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Attach File / Folder"));
        EXPECT_EQ(dialog->labelText(QFileDialog::Accept), QStringLiteral("Attach"));
        EXPECT_EQ(dialog->fileMode(), mode);
        emit dialog->filesSelected(chosen);
        EXPECT_EQ(used, chosen);
        dialog->close();
    }
}

TEST_F(AttachDialog, TellsNothingWhenItIsCancelled) {
    QFileDialog* dialog = ask(AttachKind::files);
    ASSERT_NE(dialog, nullptr);
    dialog->reject();
    EXPECT_FALSE(used.has_value());
}

} // namespace
} // namespace varnhold::testing
