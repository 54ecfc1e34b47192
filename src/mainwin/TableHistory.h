#pragma once
// The history of the table's changes, for Undo and Redo. Every change of the rows goes
// through here: a cell, rows put in or taken out, the image count of lblImage, and
// Initialize's emptying of the whole file. A step is the changes of one command (or of a
// run of edits, such as a drag of the axis); each change is kept as the text or rows it
// replaced, and doing it again swaps them back, so undo and redo are one operation. What a
// change takes out of the table moves into the history, never copied: Initialize's step
// holds the file's bytes and rows until it is undone.
//
// A step also keeps the selection before and after it, so that undo and redo select (and
// the session shows) the rows they changed.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "sff/SffState.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

class TableHistory {
public:
    TableHistory(SffState& state, SpriteTable& table) : state_(state), table_(table) {}

    // Begins a step; the changes made through this history until Commit belong to it.
    // `place`: the row whose cells it changes, current when the step is taken back. A step
    // with a non-zero `run` that follows a step of the same run and row directly takes up
    // that step again: a run of arrow presses or a drag is one step.
    void Begin(uint64_t run = 0, int place = 0);
    // Ends the step; one that changed nothing is dropped.
    void Commit();

    void SetCell(int place, Column column, std::string text);
    void SetImageCaption(std::string text);
    // RowsChange semantics of SpriteTable::InsertRows and RemoveRows.
    void InsertRows(std::vector<int> places, std::vector<SpriteRow> rows);
    void RemoveRows(std::vector<int> places);
    // Initialize: the file's state (all but the working folder) and every row move into
    // the step; the state left is empty.
    void EmptyFile();

    // Takes back the last step done, or does again the last one taken back, and selects
    // as before it or after it. False when there is none.
    bool Undo();
    bool Redo();
    bool CanUndo() const { return done_ > 0; }
    bool CanRedo() const { return done_ < steps_.size(); }

    // Names the state the table is in: equal positions mean equal tables. 0 is the state
    // after Clear.
    uint64_t Position() const { return done_ > 0 ? steps_[done_ - 1].Id : 0; }
    // Forgets every step (a new file is opened).
    void Clear();

private:
    struct FileChange {
        SffState Other;
        std::vector<SpriteRow> Rows;
    };
    // One change, kept as what it replaced: applying it swaps that back in.
    struct Change {
        enum class Kind { Cell, Rows, Caption, File } What;
        int Place = 0;                 // Cell
        Column Col = Column::SortNo;   // Cell
        std::string Other;             // Cell, Caption
        std::vector<int> Places;       // Rows
        std::vector<SpriteRow> Rows;   // Rows, held while they are out of the table
        bool InTable = false;          // Rows
        std::unique_ptr<FileChange> File;
    };
    struct Selection {
        int Current = 0;
        std::vector<int> Marked;
    };
    struct Step {
        uint64_t Id = 0;
        uint64_t Run = 0;
        int RunPlace = 0;
        std::vector<Change> Changes;
        Selection Before, After;
    };

    Change& Add(Change::Kind kind);
    void Apply(Change& change);
    Selection Current() const;
    void Restore(const Selection& selection);
    Step& Open();

    SffState& state_;
    SpriteTable& table_;
    std::vector<Step> steps_;
    size_t done_ = 0;  // steps_[0..done_) are done, the rest taken back
    bool open_ = false;
    uint64_t nextId_ = 1;
};

}  // namespace tarvolin
