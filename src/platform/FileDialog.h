#pragma once
// The one file dialog of the main window, set up anew for each use (FileDialogSetup).
// Cancel gives nothing.
#include <optional>
#include <string>

#include "base/FileDialogSetup.h"

class QWidget;
class QString;

namespace tarvolin::platform {

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
