// Frame time of the largest mesh a run admits (about 10,900 points), with every
// plate and stiffener defined, a restraint, a spring and a load on every node,
// and all numbers and values shown. Run under Xvfb: xvfb-run -a ./frame_bench
#include "common/ProgramFolder.h"
#include "forms/frmBeamShape.h"
#include "session/VELKMain.h"
#include "shell/GLView.h"
#include "shell/frmMenu.h"
#include "draw/DrawModel.h"
#include "view/View.h"

#include <GL/gl.h>
#include <QApplication>
#include <QSurfaceFormat>
#include <QTemporaryDir>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

using namespace velk;

int main(int argc, char** argv) {
  GLView::SetDefaultFormat();
  QApplication app(argc, argv);
  QTemporaryDir dir;
  SetProgramFolder(dir.path().toStdString());
  SetOptionFileEnabled(false);
  frmMenu menu;
  menu.resize(1024, 768);
  menu.show();
  for (int i = 0; i < 20; ++i) {
    app.processEvents();
    QThread::msleep(5);
  }

  const int nx = argc > 1 ? std::atoi(argv[1]) : 108, ny = argc > 2 ? std::atoi(argv[2]) : 99;
  frmBeamShape f;
  f.Form_Activate();
  f.txtNumXElements = std::to_string(nx);
  f.txtNumYElements = std::to_string(ny);
  f.txtBL = "1200";
  f.txtBWH = "1000";
  f.cmdGenerate_Click();
  for (const auto& s : gMesh().twoNodes()) {
    s->Thickness = 0.5f;
    s->width = 4;
    s->UpdatePropertyDefined();
  }
  for (const auto& n : gMesh().Nodes()) {
    n->SetZTDir(1);
    n->SetXRDir(1);
    n->ZTStiff = 10;
    n->XLoad = 1;
    n->YLoad = -2;
    n->UpdatePropertyDefined();
  }
  gMesh().twoNodes().GeneratevID();
  gMesh().Nodes().GeneratevID(gMesh().twoNodes(), gMesh().fourNodes());
  View& v = gView();
  v.OptionShowNodeNumber = v.OptionShowStiffenerNumber = v.OptionShowPlateNumber = vbTrue;
  v.OptionShowBoundaryValue = v.OptionShowBraceValue = v.OptionShowLoadValue = vbTrue;
  v.ViewAngle();

  GLView* surface = menu.Surface();
  auto measure = [&](const char* what) {
    std::vector<double> ms;
    for (int i = 0; i < 7; ++i) {
      surface->makeCurrent();
      auto t0 = std::chrono::steady_clock::now();
      Paint_Frame(v);
      glFinish();
      auto t1 = std::chrono::steady_clock::now();
      surface->doneCurrent();
      if (i >= 2) ms.push_back(std::chrono::duration<double, std::milli>(t1 - t0).count());
    }
    std::sort(ms.begin(), ms.end());
    std::printf("%-44s median %7.1f ms, best %7.1f ms\n", what, ms[ms.size() / 2], ms.front());
    return ms[ms.size() / 2];
  };
  measure("full frame: everything shown, at an angle");
  v.Zoom_All();
  measure("full frame: everything shown, from the front");
  v.ViewAngle();
  v.OptionShowNodeNumber = v.OptionShowStiffenerNumber = v.OptionShowPlateNumber = vbFalse;
  v.OptionShowBoundaryValue = v.OptionShowBraceValue = v.OptionShowLoadValue = vbFalse;
  measure("no numbers or values");
  v.OptionShowBoundary = v.OptionShowBrace = v.OptionShowLoad = vbFalse;
  measure("no symbols either");
  std::printf("mesh %d x %d elements: %ld nodes, %ld plates, %ld stiffeners\n", nx, ny,
              gMesh().Nodes().Count(), gMesh().fourNodes().Count(), gMesh().twoNodes().Count());
  std::printf("GL renderer: %s\n",
              reinterpret_cast<const char*>((surface->makeCurrent(), glGetString(GL_RENDERER))));
  std::printf("target: 100 ms for the full frame\n");
  return 0;
}
