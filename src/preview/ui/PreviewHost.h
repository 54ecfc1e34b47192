#pragma once
// What the preview window needs of the program around it: the rows it shows, the row the
// boxes belong to (the session's SelectedRow, set by SelectList), the settings' messages,
// the message box, the command behind Change PCX (the main window's file dialog chooses
// the picture), and the writing of a cell, which goes through the session so that every
// edit is a step of the table's history. The main window fills it in; the preview knows
// nothing else of it.
#include <cstdint>
#include <functional>
#include <string>

#include "config/AppIni.h"
#include "platform/MessageBox.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

struct PreviewHost {
    const SpriteTable& Table;
    const int& SelectedRow;
    const AppIni& Ini;
    platform::MessageBox& Box;
    std::function<void()> ChangePcx;
    // Session::EditCell: a cell of row `place`; edits with the same non-zero `run` on one
    // row are one step of the history.
    std::function<void(int place, Column column, std::string text, uint64_t run)> Edit;
    // Session::ChangePcxFile: Change PCX with a picture file that was not chosen in the
    // dialog (one dropped on the window).
    std::function<void(const std::string& path)> ChangePcxFile;
};

}  // namespace tarvolin
