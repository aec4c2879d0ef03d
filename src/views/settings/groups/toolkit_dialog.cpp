#include "views/settings/groups/toolkit_dialog.h"

#include <QApplication>
#include <QFileDialog>

namespace varnhold {

void askToolkitForPaths(AttachKind kind, QObject* owner,
                        const std::function<void(const QStringList& paths)>& use) {
    auto* dialog = new QFileDialog(QApplication::activeWindow());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(QString::fromLatin1(attachTitle));
    dialog->setLabelText(QFileDialog::Accept, QString::fromLatin1(attachLabel));
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
