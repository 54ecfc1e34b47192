#include "mainwin/ui/FrmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <functional>

#include "base/Ask.h"
#include "config/Settings.h"
#include "config/ui/AppIcon.h"
#include "config/ui/FrmAbout.h"
#include "config/ui/FrmPath.h"
#include "config/UserFolders.h"
#include "config/ui/Startup.h"
#include "platform/MessageBox.h"
#include "platform/Twips.h"
#include "platform/WindowPlace.h"

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
    setWindowIcon(AppIcon());
    LayOut();

    ConnectCommands();
    AddShortcuts();
    lstFiles.installEventFilter(this);
    setAcceptDrops(true);

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
    };
    const Control named[] = {
        {cmdSffOpen, "cmdSffOpen"}, {cmdRecent, "cmdRecent"},     {lblSffName, "lblSffName"}, {lblImgCnt, "lblImgCnt"},
        {lblImage, "lblImage"},     {cmdAbout, "cmdAbout"},       {fraLstCtrl, "fraLstCtrl"}, {lblFind, "lblFind"},
        {txtFind, "txtFind"},       {lstFiles, "lstFiles"},       {cmdAdd, "cmdAdd"},         {cmdCopy, "cmdCopy"},
        {cmdDel, "cmdDel"},         {cmdInit, "cmdInit"},         {fraPartExec, "fraPartExec"}, {cmdBuildSFF, "cmdBuildSFF"},
        {cmdPCX, "cmdPCX"},         {cmdText, "cmdText"},         {chkScreen, "chkScreen"},   {cmdEnd, "cmdEnd"},
    };
    for (const Control& c : named) {
        c.W.setObjectName(QString::fromLatin1(c.Name));
        c.W.setFont(controls);
    }
    cmdAbout.setText(QStringLiteral("&?"));  // fixed: the settings have no key for it
    cmdAbout.setFixedWidth(Pixels(255) + 8);
    for (QPushButton* b : {&cmdSffOpen, &cmdAbout, &cmdAdd, &cmdCopy, &cmdDel, &cmdInit, &cmdBuildSFF, &cmdPCX,
                           &cmdText, &cmdEnd})
        b->setAutoDefault(false);  // no button is the window's default or cancel button
    cmdRecent.setArrowType(Qt::DownArrow);
    cmdRecent.setPopupMode(QToolButton::InstantPopup);
    cmdRecent.setFocusPolicy(Qt::NoFocus);

    ShowDesignCaptions(*this, Window::Main);
    lblFind.setText(DefaultCaption("MAIN_FIND"));
    for (QLabel* l : {&lblSffName, &lblImage}) {
        l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        l->setFont(DesignFont(kLabelFont, 9));
    }
    lblImage.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblImage.setMinimumWidth(Pixels(735));
    lblSffName.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    lblSffName.setMinimumWidth(Pixels(1500));
    lblSffName.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    fraLstCtrl.setTitle(QString());
    fraPartExec.setTitle(QString());

    SetUpSpriteList(lstFiles, model_);

    // Top: the open button and its recent files, the file's name (taking the room), the
    // count and "?". Middle: the frame with the find box over the list (taking the room)
    // and the table buttons beside it. Bottom: Build SFF over its two steps, and Show
    // Screen over Exit.
    auto* top = new QHBoxLayout;
    top->setSpacing(4);
    top->addWidget(&cmdSffOpen);
    top->addWidget(&cmdRecent);
    top->addWidget(&lblSffName, 1);
    top->addWidget(&lblImgCnt);
    top->addWidget(&lblImage);
    top->addWidget(&cmdAbout);

    auto* find = new QHBoxLayout;
    find->addWidget(&lblFind);
    find->addWidget(&txtFind, 1);
    auto* listSide = new QVBoxLayout;
    listSide->addLayout(find);
    listSide->addWidget(&lstFiles, 1);
    auto* buttons = new QVBoxLayout;
    for (QPushButton* b : {&cmdAdd, &cmdCopy, &cmdDel}) buttons->addWidget(b);
    buttons->addSpacing(Pixels(165));
    buttons->addWidget(&cmdInit);
    buttons->addStretch(1);
    auto* frame = new QHBoxLayout(&fraLstCtrl);
    frame->setContentsMargins(4, 4, 4, 4);
    frame->addLayout(listSide, 1);
    frame->addLayout(buttons);

    auto* steps = new QHBoxLayout(&fraPartExec);
    steps->setContentsMargins(4, 2, 4, 4);
    steps->addWidget(&cmdPCX);
    steps->addWidget(&cmdText);
    auto* build = new QVBoxLayout;
    build->setSpacing(0);
    build->addWidget(&cmdBuildSFF);
    build->addWidget(&fraPartExec);
    auto* end = new QVBoxLayout;
    end->addWidget(&chkScreen);
    end->addWidget(&cmdEnd);
    auto* bottom = new QHBoxLayout;
    bottom->addLayout(build);
    bottom->addStretch(1);
    bottom->addLayout(end);

    auto* window = new QVBoxLayout(this);
    window->setContentsMargins(8, 8, 8, 8);
    window->addLayout(top);
    window->addWidget(&fraLstCtrl, 1);
    window->addLayout(bottom);
    // Room for every column of the list at first; the user may make it smaller or larger.
    resize(Pixels(15600), Pixels(7200));

    setTabOrder(&cmdSffOpen, &txtFind);
    QWidget* order[] = {&txtFind,     &lstFiles, &cmdAdd,   &cmdCopy,  &cmdDel,   &cmdInit,
                        &chkScreen,   &cmdBuildSFF, &cmdPCX, &cmdText, &cmdAbout, &cmdEnd};
    for (size_t i = 0; i + 1 < std::size(order); ++i) setTabOrder(order[i], order[i + 1]);
}

void FrmMain::ConnectCommands() {
    Session& s = session_;
    connect(&cmdSffOpen, &QPushButton::clicked, this, [this] { Opened(session_.Open()); });
    connect(&cmdAdd, &QPushButton::clicked, this, [&s] { s.Add(); });
    connect(&cmdCopy, &QPushButton::clicked, this, [&s] { s.Copy(); });
    connect(&cmdDel, &QPushButton::clicked, this, [&s] { s.Delete(); });
    connect(&cmdInit, &QPushButton::clicked, this, [&s] { s.Initialize(); });
    connect(&cmdBuildSFF, &QPushButton::clicked, this, [&s] { s.BuildSff(); });
    connect(&cmdPCX, &QPushButton::clicked, this, [&s] { s.SavePcx(); });
    connect(&cmdText, &QPushButton::clicked, this, [&s] { s.MakeText(); });
    // Whichever way the user moves the current row, the preview shows it at once, so that
    // an edit there always lands on the row that is shown.
    connect(&model_, &SpriteTableModel::CurrentRowMoved, this, [&s] { s.SelectList(); });
    // A new table: the names column as wide as its names (as far as the first rows tell).
    connect(&model_, &QAbstractItemModel::modelReset, this, [this] {
        constexpr int names = static_cast<int>(Column::PcxName);
        const int before = lstFiles.columnWidth(names);
        lstFiles.resizeColumnToContents(names);
        if (lstFiles.columnWidth(names) < before) lstFiles.setColumnWidth(names, before);
    });
    connect(&txtFind, &QLineEdit::returnPressed, this, [this] { session_.Find(txtFind.text().toStdString(), false); });
    connect(&cmdAbout, &QPushButton::clicked, this, &FrmMain::OnAbout);
    connect(&chkScreen, &QCheckBox::clicked, this, &FrmMain::OnScreen);
    connect(&cmdEnd, &QPushButton::clicked, this, &FrmMain::OnEnd);
    // The recent files: the arrow beside Open SFF, or a right click on it.
    auto* recent = new QMenu(&cmdRecent);
    cmdRecent.setMenu(recent);
    connect(recent, &QMenu::aboutToShow, this, [this, recent] {
        recent->clear();
        for (const std::string& path : userState_.RecentFiles)
            recent->addAction(QString::fromStdString(path), this, [this, path] { OpenGiven(path); });
    });
    // The table's menu. A right click on a selected row keeps the selection; on another row
    // it selects that row first (the view's own behaviour).
    exportPng_ = tableMenu_.addAction(DefaultCaption("MAIN_EXPORT_PNG"), this,
                                      [&s] { s.ExportSelected(PictureFormat::Png); });
    exportPcx_ = tableMenu_.addAction(DefaultCaption("MAIN_EXPORT_PCX"), this,
                                      [&s] { s.ExportSelected(PictureFormat::Pcx); });
    exportPng_->setObjectName(QStringLiteral("actExportPng"));
    exportPcx_->setObjectName(QStringLiteral("actExportPcx"));
    lstFiles.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&lstFiles, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { tableMenu_.exec(lstFiles.viewport()->mapToGlobal(at)); });
    cmdSffOpen.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&cmdSffOpen, &QWidget::customContextMenuRequested, this,
            [this, recent](const QPoint& at) { recent->exec(cmdSffOpen.mapToGlobal(at)); });
}

void FrmMain::AddShortcuts() {
    struct Key {
        QKeySequence Keys;
        QWidget* Named;  // the control whose tooltip names it
        std::function<void()> Do;
        // Whether the key also works while the preview screen is the active window; Del
        // stays with the table, so it never deletes a row from a keystroke meant elsewhere.
        bool AlsoInPreview = true;
    };
    Session& s = session_;
    const Key keys[] = {
        {QKeySequence(Qt::CTRL | Qt::Key_O), &cmdSffOpen, [this] { Opened(session_.Open()); }},
        {QKeySequence(Qt::CTRL | Qt::Key_B), &cmdBuildSFF, [&s] { s.BuildSff(); }},
        {QKeySequence(Qt::Key_Delete), &cmdDel, [&s] { s.Delete(); }, false},
        {QKeySequence(Qt::CTRL | Qt::Key_Q), &cmdEnd, [this] { OnEnd(); }},
        {QKeySequence(Qt::CTRL | Qt::Key_F), &txtFind,
         [this] {
             activateWindow();
             raise();
             txtFind.setFocus(Qt::ShortcutFocusReason);
             txtFind.selectAll();
         }},
        {QKeySequence(Qt::Key_F3), nullptr, [this] { session_.Find(txtFind.text().toStdString(), true); }},
    };
    for (const Key& k : keys) {
        auto* shortcut = new QShortcut(k.Keys, this, nullptr, nullptr,
                                       k.AlsoInPreview ? Qt::ApplicationShortcut : Qt::WindowShortcut);
        connect(shortcut, &QShortcut::activated, this, k.Do);
        if (k.Named) k.Named->setToolTip(k.Keys.toString(QKeySequence::NativeText));
    }
    txtFind.setToolTip(QStringLiteral("Ctrl+F, F3"));
    // Undo and redo wherever the focus is, in this window or the preview.
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z), this, nullptr, nullptr, Qt::ApplicationShortcut),
            &QShortcut::activated, this, [&s] { s.Undo(); });
    for (const QKeySequence& redo : {QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)})
        connect(new QShortcut(redo, this, nullptr, nullptr, Qt::ApplicationShortcut), &QShortcut::activated, this,
                [&s] { s.Redo(); });
    qApp->installEventFilter(this);
}

static bool IsHistoryKey(const QKeyEvent* key) {
    const auto combo = key->keyCombination();
    return combo == QKeyCombination(Qt::ControlModifier, Qt::Key_Z) ||
           combo == QKeyCombination(Qt::ControlModifier, Qt::Key_Y) ||
           combo == QKeyCombination(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Z);
}

std::unique_ptr<FrmMain> FrmMain::Start(const Settings& settings, platform::Services& services) {
    // The settings are read by the caller before this, because the window keeps a
    // reference to them; no load step of any window looks at them, so the order of the
    // start-up is the same as far as anything on screen can tell.
    RegisterFontSubstitutes();
    auto main = std::make_unique<FrmMain>(settings.Ini, services);
    ApplyFontsAndCaptions(settings, main->PathDialog(), main->PreviewWindow(), *main);
    main->ApplyOwnCaptions(settings);
    main->PlaceWindows();
    main->show();
    return main;
}

// The captions of what the start-up's table doesn't name: the find box's label, the words
// of the Palette column and the table's menu.
void FrmMain::ApplyOwnCaptions(const Settings& settings) {
    const auto caption = [&settings](const char* key) {
        auto it = settings.Captions.find(key);
        return it != settings.Captions.end() ? QString::fromStdString(it->second) : DefaultCaption(key);
    };
    lblFind.setText(caption("MAIN_FIND"));
    exportPng_->setText(caption("MAIN_EXPORT_PNG"));
    exportPcx_->setText(caption("MAIN_EXPORT_PCX"));
    model_.setHeaderData(kPaletteColumn, Qt::Horizontal, caption("MAIN_LST_PALETTE"), Qt::DisplayRole);
    model_.SetPaletteWords({caption("MAIN_PAL_SHARED"), caption("MAIN_PAL_OWN"), caption("MAIN_PAL_ROW")});
    FitRowHeight(lstFiles);
    title_ = windowTitle();
}

void FrmMain::OpenGiven(const std::string& path) { Opened(session_.OpenFile(path)); }

void FrmMain::Opened(CommandEnd end) {
    if (end != CommandEnd::Done) return;
    // The keys move through the new table at once (the arrows, Home, End, Del).
    lstFiles.setFocus(Qt::OtherFocusReason);
    // Kept at once: a program that dies later still lists the file.
    RememberFile(userState_, session_.OpenPath());
    (void)SaveUserState(UserConfigFolder(), userState_);
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
    if (chkScreen.isChecked()) {
        frmPCX_->ShowBeside(frameGeometry());
        // Where the user last left it, or else beside this window, and whole on a screen.
        platform::PlaceOnScreen(*frmPCX_, userState_.Preview.value_or(platform::PlaceOf(*frmPCX_)));
    } else {
        userState_.Preview = platform::PlaceOf(*frmPCX_);
        frmPCX_->HideFromScreen();
    }
    activateWindow();
    chkScreen.setFocus();
}

void FrmMain::OnEnd() {
    if (!session_.MayQuit(false)) return;
    quitting_ = true;
    close();
    quitting_ = false;
}

void FrmMain::closeEvent(QCloseEvent* event) {
    // Unsaved edits are never lost without a question (Exit has asked already).
    if (!quitting_ && !session_.MayQuit(true)) {
        event->ignore();
        return;
    }
    SaveState();
    // Ending closes every other window.
    frmPCX_->hide();
    frmPath_->hide();
    event->accept();
}

void FrmMain::PlaceWindows() {
    userState_ = LoadUserState(UserConfigFolder());
    if (userState_.Main) platform::PlaceOnScreen(*this, *userState_.Main);
    if (userState_.Preview) frmPCX_->resize(userState_.Preview->Width, userState_.Preview->Height);
}

void FrmMain::SaveState() {
    userState_.Main = platform::PlaceOf(*this);
    if (frmPCX_->isVisible()) userState_.Preview = platform::PlaceOf(*frmPCX_);
    (void)SaveUserState(UserConfigFolder(), userState_);  // a state not kept costs a window's place, nothing more
}

void FrmMain::dragEnterEvent(QDragEnterEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() == 1 && urls.front().isLocalFile() &&
        urls.front().toLocalFile().endsWith(QStringLiteral(".sff"), Qt::CaseInsensitive))
        event->acceptProposedAction();
}

void FrmMain::dropEvent(QDropEvent* event) {
    const QString path = event->mimeData()->urls().front().toLocalFile();
    event->acceptProposedAction();
    // After the drop has ended: Open's questions are modal.
    QTimer::singleShot(0, this, [this, path] { OpenGiven(path.toStdString()); });
}

void FrmMain::ShowTitle() {
    if (title_.isEmpty()) title_ = windowTitle();
    setWindowTitle(session_.HasUnsavedEdits() ? QStringLiteral("*") + title_ : title_);
}

bool FrmMain::eventFilter(QObject* watched, QEvent* event) {
    // Undo and redo keys in a text box of the program go to the table's history, not to
    // the box's own undo.
    if (event->type() == QEvent::ShortcutOverride && IsHistoryKey(static_cast<QKeyEvent*>(event))) {
        const auto* box = qobject_cast<QLineEdit*>(watched);
        if (box && (box->window() == this || box->window() == frmPCX_.get())) {
            event->ignore();
            return true;
        }
    }
    if (watched == &lstFiles) {
        if (event->type() == QEvent::FontChange) FitRowHeight(lstFiles);
    } else if (watched == frmPCX_.get() && event->type() == QEvent::Close && frmPCX_->isVisible()) {
        // The preview screen has no close box: chkScreen alone hides it, so the two can't
        // get out of step (a window manager's close request is refused).
        event->ignore();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace tarvolin
