#pragma once
// How the one file dialog of the main window is set up for a use: open or save, a title, a
// filter in its "text|pattern|text|pattern|" form, a default file name, an initial folder
// (empty: not set) and the flags word (4: hide the read-only box; 6: also ask before
// overwriting). The commands say it here; the window's dialog shows it.
#include <string>

namespace tarvolin {

struct FileDialogSetup {
    enum class Mode { Open, Save };
    Mode DialogMode = Mode::Open;
    std::string Title;
    std::string Filter;
    std::string FileName;
    std::string InitialFolder;
    int Flags = 0;
};

}  // namespace tarvolin
