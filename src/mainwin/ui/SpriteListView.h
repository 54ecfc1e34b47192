#pragma once
// lstFiles: a table view that moves like a list: Home and End go to the first and the
// last row (a plain table view would move between columns, most of which are hidden).
#include <QTableView>

namespace tarvolin {

class SpriteListView : public QTableView {
    Q_OBJECT
public:
    using QTableView::QTableView;

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
};

}  // namespace tarvolin
