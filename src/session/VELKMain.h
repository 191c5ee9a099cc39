#pragma once
// The session: the one model in memory and the procedures over it. Each session
// object comes into being on first use.
#include "common/Host.h"
#include "model/Analysis.h"
#include "model/BeamShape.h"
#include "model/Material.h"
#include "model/Mesh.h"
#include "session/OptionFile.h"

#include <functional>
#include <memory>
#include <string>

namespace velk {

class Selection;
class View;

struct Session {
  std::shared_ptr<velk::BeamShape> BeamShape;
  std::shared_ptr<velk::Mesh> Mesh;
  std::shared_ptr<velk::Material> Material;
  std::shared_ptr<velk::Selection> Selection;
  std::shared_ptr<velk::Analysis> Analysis;
  std::shared_ptr<velk::View> View;
  std::string gTempInFile;
  std::string gTempOutFile;
  std::string Caption = "VELK V1.4.0: No Title"; // the main window's caption
  FileDialog cdlFile; // the common dialog of the file commands; keeps its file name
  FileDialog cdlBitmap; // the bitmap's own dialog, with a file name of its own
};

Session& session();

BeamShape& gBeamShape();
Mesh& gMesh();
Material& gMaterial();
Selection& gSelection();
Analysis& gAnalysis();
View& gView();

// Calls into the main window; the shell installs them, and without it they do nothing.
struct MainWindowHooks {
  std::function<void()> Update;        // resets mouse state, edit mode, status display
  std::function<void()> updateToolBar; // check marks of the edit modes
  std::function<void()> Paint;         // one frame
  std::function<void(int)> UpdateFont; // new font size, display lists rebuilt
  std::function<void(const std::string&)> CaptionChanged;
};
MainWindowHooks& hooks();

constexpr const char* kProgramName = "VELK";
constexpr const char* kCaptionPrefix = "VELK V1.4.0:";
void SetCaption(const std::string& caption);

void New_Model();
void Reset_Session();
// Drops every session object and the hooks: a fresh program, for tests.
void Clear_Session();

} // namespace velk
