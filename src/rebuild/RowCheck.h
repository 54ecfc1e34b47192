#pragma once
// Rows that can't be exported or built, found before anything is written, so that a
// command never stops half-way on a row it could have refused at its start: a row with
// no picture data (past the end of a short subfile chain it has no PCX Name), a picture
// the builder would refuse (its own picture file from Change PCX, or the sprite's data in
// the SFF), and an exported file that would replace a picture file a row points to.
#include <string>
#include <vector>

#include "base/Result.h"
#include "sff/PcxExport.h"
#include "sff/SffState.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

struct RowProblem {
    int Place = 0;  // the row, counted from 1
    Error Why;      // its detail names the row
};

// The problems of every row that Make Text (state: nullptr) or an export into `folder`
// (state: the open SFF's) would meet: no picture data (ERR_ROW_EMPTY), a picture file of
// its own that can't be read (ERR_PCX_READ), a picture the builder refuses (ERR_MSG_0),
// and, for an export, a file it would write that is any row's own picture (ERR_PCX_CLASH).
// An export of some rows only (`places`, counted from 1; empty: every row) is checked for
// those rows, as files of `format`.
std::vector<RowProblem> FindRowProblems(const SffState* state, const SpriteTable& table, const std::string& folder = {},
                                        PictureFormat format = PictureFormat::Pcx, const std::vector<int>& places = {});

// All of them as one refusal naming every row concerned; Ok when there is none.
Status Refusal(const std::vector<RowProblem>& problems);

// Make Text: rows without data and pictures of the rows' own.
Status CheckRowsForBuild(const SpriteTable& table);
// Save All PCX, Build SFF and an export of some rows: everything the export into `folder`
// and the builder meet.
Status CheckRowsBeforeExport(const SffState& state, const SpriteTable& table, const std::string& folder,
                             PictureFormat format = PictureFormat::Pcx, const std::vector<int>& places = {});

}  // namespace tarvolin
