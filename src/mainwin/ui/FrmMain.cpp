#include "mainwin/ui/FrmMain.h"

#include <QCloseEvent>
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

}  // namespace

FrmMain::FrmMain(const AppIni& ini, platform::Services& services) : ini_(ini), services_(services) {
    setObjectName(QStringLiteral("frmMain"));
    // A fixed window with a close box and no minimise or maximise button.
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                   Qt::MSWindowsFixedSizeDialogHint);
    setWindowIcon(AppIcon());
    setFixedSize(Pixels(7200), Pixels(3480));
    LayOut();

    connect(&cmdSffOpen, &QPushButton::clicked, this, &FrmMain::OnSffOpen);
    connect(&cmdAbout, &QPushButton::clicked, this, &FrmMain::OnAbout);
    connect(&cmdAdd, &QPushButton::clicked, this, &FrmMain::OnAdd);
    connect(&cmdCopy, &QPushButton::clicked, this, &FrmMain::OnCopy);
    connect(&cmdDel, &QPushButton::clicked, this, &FrmMain::OnDelete);
    connect(&cmdInit, &QPushButton::clicked, this, &FrmMain::OnInitialize);
    connect(&cmdBuildSFF, &QPushButton::clicked, this, &FrmMain::OnBuildSff);
    connect(&cmdPCX, &QPushButton::clicked, this, &FrmMain::OnSavePcx);
    connect(&cmdText, &QPushButton::clicked, this, &FrmMain::OnMakeText);
    connect(&chkScreen, &QCheckBox::clicked, this, &FrmMain::OnScreen);
    connect(&cmdEnd, &QPushButton::clicked, this, &FrmMain::OnEnd);
    connect(&lstFiles, &QTableView::clicked, this, &FrmMain::SelectList);
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
    auto w = std::make_unique<FrmPcx>(PreviewHost{Table, SelectedRow, ini_, services_});
    w->setWindowIcon(AppIcon());
    return w;
}

void FrmMain::ShowLabels() {
    lblSffName.setText(QString::fromStdString(State.SffNameCaption));
    lblImage.setText(QString::fromStdString(State.ImageCaption));
}

bool FrmMain::Ask(const std::string& text, int styleWord) { return services_.Box.AskYes(this, text, styleWord); }

void FrmMain::ShowError(const Error& error) {
    services_.Box.Show(this, FormatError(ini_, error), style::Ok + style::Exclamation);
}

// Adding and copying rows have no function: the buttons are there, and do nothing.
void FrmMain::OnAdd() {}
void FrmMain::OnCopy() {}

void FrmMain::OnAbout() {
    // The version dialog is made anew for each showing, so its load step runs each time.
    FrmAbout about(this);
    about.exec();
}

void FrmMain::OnScreen() {
    QWidget& pcx = *frmPCX_;
    QWidget* slider = pcx.findChild<QWidget*>(QStringLiteral("sldZoom"));
    if (chkScreen.isChecked()) {
        const QRect outer = frameGeometry();
        pcx.move(outer.left() + outer.width(), outer.top());
        pcx.show();
        if (slider) {
            pcx.activateWindow();
            slider->setFocus();
        }
    } else {
        if (slider) slider->setFocus();
        pcx.hide();
    }
    activateWindow();
    chkScreen.setFocus();
}

void FrmMain::OnEnd() {
    if (Ask(ini_.MsgConfirmExit, style::YesNo + style::Question)) close();
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
            if (!key->isAutoRepeat() && (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down)) SelectList();
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
