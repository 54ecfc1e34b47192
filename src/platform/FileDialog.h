#pragma once
// The one file dialog of the main window, set up anew for each use: open or save, a title,
// a filter in its "text|pattern|text|pattern|" form, a default file name, an initial
// folder (empty: not set) and the flags word (4: hide the read-only box; 6: also ask
// before overwriting). Cancel gives nothing.
#include <optional>
#include <string>

class QWidget;
class QString;

namespace tarvolin::platform {

struct FileDialogSetup {
    enum class Mode { Open, Save };
    Mode DialogMode = Mode::Open;
    std::string Title;
    std::string Filter;
    std::string FileName;
    std::string InitialFolder;
    int Flags = 0;
};

class FileDialog {
public:
    virtual ~FileDialog() = default;
    virtual std::optional<std::string> Show(QWidget* parent, const FileDialogSetup& setup) = 0;
};

// The real one, over QFileDialog.
class QtFileDialog : public FileDialog {
public:
    std::optional<std::string> Show(QWidget* parent, const FileDialogSetup& setup) override;
};

// "Sff Files (*.sff)|*.sff|" -> "Sff Files (*.sff)"; a text without its pattern in brackets
// gets it appended: "Pcx Files (*.pcx|*.pcx|" -> "Pcx Files (*.pcx (*.pcx)". Pairs are
// joined with ";;".
QString QtFilterFrom(const std::string& filter);

}  // namespace tarvolin::platform
