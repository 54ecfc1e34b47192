#pragma once
// The start-up step that brings the settings' font and the captions of section CAPTION to
// the windows: frmPath, then frmPCX, then frmMain, each control found by its object name.
// It is the only place where they are applied.
#include <QString>

class QWidget;

namespace tarvolin {

struct Settings;

// A label with this property takes the size of its text after a change of font or caption,
// as a label sized to its text does. Its value names the edge that stays in place:
// kKeepLeft grows to the right; kKeepRight grows to the left, for a label with a neighbour
// on its right (fonts here are often a little wider than the layout was made for).
inline constexpr const char* kAutoSizeProperty = "autoSize";
inline constexpr const char* kKeepLeft = "keepLeft";
inline constexpr const char* kKeepRight = "keepRight";
// The character set number given to lstFiles. Qt chooses glyphs by the text itself, so the
// number changes nothing on screen; it is kept on the list for whoever asks.
inline constexpr const char* kFontCharsetProperty = "fontCharset";

// Sizes a control that carries kAutoSizeProperty to its text; others stay as they are.
void FitToText(QWidget& control);

// Registers the IPA fonts as stand-ins for the interface's default Japanese fonts, so that
// the texts render on a plain Linux desktop. Call before the first window is made.
void RegisterFontSubstitutes();

// The default text of a caption key (the layout's caption).
QString DefaultCaption(const char* key);

// Sets the caption of a button, check box, label or frame.
void SetCaption(QWidget& control, const QString& text);

// The three windows whose captions the settings can change.
enum class Window { Path, Pcx, Main };

// The design captions (each key's default) on a window and its controls, from the same
// table that the start-up applies the settings by. Windows call it when they are built.
void ShowDesignCaptions(QWidget& window, Window which);

// The start-up's fonts and captions, applied to exactly the controls of the font table.
// Controls a window does not have are passed over.
void ApplyFontsAndCaptions(const Settings& settings, QWidget& frmPath, QWidget& frmPcx, QWidget& frmMain);

}  // namespace tarvolin
