#pragma once
// The run procedures on the session's model: the deck of gMesh, gMaterial and
// gAnalysis into gTempInFile, and the analysis of that deck back into them.
#include "common/TextRules.h"

namespace velk {

Integer Write_Deck();
void Run_Analysis();

} // namespace velk
