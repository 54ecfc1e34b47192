#pragma once
// The program's icon, drawn in code in the sizes 24, 32 and 48 pixels.
#include <QIcon>
#include <QPixmap>

namespace tarvolin {

// One size of the icon, square, 24-bit colour on a transparent corner.
QPixmap AppIconPixmap(int size);

// All three sizes.
QIcon AppIcon();

}  // namespace tarvolin
