#pragma once
// The platform services a window needs, handed in by whoever creates it: the program
// passes the real ones, the widget tests their scripted doubles.

namespace tarvolin::platform {

class MessageBox;
class FileDialog;

struct Services {
    MessageBox& Box;
    FileDialog& Files;
};

}  // namespace tarvolin::platform
