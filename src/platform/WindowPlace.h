#pragma once
// A window's place and size, as the user's state file keeps them, and windows put fully on
// a screen: a place remembered from a run with another screen, or a window larger than the
// screen, never leaves part of it out of reach.
#include "config/UserState.h"

class QWidget;

namespace tarvolin::platform {

// The window's place (its frame's top left) and its size (without the frame).
WindowPlace PlaceOf(const QWidget& window);

// Puts the window at `place`, moved and shrunk as far as needed to lie on the screen that
// holds most of it (the primary screen when none does).
void PlaceOnScreen(QWidget& window, const WindowPlace& place);

// The window shrunk to its screen as far as needed and centred over `over` (nothing: its
// screen).
void CentreOnScreen(QWidget& window, const QWidget* over);

}  // namespace tarvolin::platform
