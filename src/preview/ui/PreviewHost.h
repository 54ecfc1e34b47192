#pragma once
// What the preview window needs of the program around it: the rows it edits, the row the
// boxes belong to (the session's SelectedRow, set by SelectList), the settings' messages,
// the message box, and the command behind Change PCX (the main window's file dialog
// chooses the picture). The main window fills it in; the preview knows nothing else of it.
#include <functional>

#include "config/AppIni.h"
#include "platform/MessageBox.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

struct PreviewHost {
    SpriteTable& Table;
    const int& SelectedRow;
    const AppIni& Ini;
    platform::MessageBox& Box;
    std::function<void()> ChangePcx;
};

}  // namespace tarvolin
