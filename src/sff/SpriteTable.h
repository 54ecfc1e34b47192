#pragma once
// SpriteTable: the rows the user sees and edits, one per sprite, ten text columns each.
// It is the only store of the rows: the list widget is a view on it, and every reader
// takes the values back out as text. Rows are counted from 1.
//
// The selection has two parts: the current row, the one the preview shows and every edit
// of a row's fields acts on, and the marked rows (several, with Shift or Ctrl), which
// Delete and Copy act on.
#include <array>
#include <string>
#include <vector>

namespace tarvolin {

enum class Column : int {
    SortNo = 0,
    GroupNo,
    ItemNo,
    PalType,
    SortKey,
    PPos,
    PcxName,
    AxisX,
    AxisY,
    PcxPath,
};
inline constexpr int kColumnCount = 10;

struct SpriteRow {
    std::array<std::string, kColumnCount> Cells;

    const std::string& operator[](Column c) const { return Cells[static_cast<size_t>(c)]; }
    std::string& operator[](Column c) { return Cells[static_cast<size_t>(c)]; }
};

// Told of every change, so that a view can follow. All places are counted from 1.
class SpriteTableObserver {
public:
    virtual ~SpriteTableObserver() = default;
    virtual void TableReset() = 0;                       // rows replaced wholesale
    virtual void RowInserted(int place) = 0;
    virtual void RowRemoved(int place) = 0;
    virtual void CellChanged(int place, Column column) = 0;
    virtual void SelectionChanged(int place) = 0;        // the current row (0: none) or the marks changed
};

class SpriteTable {
public:
    int RowCount() const { return static_cast<int>(rows_.size()); }
    bool Empty() const { return rows_.empty(); }

    // place from 1 to RowCount(); anything else is a programming error (asserted).
    const SpriteRow& Row(int place) const;
    const std::string& Cell(int place, Column column) const;
    void SetCell(int place, Column column, std::string text);

    // The current row, 0 when none is (only while the table is empty).
    int Selected() const { return selected_; }
    // Makes `place` the current row and the only marked one.
    void Select(int place);
    // Marks `places` (any order; places outside the table are dropped) and makes `current`
    // the current row.
    void SelectRows(std::vector<int> places, int current);
    // The rows a command on the selection acts on, ascending: the marked rows, or the
    // current row when none is marked.
    std::vector<int> SelectedRows() const;

    // Adds a row at the end and returns its place.
    int AddRow(SpriteRow row = {});
    void RemoveRow(int place);
    void Clear();

    // Puts `rows[k]` at `places[k]`, places ascending and each counted in the table as it
    // is after the rows before it are in: the inverse of RemoveRows. Marks and the current
    // row move with the rows they stand on.
    void InsertRows(const std::vector<int>& places, std::vector<SpriteRow> rows);
    // Takes out the rows at `places` (ascending, distinct) and gives them in that order.
    std::vector<SpriteRow> RemoveRows(const std::vector<int>& places);

    // Replaces all rows at once (one notification); selects row 1 when there is one.
    void Assign(std::vector<SpriteRow> rows);
    // Exchanges the rows with `rows` (one notification), without copying; the current row
    // becomes row 1, or none.
    void SwapRows(std::vector<SpriteRow>& rows);

    // Sorts by one column, ascending, comparing the texts byte by byte; equal keys keep
    // their order. The selection stays on the same row.
    void SortBy(Column column);

    void SetObserver(SpriteTableObserver* observer) { observer_ = observer; }

private:
    void NotifyRows(const std::vector<int>& places, bool inserted);
    std::vector<SpriteRow> rows_;
    int selected_ = 0;
    std::vector<int> marked_;  // ascending
    SpriteTableObserver* observer_ = nullptr;
};

}  // namespace tarvolin
