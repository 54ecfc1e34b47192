#include "config/ui/FrmAbout.h"

#include "config/ui/AppIcon.h"
#include "config/Version.h"
#include "platform/Twips.h"

namespace tarvolin {

namespace {
constexpr int kIconSize = 48;
// The maker's notice under the description.
constexpr const char* kNotice = "Copyright (C) the Tarvolin authors";
}  // namespace

FrmAbout::FrmAbout(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint |
                   Qt::MSWindowsFixedSizeDialogHint);
    // Modal over the main window and the preview screen alike.
    setWindowModality(Qt::ApplicationModal);
    setWindowIcon(AppIcon());
    setFixedSize(platform::Pixels(5910), platform::Pixels(1215));
    move(platform::Pixels(4590), platform::Pixels(5235));
    // Its own font: the settings' font never reaches this window.
    setFont(platform::DesignFont("Arial", 9));

    struct Control {
        QWidget& W;
        const char* Name;
        int L, T, Wd, H;
    };
    const Control layout[] = {
        {pctIcon, "pctIcon", 120, 120, 720, 720},     {lblAppName, "lblAppName", 960, 240, 3255, 240},
        {lblVer, "lblVer", 4320, 240, 1335, 240},     {Label2, "Label2", 960, 600, 2895, 240},
        {cmdOK, "cmdOK", 4560, 720, 1095, 375},
    };
    for (const Control& c : layout) {
        c.W.setObjectName(QString::fromLatin1(c.Name));
        platform::PlaceInTwips(c.W, c.L, c.T, c.Wd, c.H);
    }
    pctIcon.setPixmap(AppIconPixmap(kIconSize));
    pctIcon.resize(kIconSize, kIconSize);  // sized to its picture
    // A label draws no background of its own: the icon stands on the window's colour.
    pctIcon.setAutoFillBackground(false);
    Label2.setText(QString::fromUtf8(kNotice));
    cmdOK.setText(QStringLiteral("OK"));
    cmdOK.setDefault(true);
    connect(&cmdOK, &QPushButton::clicked, this, &QDialog::accept);

    // The load step.
    lblVer.setText(QString::fromStdString(VersionText(kVersionMajor, kVersionMinor, kVersionRevision)));
    lblAppName.setText(QString::fromUtf8(kFileDescription));
    setWindowTitle(QString::fromStdString(AboutTitle(kFileDescription)));
}

}  // namespace tarvolin
