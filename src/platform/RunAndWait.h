#pragma once
// Runs a build batch in its console window and waits for it to end, letting the program's
// windows answer events meanwhile (the wait sleeps in the event loop; it never spins).
#include <string>

namespace tarvolin::platform {

// `file`: the batch's bare name; `folder`: where it runs, ending with '/'; `showState`: the
// console's window state (1: a normal window). True when the batch was started and has
// ended; false only when it could not be started (missing or unreadable file).
bool RunAndWait(const std::string& file, const std::string& folder, int showState);

}  // namespace tarvolin::platform
