#include "mainwin/ui/FrmMain.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>

#include "base/Ask.h"
#include "config/Settings.h"
#include "config/ui/AppIcon.h"
#include "config/ui/FrmAbout.h"
#include "config/ui/FrmPath.h"
#include "config/ui/Startup.h"
#include "platform/MessageBox.h"
#include "platform/Twips.h"

namespace tarvolin {

namespace {

using platform::DesignFont;
using platform::Pixels;

constexpr const char* kArial = "Arial";
constexpr const char* kLabelFont = "ＭＳ Ｐゴシック";

// sprmaker.exe lies beside the program; the batch names it by this folder.
SessionSetup WindowSession() {
    return SessionSetup{QCoreApplication::applicationDirPath().toStdString() + "/", true};
}

}  // namespace

FrmMain::FrmMain(const AppIni& ini, platform::Services& services)
    : ini_(ini), services_(services), session_(ini, *this, WindowSession()) {
    setObjectName(QStringLiteral("frmMain"));
    // A fixed window with a close box and no minimise or maximise button.
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                   Qt::MSWindowsFixedSizeDialogHint);
    setWindowIcon(AppIcon());
    setFixedSize(Pixels(7200), Pixels(3480));
    LayOut();

    ConnectCommands();
    lstFiles.installEventFilter(this);

    // The companions, loaded hidden in this order; none of them reads the settings here.
    frmPCX_ = CreatePreviewWindow();
    frmPCX_->installEventFilter(this);
    frmPath_ = new FrmPath(this);
}

FrmMain::~FrmMain() = default;

void FrmMain::LayOut() {
    setFont(DesignFont(kArial, 9));
    const QFont controls = DesignFont(kArial, 8.25);
    struct Control {
        QWidget& W;
        const char* Name;
        int L, T, Wd, H;
    };
    const Control layout[] = {
        {cmdSffOpen, "cmdSffOpen", 120, 120, 1335, 255},
        {lblSffName, "lblSffName", 1560, 120, 3375, 255},
        {lblImgCnt, "lblImgCnt", 5040, 120, 885, 210},
        {lblImage, "lblImage", 6000, 120, 735, 255},
        {cmdAbout, "cmdAbout", 6840, 120, 255, 255},
        {fraLstCtrl, "fraLstCtrl", 60, 360, 7035, 2355},
        {lstFiles, "lstFiles", 60, 120, 6135, 2175},
        {cmdAdd, "cmdAdd", 6240, 180, 735, 435},
        {cmdCopy, "cmdCopy", 6240, 660, 735, 435},
        {cmdDel, "cmdDel", 6240, 1140, 735, 435},
        {cmdInit, "cmdInit", 6240, 1740, 735, 435},
        {fraPartExec, "fraPartExec", 120, 2940, 3075, 495},
        {cmdBuildSFF, "cmdBuildSFF", 120, 2760, 3075, 255},
        {cmdPCX, "cmdPCX", 60, 180, 1455, 255},
        {cmdText, "cmdText", 1560, 180, 1455, 255},
        {chkScreen, "chkScreen", 5820, 2820, 1335, 255},
        {cmdEnd, "cmdEnd", 5820, 3120, 1335, 255},
    };
    for (const Control& c : layout) {
        c.W.setObjectName(QString::fromLatin1(c.Name));
        platform::PlaceInTwips(c.W, c.L, c.T, c.Wd, c.H);
        c.W.setFont(controls);
    }
    // The build button's lower part lies over the top edge of the frame of its two steps.
    cmdBuildSFF.raise();
    cmdAbout.setText(QStringLiteral("&?"));  // fixed: the settings have no key for it
    for (QPushButton* b : {&cmdSffOpen, &cmdAbout, &cmdAdd, &cmdCopy, &cmdDel, &cmdInit, &cmdBuildSFF, &cmdPCX,
                           &cmdText, &cmdEnd})
        b->setAutoDefault(false);  // no button is the window's default or cancel button

    // Sized to its text; it grows to the left, into the free room, never under the count.
    lblImgCnt.setProperty(kAutoSizeProperty, kKeepRight);
    ShowDesignCaptions(*this, Window::Main);
    for (QLabel* l : {&lblSffName, &lblImage}) {
        l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        l->setFont(DesignFont(kLabelFont, 9));
    }
    lblImage.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblSffName.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    lblImgCnt.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    fraLstCtrl.setTitle(QString());
    fraPartExec.setTitle(QString());

    SetUpSpriteList(lstFiles, model_);

    setTabOrder(&cmdSffOpen, &lstFiles);
    QWidget* order[] = {&lstFiles, &cmdAdd, &cmdCopy, &cmdDel, &cmdInit, &chkScreen,
                        &cmdBuildSFF, &cmdPCX, &cmdText, &cmdAbout, &cmdEnd};
    for (size_t i = 0; i + 1 < std::size(order); ++i) setTabOrder(order[i], order[i + 1]);
}

void FrmMain::ConnectCommands() {
    Session& s = session_;
    connect(&cmdSffOpen, &QPushButton::clicked, this, [&s] { s.Open(); });
    connect(&cmdDel, &QPushButton::clicked, this, [&s] { s.Delete(); });
    connect(&cmdInit, &QPushButton::clicked, this, [&s] { s.Initialize(); });
    connect(&cmdBuildSFF, &QPushButton::clicked, this, [&s] { s.BuildSff(); });
    connect(&cmdPCX, &QPushButton::clicked, this, [&s] { s.SavePcx(); });
    connect(&cmdText, &QPushButton::clicked, this, [&s] { s.MakeText(); });
    connect(&lstFiles, &QTableView::clicked, this, [&s] { s.SelectList(); });
    // Add and Copy stand in the window and do nothing: what a new or copied row should
    // point at is not settled.
    connect(&cmdAbout, &QPushButton::clicked, this, &FrmMain::OnAbout);
    connect(&chkScreen, &QCheckBox::clicked, this, &FrmMain::OnScreen);
    connect(&cmdEnd, &QPushButton::clicked, this, &FrmMain::OnEnd);
}

std::unique_ptr<FrmMain> FrmMain::Start(const Settings& settings, platform::Services& services) {
    // The settings are read by the caller before this, because the window keeps a
    // reference to them; no load step of any window looks at them, so the order of the
    // start-up is the same as far as anything on screen can tell.
    RegisterFontSubstitutes();
    auto main = std::make_unique<FrmMain>(settings.Ini, services);
    ApplyFontsAndCaptions(settings, main->PathDialog(), main->PreviewWindow(), *main);
    main->show();
    return main;
}

// The preview screen: a window of its own (no owner), editing the rows of this window's
// table for the row SelectedRow.
std::unique_ptr<FrmPcx> FrmMain::CreatePreviewWindow() {
    auto w = std::make_unique<FrmPcx>(
        PreviewHost{session_.Table, session_.SelectedRow, ini_, services_.Box, [this] { session_.ChangePcx(); },
                    [this](int place, Column column, std::string text, uint64_t run) {
                        session_.EditCell(place, column, std::move(text), run);
                    },
                    [this](const std::string& path) { session_.ChangePcxFile(path); }});
    w->setWindowIcon(AppIcon());
    return w;
}

void FrmMain::OnAbout() {
    // The version dialog is made anew for each showing, so its load step runs each time.
    FrmAbout about(this);
    about.exec();
}

void FrmMain::OnScreen() {
    if (chkScreen.isChecked()) frmPCX_->ShowBeside(frameGeometry());
    else frmPCX_->HideFromScreen();
    activateWindow();
    chkScreen.setFocus();
}

void FrmMain::OnEnd() {
    if (services_.Box.AskYes(this, ini_.MsgConfirmExit, style::YesNo + style::Question)) close();
}

void FrmMain::closeEvent(QCloseEvent* event) {
    // Ending closes every other window; nothing is saved.
    frmPCX_->hide();
    frmPath_->hide();
    event->accept();
}

bool FrmMain::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &lstFiles) {
        if (event->type() == QEvent::KeyRelease) {
            // Only the release counts, so a held arrow key scrolls and updates once.
            auto* key = static_cast<QKeyEvent*>(event);
            if (!key->isAutoRepeat() && (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down)) session_.SelectList();
        } else if (event->type() == QEvent::FontChange) {
            FitRowHeight(lstFiles);
        }
    } else if (watched == frmPCX_.get() && event->type() == QEvent::Close && frmPCX_->isVisible()) {
        // The preview screen has no close box: chkScreen alone hides it, so the two can't
        // get out of step (a window manager's close request is refused).
        event->ignore();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace tarvolin
