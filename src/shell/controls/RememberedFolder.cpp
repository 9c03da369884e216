#include "shell/controls/RememberedFolder.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QFileDialog>

namespace orlenta::shell {

void rememberFolder(QFileDialog &dialog, base::UserDefaults &defaults, base::DialogFolder kind) {
    const QString last = defaults.dialogFolder(kind);
    if (!last.isEmpty() && QFileInfo(last).isDir())
        dialog.setDirectory(last);
    QObject::connect(&dialog, &QFileDialog::fileSelected, &dialog, [&dialog, &defaults, kind](const QString &path) {
        const bool isFolder = dialog.fileMode() == QFileDialog::Directory;
        defaults.setDialogFolder(kind, isFolder ? path : QFileInfo(path).absolutePath());
    });
}

} // namespace orlenta::shell
