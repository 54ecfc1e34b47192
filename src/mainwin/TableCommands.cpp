// The row selection and the commands on rows.
#include "mainwin/FrmMain.h"

namespace tarvolin {

// Takes the selected row; bringing it to the preview screen comes with the preview window.
void FrmMain::SelectList() {
    if (Table.Empty()) return;
    SelectedRow = Table.Selected();
}

void FrmMain::OnDelete() {}      // deleting the selected row comes with the preview window
void FrmMain::OnInitialize() {}  // emptying the table comes with the preview window

}  // namespace tarvolin
