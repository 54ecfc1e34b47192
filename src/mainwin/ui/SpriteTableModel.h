#pragma once
// The list lstFiles is a view on SpriteTable: this adapter shows the table's ten text
// columns and an eleventh, "Palette", that says which palette the engine draws each row
// with (worked out, not stored). It keeps the view's current row and selected rows and
// those of SpriteTable the same. The table stays the only store of the rows; the adapter
// copies nothing.
#include <QAbstractTableModel>
#include <QItemSelectionModel>
#include <QStringList>
#include <array>
#include <optional>
#include <vector>

#include "sff/PaletteSource.h"
#include "sff/SpriteTable.h"

class QTableView;

namespace tarvolin {

inline constexpr int kPaletteColumn = kColumnCount;
inline constexpr int kListColumns = kColumnCount + 1;
// Fixed title of the tenth column, which the settings cannot change.
inline constexpr const char* kPcxPathTitle = "PcxPath";

// The texts of the Palette column: the shared palette, one of its own, and the word
// before the numbers of the row whose palette it is ("as 9000,0").
struct PaletteWords {
    QString Shared, Own, As;
};

class SpriteTableModel : public QAbstractTableModel, private SpriteTableObserver {
    Q_OBJECT
public:
    SpriteTableModel(SpriteTable& table, const SffState& state);
    ~SpriteTableModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // The start-up step sets the column titles through this, like on any list.
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant& value, int role) override;

    // The selection the view must use: it follows SpriteTable's selection and moves it.
    QItemSelectionModel& Selection() { return selection_; }
    void SetPaletteWords(PaletteWords words);

signals:
    // The user moved the current row in the view (a click, a key): the row to show.
    void CurrentRowMoved();

private:
    void TableReset() override;
    void RowInserted(int place) override;
    void RowRemoved(int place) override;
    void CellChanged(int place, Column column) override;
    void SelectionChanged(int place) override;
    void ViewSelectionChanged();
    QString PaletteText(const SpriteRow& row) const;
    void ForgetPlaces();

    SpriteTable& table_;
    const SffState& state_;
    PaletteWords words_{QStringLiteral("shared"), QStringLiteral("own"), QStringLiteral("as")};
    // Made when first asked after a change of file or rows.
    mutable std::optional<PaletteSources> sources_;
    mutable std::vector<int> placeOfSubfile_;
    // The row count the view was last told of: a notification arrives after the table has
    // changed, while the view must still be told the old count between begin and end.
    int shownRows_ = 0;
    std::array<QString, kListColumns> titles_;
    QItemSelectionModel selection_;
    bool syncing_ = false;
};

// Puts lstFiles on the model: every column, each as wide as its title or its usual
// contents, rows selected whole (several with Shift and Ctrl), no editing, no sorting on a
// title click, no row numbers.
void SetUpSpriteList(QTableView& view, SpriteTableModel& model);

// Row height to the list's present font; called again when the font changes.
void FitRowHeight(QTableView& view);

}  // namespace tarvolin
