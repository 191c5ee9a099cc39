// The buckled shape: the deformed plates as a wire frame, and under it a
// smooth surface lit from the viewer's side.
#include "draw/DrawResult.h"

#include "common/Host.h"
#include "model/fourNodes.h"
#include "session/VELKMain.h"
#include "view/View.h"

#include <GL/gl.h>

namespace velk {

namespace {
bool TakesPart(const fourNode& p) {
  return p.Thickness > kTolerance;
}
} // namespace

void Draw_Result(View& v) {
  try {
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    glColor3f(1, 0.3f, 0.3f);
    glEnable(GL_POLYGON_OFFSET_LINE);
    glPolygonOffset(-2, -2);
    for (const auto& p : gMesh().fourNodes()) {
      if (!TakesPart(*p)) continue;
      Vec3f P[4], n;
      v.DeformedPlate(*p, P, n);
      glBegin(GL_QUADS);
      glNormal3f(n.x, n.y, n.z);
      for (const Vec3f& c : P)
        glVertex3f(c.x, c.y, c.z);
      glEnd();
    }
    glDisable(GL_POLYGON_OFFSET_LINE);
  } catch (const std::exception&) {
    glDisable(GL_POLYGON_OFFSET_LINE);
    MsgBox("Error..[Draw Result]");
  }
}

void Draw_Result_Shade(View& v) {
  try {
    Mesh& mesh = gMesh();
    const std::vector<Vec3f> normals = v.AveragedNormals(mesh.Nodes(), mesh.fourNodes());
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glColor3f(0, 0, 1); // hidden by the material while the light is on
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(-1, -1);
    for (const auto& p : mesh.fourNodes()) {
      if (!TakesPart(*p)) continue;
      Vec3f P[4], face;
      v.DeformedPlate(*p, P, face);
      const Nodeb* corners[4] = {p->Node1.get(), p->Node4.get(), p->Node3.get(), p->Node2.get()};
      glBegin(GL_QUADS);
      for (int i = 0; i < 4; ++i) {
        const Vec3f& n = normals[static_cast<std::size_t>(corners[i]->ID)];
        glNormal3f(n.x, n.y, n.z);
        glVertex3f(P[i].x, P[i].y, P[i].z);
      }
      glEnd();
    }
    glDisable(GL_POLYGON_OFFSET_FILL);
  } catch (const std::exception&) {
    glDisable(GL_POLYGON_OFFSET_FILL);
    MsgBox("Error..[Draw Result]");
  }
}

void Setup_Lighting(const View& v) {
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
  // w = 0: a light from the viewer's x direction, fixed to the eye, not the model.
  const GLfloat position[4] = {static_cast<GLfloat>(v.SLimitMaxX), 0, 0, 0};
  glLightfv(GL_LIGHT0, GL_POSITION, position);
  glPopMatrix();
  glEnable(GL_LIGHTING);
  glEnable(GL_LIGHT0);
}

void Remove_Lighting() {
  glDisable(GL_LIGHT0);
  glDisable(GL_LIGHTING);
}

} // namespace velk
