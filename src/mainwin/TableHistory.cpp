#include "mainwin/TableHistory.h"

#include <cassert>

namespace tarvolin {

TableHistory::Step& TableHistory::Open() {
    assert(open_);
    return steps_.back();
}

void TableHistory::Begin(uint64_t run, int place) {
    assert(!open_);
    open_ = true;
    const bool sameRun = run != 0 && done_ == steps_.size() && done_ > 0 && steps_.back().Run == run &&
                         steps_.back().RunPlace == place;
    if (sameRun) {
        // Taken up again: a new id, as the table it names has changed.
        steps_.back().Id = nextId_++;
        return;
    }
    steps_.resize(done_);  // what was taken back can't be done again after a new change
    Step step;
    step.Id = nextId_++;
    step.Run = run;
    step.RunPlace = place;
    step.Before = Current();
    // An edit of a row's cells is taken back with that row current, whichever row was.
    if (place > 0 && place != step.Before.Current) step.Before = Selection{place, {place}};
    steps_.push_back(std::move(step));
    ++done_;
}

void TableHistory::Commit() {
    Step& step = Open();
    open_ = false;
    if (step.Changes.empty()) {
        steps_.pop_back();
        --done_;
        return;
    }
    step.After = Current();
}

void TableHistory::SetCell(int place, Column column, std::string text) {
    Step& step = Open();
    if (table_.Cell(place, column) == text) return;
    // Within a run a cell keeps the text it had before the run's first change.
    for (const Change& c : step.Changes)
        if (c.What == Change::Kind::Cell && c.Place == place && c.Col == column) {
            table_.SetCell(place, column, std::move(text));
            return;
        }
    Change& c = Add(Change::Kind::Cell);
    c.Place = place;
    c.Col = column;
    c.Other = std::move(text);
    Apply(c);
}

void TableHistory::SetImageCaption(std::string text) {
    if (state_.ImageCaption == text) return;
    Change& c = Add(Change::Kind::Caption);
    c.Other = std::move(text);
    Apply(c);
}

void TableHistory::InsertRows(std::vector<int> places, std::vector<SpriteRow> rows) {
    if (places.empty()) return;
    Change& c = Add(Change::Kind::Rows);
    c.Places = std::move(places);
    c.Rows = std::move(rows);
    Apply(c);
}

void TableHistory::RemoveRows(std::vector<int> places) {
    if (places.empty()) return;
    Change& c = Add(Change::Kind::Rows);
    c.Places = std::move(places);
    c.InTable = true;
    Apply(c);
}

void TableHistory::EmptyFile() {
    Change& c = Add(Change::Kind::File);
    c.File = std::make_unique<FileChange>();
    // What Initialize leaves as it was stays in place.
    c.File->Other.SharedPalette = state_.SharedPalette;
    c.File->Other.ImageCount = state_.ImageCount;
    Apply(c);
}

TableHistory::Change& TableHistory::Add(Change::Kind kind) {
    std::vector<Change>& changes = Open().Changes;
    changes.emplace_back();
    changes.back().What = kind;
    return changes.back();
}

void TableHistory::Apply(Change& c) {
    switch (c.What) {
    case Change::Kind::Cell: {
        std::string now = table_.Cell(c.Place, c.Col);
        table_.SetCell(c.Place, c.Col, std::move(c.Other));
        c.Other = std::move(now);
        break;
    }
    case Change::Kind::Rows:
        if (c.InTable) c.Rows = table_.RemoveRows(c.Places);
        else table_.InsertRows(c.Places, std::move(c.Rows));
        c.InTable = !c.InTable;
        break;
    case Change::Kind::Caption: std::swap(state_.ImageCaption, c.Other); break;
    case Change::Kind::File:
        // The working folder is the program's, not the file's: it stays.
        std::swap(state_, c.File->Other);
        std::swap(state_.WorkFolder, c.File->Other.WorkFolder);
        table_.SwapRows(c.File->Rows);
        break;
    }
}

TableHistory::Selection TableHistory::Current() const {
    return Selection{table_.Selected(), table_.SelectedRows()};
}

void TableHistory::Restore(const Selection& selection) { table_.SelectRows(selection.Marked, selection.Current); }

bool TableHistory::Undo() {
    if (open_ || done_ == 0) return false;
    Step& step = steps_[--done_];
    for (auto c = step.Changes.rbegin(); c != step.Changes.rend(); ++c) Apply(*c);
    Restore(step.Before);
    return true;
}

bool TableHistory::Redo() {
    if (open_ || done_ == steps_.size()) return false;
    Step& step = steps_[done_++];
    for (Change& c : step.Changes) Apply(c);
    Restore(step.After);
    return true;
}

void TableHistory::Clear() {
    assert(!open_);
    steps_.clear();
    done_ = 0;
}

}  // namespace tarvolin
