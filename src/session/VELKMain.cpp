#include "session/VELKMain.h"

#include "common/Fault.h"
#include "editing/Selection.h"
#include "view/View.h"

namespace velk {

Session& session() {
  static Session s;
  return s;
}

namespace {
template <class T> T& Slot(std::shared_ptr<T>& slot) {
  if (!slot) slot = std::make_shared<T>();
  return *slot;
}
} // namespace

BeamShape& gBeamShape() {
  return Slot(session().BeamShape);
}
Mesh& gMesh() {
  return Slot(session().Mesh);
}
Material& gMaterial() {
  return Slot(session().Material);
}
Selection& gSelection() {
  return Slot(session().Selection);
}
Analysis& gAnalysis() {
  return Slot(session().Analysis);
}
View& gView() {
  std::shared_ptr<View>& slot = session().View;
  if (!slot) {
    slot = std::make_shared<View>();
    slot->RefreshHook = [] {
      if (hooks().Paint) hooks().Paint();
    };
  }
  return *slot;
}

MainWindowHooks& hooks() {
  static MainWindowHooks h;
  return h;
}

void SetCaption(const std::string& caption) {
  session().Caption = caption;
  if (hooks().CaptionChanged) hooks().CaptionChanged(caption);
}

void New_Model() {
  try {
    Save_Option();
    Session& s = session();
    s.Analysis.reset();
    s.Mesh.reset();
    s.Material.reset();
    s.Selection.reset();
    s.Analysis = std::make_shared<Analysis>();
    s.Mesh = std::make_shared<Mesh>();
    s.Material = std::make_shared<Material>();
    s.Selection = std::make_shared<Selection>();
    Read_Option();
    gView().ModeShown = 0;
    gView().Refresh();
  } catch (const std::exception&) {
    MsgBox("Error...");
  }
}

void Reset_Session() {
  Save_Option();
  Session& s = session();
  s.BeamShape.reset();
  s.Mesh.reset();
  s.Material.reset();
  s.Selection.reset();
  s.Analysis.reset();
  s.View.reset();
}

void Clear_Session() {
  session() = Session{};
  hooks() = MainWindowHooks{};
}

} // namespace velk
