// Placeholder until the coordinate dialog lands.
#include "shell/frmMenu.h"
namespace velk {
void frmMenu::ShowCoordDialog() {}
} // namespace velk
