#pragma once
// What the preview window needs of the program around it: the rows it edits, the row the
// boxes belong to (SelectedRow of the main window, set by SelectList), the settings'
// messages, and the message box and file dialog. The main window fills it in; the preview
// knows nothing else of it.
#include "config/AppIni.h"
#include "platform/Services.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

struct PreviewHost {
    SpriteTable& Table;
    const int& SelectedRow;
    const AppIni& Ini;
    platform::Services& Services;
};

}  // namespace tarvolin
