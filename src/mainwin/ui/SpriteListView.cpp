#include "mainwin/ui/SpriteListView.h"

namespace tarvolin {

QModelIndex SpriteListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (action == MoveHome || action == MoveEnd) modifiers |= Qt::ControlModifier;
    return QTableView::moveCursor(action, modifiers);
}

}  // namespace tarvolin
