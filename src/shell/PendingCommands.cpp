// Placeholders until the bitmap export and the coordinate dialog land.
#include "shell/frmMenu.h"
namespace velk {
void frmMenu::BitmapBox(double, double, double, double) {}
void frmMenu::ShowCoordDialog() {}
} // namespace velk
