#pragma once
// How the core asks the user a Yes/No question without a window: the caller hands in a
// function that shows the text with the message-box style word and answers true for Yes.
// The windows answer with a message box, the command-line tool and the tests by code.
#include <functional>
#include <string>

namespace tarvolin {

// The style words of a message box: buttons + icon + default button.
namespace style {
inline constexpr int Ok = 0;
inline constexpr int YesNoCancel = 3;
inline constexpr int YesNo = 4;
inline constexpr int Critical = 16;
inline constexpr int Question = 32;
inline constexpr int Exclamation = 48;
inline constexpr int Information = 64;
inline constexpr int SecondButtonDefault = 256;
}  // namespace style

using AskFn = std::function<bool(const std::string& text, int styleWord)>;

}  // namespace tarvolin
