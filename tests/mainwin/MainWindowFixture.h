#pragma once
// A started main window over scripted dialogs, with its settings file (or none) in a
// temporary folder, and the small steps every main-window test takes.
#include <QWidget>
#include <memory>
#include <string>

#include "config/Settings.h"
#include "mainwin/ui/FrmMain.h"
#include "support/ScriptedDialogs.h"
#include "support/TempDir.h"

namespace tarvolin::test {

class MainWindowFixture {
public:
    // `iniText` empty: no settings file at all.
    explicit MainWindowFixture(const std::string& iniText = {});

    FrmMain& Main() { return *main_; }
    Session& Work() { return main_->Work(); }
    ScriptedServices& Dialogs() { return dialogs_; }
    const TempDir& Dir() const { return dir_; }

    // A control of the main window or of the preview screen, by its object name.
    template <class W = QWidget>
    W& Control(const char* name) {
        W* w = main_->findChild<W*>(QString::fromLatin1(name));
        if (!w) w = main_->PreviewWindow().findChild<W*>(QString::fromLatin1(name));
        Q_ASSERT(w);
        return *w;
    }
    void Click(const char* name);

    // Writes a shared-palette SFF of `count` sprites (groups 0.., item 0) into the folder.
    std::string WriteSharedSff(const std::string& name, int count);
    // Opens `path` by the command: the scripted dialog chooses it.
    void Open(const std::string& path);
    // "name|count label|table rows|list rows": what the window shows of the open SFF.
    QString Shown();

private:
    TempDir dir_;
    Settings settings_;
    ScriptedServices dialogs_;
    std::unique_ptr<FrmMain> main_;
};

}  // namespace tarvolin::test
