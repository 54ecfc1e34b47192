// The commands that write the working files and rebuild the SFF.
#include "mainwin/FrmMain.h"

namespace tarvolin {

void FrmMain::OnSavePcx() {}   // the PCX export comes with the build commands
void FrmMain::OnBuildSff() {}  // the rebuild comes with the build commands
void FrmMain::OnMakeText() {}  // the parameter text and batch come with the build commands

}  // namespace tarvolin
