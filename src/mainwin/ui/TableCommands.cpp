// The row selection and the commands on rows: bringing the selected row onto the preview
// screen, deleting a row, and throwing the table away.
#include <QCheckBox>
#include <QLineEdit>

#include "base/Ask.h"
#include "base/TextHelpers.h"
#include "mainwin/ui/FrmMain.h"
#include "platform/EventPump.h"
#include "preview/Pallet.h"
#include "preview/RowPicture.h"

namespace tarvolin {

namespace {

// A cell or caption read as a number the way the program reads them: rounded to a whole
// number; `fallback` for a text that holds none.
int32_t NumberIn(const std::string& text, int32_t fallback) {
    const auto number = ParseNumber(text);
    if (!number) return fallback;
    return RoundToInt32(*number).value_or(fallback);
}

constexpr int kConfirmStyle = style::YesNo + style::Question + style::SecondButtonDefault;

}  // namespace

void FrmMain::SelectList() {
    if (Table.Empty()) return;
    // First: filling the boxes below sets off their handlers, which write into this row.
    SelectedRow = Table.Selected();
    FrmPcx& pcx = *frmPCX_;
    const SpriteRow row = Table.Row(SelectedRow);
    if (row[Column::PcxPath].empty()) {
        LoadRowPcx(SelectedRow);
        pcx.SetPcx(State.SffNameCaption + ", P.Pos " + row[Column::PPos]);
    } else {
        pcx.OpenPcx(row[Column::PcxPath] + row[Column::PcxName]);
    }
    // A refused picture has left PcxBytes empty: PcxRle then gives the empty screen, and
    // the row's numbers still come into the boxes so that the row can be edited (or given
    // another picture by Change PCX).
    pcx.PcxRle();
    pcx.txtGroup->setText(QString::fromStdString(row[Column::GroupNo]));
    pcx.txtItem->setText(QString::fromStdString(row[Column::ItemNo]));
    pcx.txtX->setText(QString::fromStdString(row[Column::AxisX]));
    pcx.txtY->setText(QString::fromStdString(row[Column::AxisY]));
    // 0 and 1 set the box; any other PalType leaves it as it is, so that showing a row
    // never rewrites its cell.
    const int32_t palType = NumberIn(row[Column::PalType], -1);
    if (palType == 0 || palType == 1) pcx.chkPallet->setChecked(palType == 1);
    pcx.intScr();
    pcx.ViewPCX();
}

void FrmMain::LoadRowPcx(int row) {
    // A P.Pos that is no number points at no subfile and leaves PcxBytes empty.
    LoadSubfilePicture(frmPCX_->State(), State, NumberIn(Table.Cell(row, Column::PPos), -1));
}

void FrmMain::OnDelete() {
    if (Table.Empty()) return;
    const int place = Table.Selected();
    if (!Ask(ini_.MsgConfirmDelete, kConfirmStyle)) return;
    State.ImageCaption = DecimalText(int64_t{NumberIn(State.ImageCaption, 0)} - 1);
    ShowLabels();
    Table.RemoveRow(place);
    // The row that followed takes the place; after the last row the new last row is
    // selected, the nearest neighbour of the removed one. With no row left nothing is
    // selected and the screen keeps what it showed.
    if (!Table.Empty()) Table.Select(std::min(place, Table.RowCount()));
    SelectList();
}

void FrmMain::OnInitialize() {
    if (Table.Empty()) return;
    if (!Ask(ini_.MsgConfirmInit, kConfirmStyle)) return;
    State.SffNameCaption.clear();
    State.ImageCaption.clear();
    ShowLabels();
    for (int place = Table.RowCount(); place >= 1; --place) Table.RemoveRow(place);
    State.SffBaseName.clear();
    State.SffBytes.clear();
    State.Subfiles.clear();

    FrmPcx& pcx = *frmPCX_;
    pcx.ForgetPicture();
    pcx.ClearWindow();
    const bool white = pcx.chkBgWhite->isChecked();
    pcx.initSCR(white ? kWhite : kBlack);
    pcx.drawAxis(kDefaultAxisX, kDefaultAxisY, white ? kBlack : kWhite, white ? kWhite : kBlack);
    for (QLineEdit* box : {pcx.txtGroup, pcx.txtItem, pcx.txtX, pcx.txtY}) box->setText(QStringLiteral("0"));
    platform::pumpEvents();
}

}  // namespace tarvolin
