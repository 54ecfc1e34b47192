#pragma once
// The per-user folder where the program keeps what it writes for itself and where an
// installed program's settings file may stand: $XDG_CONFIG_HOME/tarvolin/, or
// ~/.config/tarvolin/ when XDG_CONFIG_HOME is unset, empty or not absolute (as the XDG
// base directory rules have it). Never the folder beside the program, whose settings file
// the user writes by hand.
#include <string>

namespace tarvolin {

// The folder, ending with '/'; empty when neither variable gives an absolute path.
std::string UserConfigFolder();

}  // namespace tarvolin
