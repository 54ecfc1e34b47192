#pragma once
// drvDrive of the working-folder dialog. Linux has no drive letters: the list holds the
// roots a user would start from — "/", the home folder and the volumes mounted under
// /media, /mnt and /run/media — and the "drive" of a folder is the root that is the
// longest leading part of its path.
#include <QComboBox>
#include <QStringList>

namespace tarvolin {

class DriveList : public QComboBox {
    Q_OBJECT
public:
    explicit DriveList(QWidget* parent);

    // The roots of this system, "/" first.
    static QStringList SystemRoots();
    // The root of `roots` whose folders contain `path` most closely ("/" when none does
    // more closely); an empty text when `roots` is empty.
    static QString RootOf(const QStringList& roots, const QString& path);

    QString SelectedRoot() const;
    // The entries of the list.
    QStringList Roots() const;
    // Selects the root of `path` without telling anyone: the caller steers the lists.
    void SelectRootOf(const QString& path);

signals:
    // The user picked another entry.
    void DriveChosen(const QString& root);
};

}  // namespace tarvolin
