#include "platform/FileDialog.h"

#include <QFileDialog>
#include <QStringList>

namespace tarvolin::platform {

QString QtFilterFrom(const std::string& filter) {
    const QStringList parts = QString::fromStdString(filter).split(QLatin1Char('|'));
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString text = parts[i].trimmed();
        const QString pattern = parts[i + 1].trimmed();
        if (text.isEmpty() && pattern.isEmpty()) continue;
        const QString bracketed = QLatin1Char('(') + pattern + QLatin1Char(')');
        out << (text.endsWith(bracketed) ? text : text + QLatin1Char(' ') + bracketed);
    }
    return out.join(QStringLiteral(";;"));
}

std::optional<std::string> QtFileDialog::Show(QWidget* parent, const FileDialogSetup& setup) {
    QFileDialog dialog(parent, QString::fromStdString(setup.Title));
    const bool save = setup.DialogMode == FileDialogSetup::Mode::Save;
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilter(QtFilterFrom(setup.Filter));
    if (!setup.InitialFolder.empty()) dialog.setDirectory(QString::fromStdString(setup.InitialFolder));
    dialog.selectFile(QString::fromStdString(setup.FileName));
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !(setup.Flags & 2));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return dialog.selectedFiles().front().toStdString();
}

}  // namespace tarvolin::platform
