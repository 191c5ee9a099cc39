// Reading the picture on the screen: the depth under a window point, and the
// model point there.
#include "draw/DrawModel.h"
#include "view/View.h"

#include <GL/gl.h>

namespace velk {

bool Probe_Model_Point(const View& v, double X, double Y, double& ox, double& oy, double& oz) {
  GLfloat depth = 1;
  glReadPixels(static_cast<GLint>(X), v.WindowY(Y), 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
  return v.ScreenToModel(X, Y, depth, ox, oy, oz);
}

bool Probe_Stress_Color(const View& v, double X, double Y, float& CB, float& CR) {
  const int wy = v.WindowY(Y);
  if (X < 0 || wy < 0 || X >= v.FrameViewport[2] || wy >= v.FrameViewport[3]) return false;
  glReadPixels(static_cast<GLint>(X), wy, 1, 1, GL_BLUE, GL_FLOAT, &CB);
  glReadPixels(static_cast<GLint>(X), wy, 1, 1, GL_RED, GL_FLOAT, &CR);
  return true;
}

} // namespace velk
