// The stress plot: one component of the first stage as colours on the
// plates, and for Sx on the stiffeners, on the symmetric map of the view.
#include "draw/DrawResult.h"

#include "model/fourNodes.h"
#include "model/twoNodes.h"
#include "session/VELKMain.h"
#include "draw/DrawModel.h"
#include "view/View.h"

#include <GL/gl.h>

namespace velk {

namespace {

void Colour(Single s, Single r) {
  const StressColour c = StressColourOf(s, r);
  glColor4f(c[0], c[1], c[2], c[3]);
}

// The black outline over a filled shape, pulled forward so that it wins.
void Outline(const Vec3f (&P)[4]) {
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glEnable(GL_POLYGON_OFFSET_LINE);
  glPolygonOffset(-2, -2);
  glColor3f(0, 0, 0);
  glBegin(GL_QUADS);
  for (const Vec3f& c : P)
    glVertex3f(c.x, c.y, c.z);
  glEnd();
  glDisable(GL_POLYGON_OFFSET_LINE);
}

// One routine for the four plate components; they differ in the node field.
void DrawPlateStress(const fourNode& p, Single r, Single Nodeb::*field) {
  if (!p.PropertyDefined) return;
  const Nodeb* corners[4] = {p.Node1.get(), p.Node4.get(), p.Node3.get(), p.Node2.get()};
  Vec3f P[4];
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glBegin(GL_QUADS);
  for (int i = 0; i < 4; ++i) {
    P[i] = {corners[i]->xcoord, corners[i]->ycoord, 0};
    Colour(corners[i]->*field, r);
    glVertex3f(P[i].x, P[i].y, P[i].z);
  }
  glEnd();
  Outline(P);
}

} // namespace

void DrawStressSX(const fourNode& p, Single StressMax) {
  DrawPlateStress(p, StressMax, &Nodeb::Sx);
}
void DrawStressSY(const fourNode& p, Single StressMax) {
  DrawPlateStress(p, StressMax, &Nodeb::Sy);
}
void DrawStressSXY(const fourNode& p, Single StressMax) {
  DrawPlateStress(p, StressMax, &Nodeb::SXY);
}
void DrawStressMises(const fourNode& p, Single StressMax) {
  DrawPlateStress(p, StressMax, &Nodeb::Mises);
}

// The stiffener's quad on edge, as the model shows it, in one colour.
void DrawStress(const twoNode& s, Single StressMax) {
  if (!s.PropertyDefined) return;
  const float h = s.width / 2;
  const Vec3f P[4] = {{s.Node1->xcoord, s.Node1->ycoord, -h},
                      {s.Node2->xcoord, s.Node2->ycoord, -h},
                      {s.Node2->xcoord, s.Node2->ycoord, h},
                      {s.Node1->xcoord, s.Node1->ycoord, h}};
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  Colour(s.Stress, StressMax);
  glBegin(GL_QUADS);
  for (const Vec3f& c : P)
    glVertex3f(c.x, c.y, c.z);
  glEnd();
  Outline(P);
}

// Faults are the frame's to report.
void Draw_Stress(View& v) {
  Mesh& mesh = gMesh();
  if (mesh.Nodes().Count() < 4) return;
  Single maxS = 0, minS = 0;
  const Single r = v.StressScale(mesh.Nodes(), mesh.twoNodes(), maxS, minS);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glMatrixMode(GL_MODELVIEW);
  glLoadMatrixd(v.StressModelView().data());
  glColor3f(0, 0, 0);
  switch (v.OptionShowStress) {
  case StressPlots::Sx:
    for (const auto& p : mesh.fourNodes())
      DrawStressSX(*p, r);
    for (const auto& s : mesh.twoNodes())
      DrawStress(*s, r);
    break;
  case StressPlots::Sy:
    for (const auto& p : mesh.fourNodes())
      DrawStressSY(*p, r);
    break;
  case StressPlots::Sxy:
    for (const auto& p : mesh.fourNodes())
      DrawStressSXY(*p, r);
    break;
  case StressPlots::Mises:
    for (const auto& p : mesh.fourNodes())
      DrawStressMises(*p, r);
    break;
  }
  if (v.ShowMaxMin) v.ShowMaxMin(maxS, minS);
  v.maxStress = r;
}

} // namespace velk
