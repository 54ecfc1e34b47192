#pragma once
// Lets waiting window events through once, from inside a long command (the export's
// pause between files, the wait for the build batch, the end of Initialize).

namespace tarvolin::platform {

void pumpEvents();

}  // namespace tarvolin::platform
