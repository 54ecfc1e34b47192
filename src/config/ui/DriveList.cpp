#include "config/ui/DriveList.h"

#include <QDir>
#include <QSignalBlocker>
#include <QStorageInfo>

namespace tarvolin {

namespace {
// True when `path` is `root` or lies below it, compared by whole folder names.
bool IsUnder(const QString& path, const QString& root) {
    if (root == QLatin1String("/")) return path.startsWith(QLatin1Char('/'));
    return path == root || path.startsWith(root + QLatin1Char('/'));
}
}  // namespace

DriveList::DriveList(QWidget* parent) : QComboBox(parent) {
    addItems(SystemRoots());
    SelectRootOf(QDir::currentPath());
    connect(this, &QComboBox::activated, this, [this](int) { emit DriveChosen(SelectedRoot()); });
}

QStringList DriveList::SystemRoots() {
    QStringList roots{QStringLiteral("/")};
    const QString home = QDir::homePath();
    if (home != QLatin1String("/")) roots << home;
    QStringList volumes;
    for (const QStorageInfo& v : QStorageInfo::mountedVolumes()) {
        const QString r = v.rootPath();
        for (const char* base : {"/media/", "/mnt/", "/run/media/"})
            if (r.startsWith(QLatin1String(base)) && !roots.contains(r) && !volumes.contains(r)) volumes << r;
    }
    volumes.sort();
    return roots + volumes;
}

QString DriveList::RootOf(const QStringList& roots, const QString& path) {
    QString best;
    for (const QString& r : roots)
        if (IsUnder(path, r) && r.size() > best.size()) best = r;
    if (best.isEmpty() && !roots.isEmpty()) best = roots.front();
    return best;
}

QString DriveList::SelectedRoot() const { return currentText(); }

QStringList DriveList::Roots() const {
    QStringList roots;
    for (int i = 0; i < count(); ++i) roots << itemText(i);
    return roots;
}

void DriveList::SelectRootOf(const QString& path) {
    const QSignalBlocker quiet(this);
    setCurrentIndex(findText(RootOf(Roots(), path)));
}

}  // namespace tarvolin
