#pragma once
// The list lstFiles is a view on SpriteTable: this adapter shows the table's ten text
// columns and keeps the view's one selected row and SpriteTable::Selected() the same.
// The table stays the only store of the rows; the adapter copies nothing.
#include <QAbstractTableModel>
#include <QItemSelectionModel>
#include <QStringList>
#include <array>

#include "sff/SpriteTable.h"

class QTableView;

namespace tarvolin {

// Widths of the ten columns in twips; 0 hides a column on screen, its data stay.
inline constexpr std::array<int, kColumnCount> kColumnWidthTwips = {0, 900, 900, 800, 0, 700, 2500, 0, 0, 0};
// Fixed title of the tenth column, which the settings cannot change.
inline constexpr const char* kPcxPathTitle = "PcxPath";

class SpriteTableModel : public QAbstractTableModel, private SpriteTableObserver {
    Q_OBJECT
public:
    explicit SpriteTableModel(SpriteTable& table);
    ~SpriteTableModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // The start-up step sets the column titles through this, like on any list.
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant& value, int role) override;

    // The selection the view must use: it follows SpriteTable::Select and moves it.
    QItemSelectionModel& Selection() { return selection_; }

private:
    void TableReset() override;
    void RowInserted(int place) override;
    void RowRemoved(int place) override;
    void CellChanged(int place, Column column) override;
    void SelectionChanged(int place) override;
    void ViewCurrentChanged(const QModelIndex& current);

    SpriteTable& table_;
    // The row count the view was last told of: a notification arrives after the table has
    // changed, while the view must still be told the old count between begin and end.
    int shownRows_ = 0;
    std::array<QString, kColumnCount> titles_;
    QItemSelectionModel selection_;
    bool syncing_ = false;
};

// Puts lstFiles on the model: columns of fixed widths (0 hidden), one selected row with
// the whole row highlighted, no editing, no sorting on a title click, no row numbers.
void SetUpSpriteList(QTableView& view, SpriteTableModel& model);

// Row height to the list's present font; called again when the font changes.
void FitRowHeight(QTableView& view);

}  // namespace tarvolin
