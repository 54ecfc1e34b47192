#pragma once
// The one file dialog of the main window, set up anew for each use (FileDialogSetup).
// Cancel gives nothing.
#include <optional>
#include <string>
#include <vector>

#include "base/FileDialogSetup.h"

class QWidget;
class QString;

namespace tarvolin::platform {

class FileDialog {
public:
    virtual ~FileDialog() = default;
    virtual std::optional<std::string> Show(QWidget* parent, const FileDialogSetup& setup) = 0;
    // An open dialog that takes one file or more; none on Cancel.
    virtual std::vector<std::string> ShowMany(QWidget* parent, const FileDialogSetup& setup) {
        auto one = Show(parent, setup);
        return one ? std::vector<std::string>{*one} : std::vector<std::string>{};
    }
};

// The real one, over QFileDialog.
class QtFileDialog : public FileDialog {
public:
    std::optional<std::string> Show(QWidget* parent, const FileDialogSetup& setup) override;
    std::vector<std::string> ShowMany(QWidget* parent, const FileDialogSetup& setup) override;
};

// "Sff Files (*.sff)|*.sff|" -> "Sff Files (*.sff)"; a text without its pattern in brackets
// gets it appended: "Pcx Files (*.pcx|*.pcx|" -> "Pcx Files (*.pcx (*.pcx)". Pairs are
// joined with ";;"; the patterns of one pair, parted by ';', by blanks.
QString QtFilterFrom(const std::string& filter);

}  // namespace tarvolin::platform
