#pragma once
// The start-up step that brings the settings' font and the captions of section CAPTION to
// the windows: frmPath, then frmPCX, then frmMain, each control found by its object name.
// It is the only place where they are applied.
#include <QString>

class QWidget;

namespace tarvolin {

struct Settings;

// A label with this property set to true takes the size of its text after a change of
// font or caption, as a label sized to its text does.
inline constexpr const char* kAutoSizeProperty = "autoSize";
// The character set number given to lstFiles. Qt chooses glyphs by the text itself, so the
// number changes nothing on screen; it is kept on the list for whoever asks.
inline constexpr const char* kFontCharsetProperty = "fontCharset";

// Registers the IPA fonts as stand-ins for the interface's default Japanese fonts, so that
// the texts render on a plain Linux desktop. Call before the first window is made.
void RegisterFontSubstitutes();

// The default text of a caption key (the layout's caption).
QString DefaultCaption(const char* key);

// Sets the caption of a button, check box, label or frame.
void SetCaption(QWidget& control, const QString& text);

// Step 5 of the start-up: fonts and captions to exactly the controls of the font table.
// Controls a window does not have are passed over.
void ApplyFontsAndCaptions(const Settings& settings, QWidget& frmPath, QWidget& frmPcx, QWidget& frmMain);

}  // namespace tarvolin
