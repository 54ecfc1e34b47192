#include "config/ui/FolderList.h"

#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QStyle>
#include <QTimer>

namespace tarvolin {

namespace {
constexpr int kPathRole = Qt::UserRole;

QString NearestExisting(QString path) {
    path = QDir::cleanPath(path.isEmpty() ? QStringLiteral("/") : path);
    if (!path.startsWith(QLatin1Char('/'))) path = QDir::current().absoluteFilePath(path);
    while (path != QLatin1String("/") && !QFileInfo(path).isDir()) path = QFileInfo(path).path();
    return path;
}

QString EntryName(const QString& path) {
    return path == QLatin1String("/") ? path : QFileInfo(path).fileName();
}
}  // namespace

FolderList::FolderList(QWidget* parent) : QTreeWidget(parent) {
    setHeaderHidden(true);
    setColumnCount(1);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setExpandsOnDoubleClick(false);
    setIndentation(10);
    setSelectionMode(QAbstractItemView::SingleSelection);
    connect(this, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* item, int) { emit EntryClicked(item->data(0, kPathRole).toString()); });
    // The list is rebuilt after the double click is done with its entry.
    connect(this, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item, int) {
        const QString target = item->data(0, kPathRole).toString();
        QTimer::singleShot(0, this, [this, target] { SetPath(target); });
    });
}

void FolderList::SetPath(const QString& path) {
    path_ = NearestExisting(path);
    clear();
    const QIcon open = style()->standardIcon(QStyle::SP_DirOpenIcon);
    const QIcon closed = style()->standardIcon(QStyle::SP_DirClosedIcon);

    QStringList chain;  // "/", "/home", "/home/user", ...
    for (QString p = path_;; p = QFileInfo(p).path()) {
        chain.prepend(p);
        if (p == QLatin1String("/")) break;
    }
    QTreeWidgetItem* parentItem = nullptr;
    for (const QString& p : chain) {
        auto* item = parentItem ? new QTreeWidgetItem(parentItem) : new QTreeWidgetItem(this);
        item->setText(0, EntryName(p));
        item->setIcon(0, open);
        item->setData(0, kPathRole, p);
        parentItem = item;
    }
    QTreeWidgetItem* current = parentItem;
    const QDir dir(path_);
    for (const QString& sub : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase)) {
        auto* item = new QTreeWidgetItem(current);
        item->setText(0, sub);
        item->setIcon(0, closed);
        item->setData(0, kPathRole, dir.absoluteFilePath(sub));
    }
    expandAll();
    setCurrentItem(current);
    scrollToItem(current, QAbstractItemView::PositionAtTop);
    emit PathChanged();
}

QString FolderList::SelectedPath() const {
    const QTreeWidgetItem* item = currentItem();
    return item ? item->data(0, kPathRole).toString() : path_;
}

QStringList FolderList::Entries() const {
    QStringList out;
    if (topLevelItemCount() == 0) return out;
    for (QTreeWidgetItemIterator it(topLevelItem(0)); *it; ++it) out << (*it)->data(0, kPathRole).toString();
    return out;
}

}  // namespace tarvolin
