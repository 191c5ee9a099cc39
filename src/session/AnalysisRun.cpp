#include "session/AnalysisRun.h"

#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "session/VELKMain.h"

namespace velk {

Integer Write_Deck() {
  Session& s = session();
  return Write_Deck(gMesh(), gMaterial(), gAnalysis(), s.gTempInFile, s.gTempOutFile);
}

void Run_Analysis() {
  Run_Analysis(gMesh(), gAnalysis(), session().gTempInFile, session().gTempOutFile);
}

} // namespace velk
