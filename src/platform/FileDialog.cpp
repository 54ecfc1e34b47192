#include "platform/FileDialog.h"

#include <QFileDialog>
#include <QStringList>

namespace tarvolin::platform {

QString QtFilterFrom(const std::string& filter) {
    const QStringList parts = QString::fromStdString(filter).split(QLatin1Char('|'));
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString text = QString(parts[i]).replace(QLatin1Char(';'), QLatin1Char(' ')).trimmed();
        const QString pattern = QString(parts[i + 1]).replace(QLatin1Char(';'), QLatin1Char(' ')).trimmed();
        if (text.isEmpty() && pattern.isEmpty()) continue;
        const QString bracketed = QLatin1Char('(') + pattern + QLatin1Char(')');
        out << (text.endsWith(bracketed) ? text : text + QLatin1Char(' ') + bracketed);
    }
    return out.join(QStringLiteral(";;"));
}

namespace {
std::vector<std::string> Chosen(QWidget* parent, const FileDialogSetup& setup, bool several) {
    QFileDialog dialog(parent, QString::fromStdString(setup.Title));
    const bool save = setup.DialogMode == FileDialogSetup::Mode::Save;
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : several ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    dialog.setNameFilter(QtFilterFrom(setup.Filter));
    if (!setup.InitialFolder.empty()) dialog.setDirectory(QString::fromStdString(setup.InitialFolder));
    dialog.selectFile(QString::fromStdString(setup.FileName));
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !(setup.Flags & 2));
    std::vector<std::string> paths;
    if (dialog.exec() != QDialog::Accepted) return paths;
    for (const QString& file : dialog.selectedFiles()) paths.push_back(file.toStdString());
    return paths;
}
}  // namespace

std::optional<std::string> QtFileDialog::Show(QWidget* parent, const FileDialogSetup& setup) {
    auto paths = Chosen(parent, setup, false);
    if (paths.empty()) return std::nullopt;
    return paths.front();
}

std::vector<std::string> QtFileDialog::ShowMany(QWidget* parent, const FileDialogSetup& setup) {
    return Chosen(parent, setup, true);
}

}  // namespace tarvolin::platform
