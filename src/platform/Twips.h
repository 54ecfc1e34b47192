#pragma once
// Layouts are given in twips (1/1440 inch); 15 twips are one device-independent pixel at
// 96 dpi, and Qt's scaling does the rest.
#include <QFont>

class QWidget;

namespace tarvolin::platform {

inline constexpr int kTwipsPerPixel = 15;

inline constexpr int Pixels(int twips) { return twips / kTwipsPerPixel; }

// Places a control by its left, top, width and height in twips.
void PlaceInTwips(QWidget& control, int left, int top, int width, int height);

// A font of the layout: a family at a size in points (fractions allowed, as 8.25).
QFont DesignFont(const char* family, double points);

}  // namespace tarvolin::platform
