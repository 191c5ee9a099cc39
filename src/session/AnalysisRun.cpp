#include "session/AnalysisRun.h"

#include "analysis/Deck.h"
#include "analysis/EigenCalculation.h"
#include "session/VELKMain.h"
#include "view/View.h"

namespace velk {

Integer Write_Deck() {
  Session& s = session();
  return Write_Deck(gMesh(), gMaterial(), gAnalysis(), s.gTempInFile, s.gTempOutFile);
}

void Run_Analysis() {
  gView().ModeShown = 0; // the new run's own mode is what the view shows
  Run_Analysis(gMesh(), gAnalysis(), session().gTempInFile, session().gTempOutFile);
}

} // namespace velk
