#include "config/ui/Startup.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QFont>
#include <QGroupBox>
#include <QLabel>
#include <QWidget>
#include <span>

#include "config/MessageCatalog.h"
#include "config/Settings.h"

namespace tarvolin {

namespace {

// A control that takes FontName, FontSize and a caption.
struct CaptionedControl {
    const char* Key;
    const char* Name;
};

// What one window takes: its title, its own font (FontName, FontSize + 1), the captioned
// controls, and the controls that take FontName alone.
struct WindowRule {
    const char* TitleKey;
    std::span<const CaptionedControl> Controls;
    std::span<const char* const> NameOnly;
};

// The one table per window of which control shows which caption key.
constexpr CaptionedControl kPathControls[] = {{"PATH_OK", "cmdOK"}, {"PATH_CANCEL", "cmdCancel"}};
constexpr const char* kPathNameOnly[] = {"txtPath", "dirDir", "drvDrive"};

constexpr CaptionedControl kPcxControls[] = {
    {"PCX_ZOOM", "fraZoom"},     {"PCX_GROUP", "lblGroup"},         {"PCX_ITEM", "lblItem"},
    {"PCX_X", "lblX"},           {"PCX_Y", "lblY"},                 {"PCX_MOVE", "lblMove"},
    {"PCX_PALLET", "chkPallet"}, {"PCX_CHANGEPCX", "cmdChangePCX"}, {"PCX_BGDEL", "chkBgDel"},
    {"PCX_BGWHITE", "chkBgWhite"},
};

constexpr CaptionedControl kMainControls[] = {
    {"MAIN_SFFOPEN", "cmdSffOpen"}, {"MAIN_IMGCNT", "lblImgCnt"}, {"MAIN_BUILDSFF", "cmdBuildSFF"},
    {"MAIN_PCX", "cmdPCX"},         {"MAIN_TEXT", "cmdText"},     {"MAIN_SCREEN", "chkScreen"},
    {"MAIN_END", "cmdEnd"},         {"MAIN_ADD", "cmdAdd"},       {"MAIN_COPY", "cmdCopy"},
    {"MAIN_DEL", "cmdDel"},         {"MAIN_INIT", "cmdInit"},
};
constexpr const char* kMainColumnKeys[] = {"MAIN_LST_1", "MAIN_LST_2", "MAIN_LST_3", "MAIN_LST_4", "MAIN_LST_5",
                                           "MAIN_LST_6", "MAIN_LST_7", "MAIN_LST_8", "MAIN_LST_9"};

const WindowRule& RuleOf(Window which) {
    static constexpr WindowRule kPath{"PATH", kPathControls, kPathNameOnly};
    static constexpr WindowRule kPcx{"PCX", kPcxControls, {}};
    static constexpr WindowRule kMain{"MAIN", kMainControls, {}};
    switch (which) {
    case Window::Path: return kPath;
    case Window::Pcx: return kPcx;
    case Window::Main: break;
    }
    return kMain;
}

QString Caption(const Settings& settings, const char* key) {
    auto it = settings.Captions.find(key);
    return it != settings.Captions.end() ? QString::fromStdString(it->second) : DefaultCaption(key);
}

// Font name and, when given, size; the rest of the control's font stays. A size below one
// point can't be shown: the control then keeps its size.
void SetFont(QWidget& w, const QString& name, int size) {
    QFont f = w.font();
    f.setFamily(name);
    if (size >= 1) f.setPointSize(size);
    w.setFont(f);
}

constexpr int kNoSize = 0;

void ApplyToWindow(const Settings& settings, const WindowRule& rule, QWidget& window) {
    const QString name = QString::fromStdString(settings.Ini.FontName);
    const int size = settings.Ini.FontSize;
    SetFont(window, name, size + 1);
    window.setWindowTitle(Caption(settings, rule.TitleKey));
    for (const CaptionedControl& c : rule.Controls) {
        QWidget* w = window.findChild<QWidget*>(QString::fromLatin1(c.Name));
        if (!w) continue;
        SetFont(*w, name, size);
        SetCaption(*w, Caption(settings, c.Key));
        FitToText(*w);
    }
    for (const char* n : rule.NameOnly)
        if (QWidget* w = window.findChild<QWidget*>(QString::fromLatin1(n))) SetFont(*w, name, kNoSize);
}

// lstFiles alone takes all three values, and the titles of its first nine columns.
void ApplyToList(const Settings& settings, QWidget& frmMain) {
    auto* list = frmMain.findChild<QAbstractItemView*>(QStringLiteral("lstFiles"));
    if (!list) return;
    SetFont(*list, QString::fromStdString(settings.Ini.FontName), settings.Ini.FontSize);
    list->setProperty(kFontCharsetProperty, settings.Ini.FontCharset);
    if (!list->model()) return;
    for (int c = 0; c < static_cast<int>(std::size(kMainColumnKeys)); ++c)
        list->model()->setHeaderData(c, Qt::Horizontal, Caption(settings, kMainColumnKeys[c]), Qt::DisplayRole);
}

}  // namespace

void RegisterFontSubstitutes() {
    QFont::insertSubstitution(QStringLiteral("ＭＳ Ｐゴシック"), QStringLiteral("IPAPGothic"));
    QFont::insertSubstitution(QStringLiteral("ＭＳ ゴシック"), QStringLiteral("IPAGothic"));
}

QString DefaultCaption(const char* key) {
    for (const CaptionEntry& c : CaptionTable())
        if (std::string_view(c.Key) == key) return QString::fromUtf8(c.Default);
    return {};
}

void FitToText(QWidget& w) {
    const QString keep = w.property(kAutoSizeProperty).toString();
    if (keep.isEmpty()) return;
    const int right = w.geometry().right();
    w.adjustSize();
    if (keep == QLatin1String(kKeepRight)) w.move(right - w.width() + 1, w.y());
}

void SetCaption(QWidget& control, const QString& text) {
    if (auto* b = qobject_cast<QAbstractButton*>(&control)) b->setText(text);
    else if (auto* l = qobject_cast<QLabel*>(&control)) l->setText(text);
    else if (auto* g = qobject_cast<QGroupBox*>(&control)) g->setTitle(text);
}

void ShowDesignCaptions(QWidget& window, Window which) {
    const WindowRule& rule = RuleOf(which);
    window.setWindowTitle(DefaultCaption(rule.TitleKey));
    for (const CaptionedControl& c : rule.Controls)
        if (QWidget* w = window.findChild<QWidget*>(QString::fromLatin1(c.Name))) {
            SetCaption(*w, DefaultCaption(c.Key));
            FitToText(*w);
        }
}

void ApplyFontsAndCaptions(const Settings& settings, QWidget& frmPath, QWidget& frmPcx, QWidget& frmMain) {
    ApplyToWindow(settings, RuleOf(Window::Path), frmPath);
    ApplyToWindow(settings, RuleOf(Window::Pcx), frmPcx);
    ApplyToWindow(settings, RuleOf(Window::Main), frmMain);
    ApplyToList(settings, frmMain);
}

}  // namespace tarvolin
