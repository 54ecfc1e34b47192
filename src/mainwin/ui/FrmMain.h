#pragma once
// frmMain: the window the user works in. It holds the open SFF's state, the sprite table
// and its list, the two labels whose texts are data, and the buttons of every command.
// The commands live in files of their own (OpenSffCommand, TableCommands, BuildCommands).
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QWidget>
#include <memory>

#include "base/Result.h"
#include "config/AppIni.h"
#include "mainwin/ui/SpriteListView.h"
#include "mainwin/ui/SpriteTableModel.h"
#include "platform/Services.h"
#include "preview/ui/FrmPcx.h"
#include "sff/SffState.h"
#include "sff/SpriteTable.h"

namespace tarvolin {

class FrmPath;
struct Settings;

class FrmMain : public QWidget {
    Q_OBJECT
public:
    FrmMain(const AppIni& ini, platform::Services& services);
    ~FrmMain() override;

    // The start-up: creates the main window with its hidden companions, applies the
    // settings' fonts and captions to all of them, and shows it. `settings` must outlive
    // the window.
    static std::unique_ptr<FrmMain> Start(const Settings& settings, platform::Services& services);

    // The open file, the rows, and the row last shown on the preview screen.
    SffState State;
    SpriteTable Table;
    int SelectedRow = 0;

    const AppIni& Ini() const { return ini_; }
    platform::Services& Services() { return services_; }
    QTableView& List() { return lstFiles; }
    QLabel& SffNameLabel() { return lblSffName; }
    QLabel& ImageLabel() { return lblImage; }
    QCheckBox& ScreenCheck() { return chkScreen; }
    QWidget& PreviewWindow() { return *frmPCX_; }
    FrmPcx& Preview() { return *frmPCX_; }
    FrmPath& PathDialog() { return *frmPath_; }

    // Shows State.SffNameCaption and State.ImageCaption in lblSffName and lblImage; every
    // command that changes them calls this.
    void ShowLabels();

    // Asks a Yes/No question in a message box over this window (the core's AskFn).
    bool Ask(const std::string& text, int styleWord);
    // Shows an error's message in a box with the OK button.
    void ShowError(const Error& error);

public slots:
    void OnSffOpen();
    void OnDelete();
    void OnInitialize();
    void OnSavePcx();
    void OnBuildSff();
    void OnMakeText();
    void OnAdd();
    void OnCopy();
    void OnAbout();
    void OnScreen();
    void OnEnd();
    void SelectList();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void LayOut();
    std::unique_ptr<FrmPcx> CreatePreviewWindow();
    void LoadRowPcx(int row);

    const AppIni& ini_;
    platform::Services& services_;

    // The controls, parents before children (they are destroyed in reverse order).
    QPushButton cmdSffOpen{this};
    QLabel lblSffName{this};
    QLabel lblImgCnt{this};
    QLabel lblImage{this};
    QPushButton cmdAbout{this};
    QGroupBox fraLstCtrl{this};
    SpriteTableModel model_{Table};
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

    // The companions loaded hidden at start-up: the preview screen (a window of its own,
    // no owner) and the working-folder dialog.
    std::unique_ptr<FrmPcx> frmPCX_;
    FrmPath* frmPath_ = nullptr;
};

}  // namespace tarvolin
