#include "sff/SpriteTable.h"

#include <algorithm>
#include <cassert>
#include <numeric>

namespace tarvolin {

const SpriteRow& SpriteTable::Row(int place) const {
    assert(place >= 1 && place <= RowCount());
    return rows_[static_cast<size_t>(place - 1)];
}

const std::string& SpriteTable::Cell(int place, Column column) const { return Row(place)[column]; }

void SpriteTable::SetCell(int place, Column column, std::string text) {
    assert(place >= 1 && place <= RowCount());
    std::string& cell = rows_[static_cast<size_t>(place - 1)][column];
    if (cell == text) return;
    cell = std::move(text);
    if (observer_) observer_->CellChanged(place, column);
}

void SpriteTable::Select(int place) {
    if (place < 1 || place > RowCount()) place = RowCount() > 0 ? RowCount() : 0;
    selected_ = place;
    if (observer_) observer_->SelectionChanged(selected_);
}

int SpriteTable::AddRow(SpriteRow row) {
    rows_.push_back(std::move(row));
    if (observer_) observer_->RowInserted(RowCount());
    if (selected_ == 0) Select(1);
    return RowCount();
}

void SpriteTable::RemoveRow(int place) {
    assert(place >= 1 && place <= RowCount());
    rows_.erase(rows_.begin() + (place - 1));
    if (observer_) observer_->RowRemoved(place);
    if (selected_ > RowCount()) selected_ = RowCount();
    else if (selected_ > place) --selected_;
    if (observer_) observer_->SelectionChanged(selected_);
}

void SpriteTable::Clear() {
    rows_.clear();
    selected_ = 0;
    if (observer_) {
        observer_->TableReset();
        observer_->SelectionChanged(0);
    }
}

void SpriteTable::Assign(std::vector<SpriteRow> rows) {
    rows_ = std::move(rows);
    selected_ = rows_.empty() ? 0 : 1;
    if (observer_) {
        observer_->TableReset();
        observer_->SelectionChanged(selected_);
    }
}

void SpriteTable::SortBy(Column column) {
    std::vector<size_t> order(rows_.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](size_t a, size_t b) { return rows_[a][column] < rows_[b][column]; });
    std::vector<SpriteRow> sorted;
    sorted.reserve(rows_.size());
    int newSelected = 0;
    for (size_t i = 0; i < order.size(); ++i) {
        if (static_cast<int>(order[i]) + 1 == selected_) newSelected = static_cast<int>(i) + 1;
        sorted.push_back(std::move(rows_[order[i]]));
    }
    rows_ = std::move(sorted);
    selected_ = newSelected;
    if (observer_) {
        observer_->TableReset();
        observer_->SelectionChanged(selected_);
    }
}

}  // namespace tarvolin
