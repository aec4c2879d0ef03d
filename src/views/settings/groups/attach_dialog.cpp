#include "views/settings/groups/attach_dialog.h"

#include <QApplication>
#include <QFileDialog>

namespace varnhold {

void askForPaths(AttachKind kind, QObject* owner,
                 const std::function<void(const QStringList& paths)>& use) {
    auto* dialog = new QFileDialog(QApplication::activeWindow());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(QStringLiteral("Attach File / Folder"));
    dialog->setLabelText(QFileDialog::Accept, QStringLiteral("Attach"));
    if (kind == AttachKind::files) {
        dialog->setFileMode(QFileDialog::ExistingFiles);
    } else {
        dialog->setFileMode(QFileDialog::Directory);
        dialog->setOption(QFileDialog::ShowDirsOnly);
    }
    QObject::connect(dialog, &QFileDialog::filesSelected, owner, use);
    dialog->open();
}

} // namespace varnhold
