#pragma once
// dirDir of the working-folder dialog: the current folder with the folders above it, each
// one step further in, and the current folder's sub-folders below it. One entry is under
// the selection; a single click only moves the selection, a double click opens the entry.
#include <QTreeWidget>

namespace tarvolin {

class FolderList : public QTreeWidget {
    Q_OBJECT
public:
    explicit FolderList(QWidget* parent);

    // Makes `path` the current folder and puts the selection on it. A folder that no
    // longer exists (or can't be reached) gives way to the nearest one above it that does;
    // a folder that can't be read shows no sub-folders.
    void SetPath(const QString& path);
    QString Path() const { return path_; }

    // The path of the entry under the selection.
    QString SelectedPath() const;

    // The paths of all entries, top to bottom.
    QStringList Entries() const;

signals:
    void EntryClicked(const QString& path);
    // The current folder changed (by a double click or by SetPath).
    void PathChanged();

private:
    QString path_;
};

}  // namespace tarvolin
