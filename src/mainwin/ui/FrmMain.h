#pragma once
// frmMain: the window the user works in. It holds the session (the open SFF's state, the
// sprite table, the selected row), the list that shows the table, the two labels, the find
// box, and the buttons of every command. The commands are the session's; the window is
// their user interface (MainWindowUi.cpp) with the real message box, file dialog and batch
// console. It grows and shrinks, the list taking the room; its size and place, the
// preview's, and the recent files are kept in the user's state file between runs.
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <QWidget>
#include <memory>

#include "base/Result.h"
#include "config/AppIni.h"
#include "config/UserState.h"
#include "mainwin/Session.h"
#include "mainwin/SessionUi.h"
#include "mainwin/ui/SpriteListView.h"
#include "mainwin/ui/SpriteTableModel.h"
#include "platform/Services.h"
#include "preview/ui/FrmPcx.h"

namespace tarvolin {

class FrmPath;
struct Settings;

class FrmMain : public QWidget, private SessionUi {
    Q_OBJECT
public:
    FrmMain(const AppIni& ini, platform::Services& services);
    ~FrmMain() override;

    // The start-up: creates the main window with its hidden companions, applies the
    // settings' fonts and captions to all of them, puts the windows where the user's state
    // file says, and shows it. `settings` must outlive the window.
    static std::unique_ptr<FrmMain> Start(const Settings& settings, platform::Services& services);

    // Opens a file named on the command line, dropped on the window or chosen among the
    // recent files, with Open SFF's questions and refusals.
    void OpenGiven(const std::string& path);

    // The open file, the rows, the row last shown on the preview screen, and the commands.
    Session& Work() { return session_; }

    const AppIni& Ini() const { return ini_; }
    // The companions: the preview screen and the working-folder dialog.
    QWidget& PreviewWindow() { return *frmPCX_; }
    FrmPath& PathDialog() { return *frmPath_; }

public slots:
    void OnAbout();
    void OnScreen();
    void OnEnd();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void LayOut();
    void ConnectCommands();
    void AddShortcuts();
    std::unique_ptr<FrmPcx> CreatePreviewWindow();
    void ApplyOwnCaptions(const Settings& settings);
    void PlaceWindows();
    void SaveState();
    // After Open SFF: a file opened goes to the front of the recent files.
    void Opened(CommandEnd end);
    void ShowRecentFiles(const QPoint& at);
    void ShowTitle();

    // SessionUi: what the commands ask of the window.
    bool Ask(const std::string& text, int styleWord) override;
    void Tell(const std::string& text, int styleWord) override;
    std::optional<std::string> ChooseFile(const FileDialogSetup& setup) override;
    std::optional<std::string> ChooseWorkFolder(const std::string& workFolder) override;
    void SetBusy(bool busy) override;
    void PumpEvents() override;
    bool RunBatch(const std::string& batchName, const std::string& folder) override;
    void ShowLabels(const std::string& sffName, const std::string& imageCount) override;
    void ShowSffRow(const SpriteRow& row, const SffState& sff, int64_t subfile, const std::string& source) override;
    void ShowFileRow(const SpriteRow& row, const std::string& path) override;
    void ShowPictureFile(const std::string& path) override;
    void ResetPreview() override;
    Reply AskOrCancel(const std::string& text, int styleWord) override;
    std::vector<std::string> ChooseFiles(const FileDialogSetup& setup) override;
    void TableChanged() override;

    const AppIni& ini_;
    platform::Services& services_;
    Session session_;

    UserState userState_;
    QString title_;      // the window's title without the mark of unsaved edits
    bool quitting_ = false;  // Exit has asked already

    // The controls, parents before children (they are destroyed in reverse order).
    QPushButton cmdSffOpen{this};
    QToolButton cmdRecent{this};
    QLabel lblSffName{this};
    QLabel lblImgCnt{this};
    QLabel lblImage{this};
    QPushButton cmdAbout{this};
    QGroupBox fraLstCtrl{this};
    SpriteTableModel model_{session_.Table, session_.State};
    QLabel lblFind{&fraLstCtrl};
    QLineEdit txtFind{&fraLstCtrl};
    SpriteListView lstFiles{&fraLstCtrl};
    QPushButton cmdAdd{&fraLstCtrl};
    QPushButton cmdCopy{&fraLstCtrl};
    QPushButton cmdDel{&fraLstCtrl};
    QPushButton cmdInit{&fraLstCtrl};
    QGroupBox fraPartExec{this};
    QPushButton cmdBuildSFF{this};
    QPushButton cmdPCX{&fraPartExec};
    QPushButton cmdText{&fraPartExec};
    QCheckBox chkScreen{this};
    QPushButton cmdEnd{this};
    // The table's menu (a right click on the list): the selected rows as PNG or PCX files.
    QMenu tableMenu_{this};
    QAction* exportPng_ = nullptr;
    QAction* exportPcx_ = nullptr;

    // The companions loaded hidden at start-up: the preview screen (a window of its own,
    // no owner) and the working-folder dialog.
    std::unique_ptr<FrmPcx> frmPCX_;
    FrmPath* frmPath_ = nullptr;
};

}  // namespace tarvolin
