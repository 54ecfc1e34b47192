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
    marked_.assign(place > 0 ? 1 : 0, place);
    if (observer_) observer_->SelectionChanged(selected_);
}

void SpriteTable::SelectRows(std::vector<int> places, int current) {
    std::erase_if(places, [this](int p) { return p < 1 || p > RowCount(); });
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    marked_ = std::move(places);
    if (current < 1 || current > RowCount()) current = marked_.empty() ? std::min(1, RowCount()) : marked_.front();
    selected_ = current;
    if (observer_) observer_->SelectionChanged(selected_);
}

std::vector<int> SpriteTable::SelectedRows() const {
    if (!marked_.empty()) return marked_;
    return selected_ > 0 ? std::vector<int>{selected_} : std::vector<int>{};
}

int SpriteTable::AddRow(SpriteRow row) {
    std::vector<SpriteRow> one;
    one.push_back(std::move(row));
    InsertRows({RowCount() + 1}, std::move(one));
    if (selected_ == 0) Select(1);
    return RowCount();
}

void SpriteTable::RemoveRow(int place) { RemoveRows({place}); }

void SpriteTable::NotifyRows(const std::vector<int>& places, bool inserted) {
    if (!observer_) return;
    // One row at a time for the common case; a view follows a whole reset as cheaply as a
    // long list of single changes.
    if (places.size() != 1) observer_->TableReset();
    else if (inserted) observer_->RowInserted(places.front());
    else observer_->RowRemoved(places.front());
    observer_->SelectionChanged(selected_);
}

void SpriteTable::InsertRows(const std::vector<int>& places, std::vector<SpriteRow> rows) {
    assert(places.size() == rows.size());
    if (rows.empty()) return;
    const size_t total = rows_.size() + rows.size();
    std::vector<SpriteRow> merged;
    merged.reserve(total);
    // newPlace[old place] for the marks and the current row.
    std::vector<int> newPlace(rows_.size() + 1, 0);
    size_t next = 0, old = 0;
    for (size_t at = 0; at < total; ++at) {
        if (next < places.size() && static_cast<size_t>(places[next]) == at + 1) {
            merged.push_back(std::move(rows[next++]));
        } else {
            assert(old < rows_.size());
            merged.push_back(std::move(rows_[old++]));
            newPlace[old] = static_cast<int>(at) + 1;
        }
    }
    rows_ = std::move(merged);
    for (int& m : marked_) m = newPlace[static_cast<size_t>(m)];
    selected_ = newPlace[static_cast<size_t>(selected_)];
    NotifyRows(places, true);
}

std::vector<SpriteRow> SpriteTable::RemoveRows(const std::vector<int>& places) {
    std::vector<SpriteRow> taken;
    if (places.empty()) return taken;
    taken.reserve(places.size());
    std::vector<int> newPlace(rows_.size() + 1, 0);  // 0: removed
    size_t next = 0, kept = 0;
    for (size_t at = 0; at < rows_.size(); ++at) {
        if (next < places.size() && static_cast<size_t>(places[next]) == at + 1) {
            assert(places[next] >= 1 && places[next] <= RowCount());
            taken.push_back(std::move(rows_[at]));
            ++next;
        } else {
            if (kept != at) rows_[kept] = std::move(rows_[at]);
            newPlace[at + 1] = static_cast<int>(++kept);
        }
    }
    rows_.resize(kept);
    std::erase_if(marked_, [&](int m) { return newPlace[static_cast<size_t>(m)] == 0; });
    for (int& m : marked_) m = newPlace[static_cast<size_t>(m)];
    // A current row that went is followed by the row that takes its place (or the new last).
    if (selected_ > 0) {
        int place = selected_;
        while (place <= static_cast<int>(newPlace.size()) - 1 && newPlace[static_cast<size_t>(place)] == 0) ++place;
        selected_ = place < static_cast<int>(newPlace.size()) ? newPlace[static_cast<size_t>(place)] : RowCount();
    }
    NotifyRows(places, false);
    return taken;
}

void SpriteTable::Clear() {
    rows_.clear();
    selected_ = 0;
    marked_.clear();
    if (observer_) {
        observer_->TableReset();
        observer_->SelectionChanged(0);
    }
}

void SpriteTable::Assign(std::vector<SpriteRow> rows) {
    rows_ = std::move(rows);
    selected_ = rows_.empty() ? 0 : 1;
    marked_.assign(selected_, 1);
    if (observer_) {
        observer_->TableReset();
        observer_->SelectionChanged(selected_);
    }
}

void SpriteTable::SwapRows(std::vector<SpriteRow>& rows) {
    rows_.swap(rows);
    selected_ = rows_.empty() ? 0 : 1;
    marked_.assign(selected_, 1);
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
    marked_.assign(selected_ > 0 ? 1 : 0, selected_);
    if (observer_) {
        observer_->TableReset();
        observer_->SelectionChanged(selected_);
    }
}

}  // namespace tarvolin
