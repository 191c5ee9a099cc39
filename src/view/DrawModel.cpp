#include "view/DrawModel.h"

#include "common/Fault.h"
#include "common/Host.h"
#include "editing/Selection.h"
#include "model/VELKMain.h"
#include "view/View.h"

#include <GL/gl.h>
#include <cmath>
#include <variant>

namespace velk {

namespace {

std::string Number(Long v) { return std::to_string(v); }

// Symbols keep their shape in fit view: undo the stretch after the translation.
void UndoStretch() {
  const View& v = gView();
  if (v.ScreenMode == 1)
    glScalef(1.0f / (v.ScreenModeFactorX * 0.8f), 1.0f / (v.ScreenModeFactorY * 0.7f), 1.0f);
}

void Cross(Single s) {
  glBegin(GL_LINES);
  glVertex3f(-s, -s, 0);
  glVertex3f(s, s, 0);
  glVertex3f(-s, s, 0);
  glVertex3f(s, -s, 0);
  glEnd();
}

void SelectedAt(Single x, Single y, Single s) {
  glPushMatrix();
  glTranslatef(x, y, 0);
  UndoStretch();
  Cross(s);
  glPopMatrix();
}

void Line(float x0, float y0, float z0, float x1, float y1, float z1) {
  glVertex3f(x0, y0, z0);
  glVertex3f(x1, y1, z1);
}

// Stem and frame shared by the restraint and spring symbols: they float behind
// the plane on a dashed stem.
void BeginSymbol(const Nodeb& n, Single LayerOffset) {
  glPushMatrix();
  glTranslatef(n.xcoord, n.ycoord, -2 * LayerOffset);
  UndoStretch();
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glEnable(GL_POLYGON_OFFSET_LINE);
  glPolygonOffset(-1, -1);
  glColor3f(0, 0, 0);
  glEnable(GL_LINE_STIPPLE);
  glLineStipple(4, 0xAAAA);
  glBegin(GL_LINES);
  Line(0, 0, 0, 0, 0, 2 * LayerOffset);
  glEnd();
  glDisable(GL_LINE_STIPPLE);
}

void EndSymbol() {
  glDisable(GL_POLYGON_OFFSET_LINE);
  glPopMatrix();
}

void Value(float x, float y, float z, double value) {
  glColor3f(0, 0, 0);
  DrawText3f(x, y, z, Format(value, "##0.00#"));
}

void DrawBoundarySymbol(const Nodeb& n, Single s, Single LayerOffset, int dir, Boolean BV) {
  BeginSymbol(n, LayerOffset);
  glColor3f(0.1f, 0.4f, 0.1f);
  switch (dir) {
  case 1:
    glBegin(GL_LINES);
    Line(0, 0, 0, s, 0, 0);
    Line(s, 0, 0.25f * s, s, 0, -0.25f * s);
    Line(s, 0.25f * s, 0, s, -0.25f * s, 0);
    glEnd();
    if (BV) Value(1.2f * s, 0, 0, n.InPDispX);
    break;
  case 2:
    glBegin(GL_LINES);
    Line(0, 0, 0, 0, -s, 0);
    Line(-0.2f * s, -s, 0, 0.2f * s, -s, 0);
    Line(0, -s, 0.2f * s, 0, -s, -0.2f * s);
    glEnd();
    if (BV) Value(0, -1.4f * s, 0, n.InPDispY);
    break;
  case 3:
    glBegin(GL_LINES);
    Line(0, 0, 0, 0, 0, -s);
    Line(0.2f * s, 0, -s, -0.2f * s, 0, -s);
    Line(0, 0.2f * s, -s, 0, -0.2f * s, -s);
    glEnd();
    break;
  case 4:
    glBegin(GL_LINES);
    Line(0, 0, 0, 0.4f * s, 0, 0);
    glEnd();
    glBegin(GL_QUADS);
    glVertex3f(0.4f * s, 0.2f * s, 0);
    glVertex3f(0.6f * s, 0.2f * s, 0);
    glVertex3f(0.6f * s, -0.2f * s, 0);
    glVertex3f(0.4f * s, -0.2f * s, 0);
    glEnd();
    break;
  case 5:
    glBegin(GL_LINES);
    Line(0, 0, 0, 0, -0.4f * s, 0);
    glEnd();
    glBegin(GL_QUADS);
    glVertex3f(-0.2f * s, -0.4f * s, 0);
    glVertex3f(0.2f * s, -0.4f * s, 0);
    glVertex3f(0.2f * s, -0.6f * s, 0);
    glVertex3f(-0.2f * s, -0.6f * s, 0);
    glEnd();
    break;
  }
  EndSymbol();
}

void DrawBraceSymbol(const Nodeb& n, Single s, Single LayerOffset, int dir, Boolean BrV) {
  BeginSymbol(n, LayerOffset);
  glColor3f(0, 0, 0.8f);
  struct P {
    float x, y, z;
  };
  auto strip = [&](std::initializer_list<P> pts) {
    glBegin(GL_LINE_STRIP);
    for (const P& p : pts) glVertex3f(p.x * s, p.y * s, p.z * s);
    glEnd();
  };
  auto lines = [&](P a, P b) {
    glBegin(GL_LINES);
    glVertex3f(a.x * s, a.y * s, a.z * s);
    glVertex3f(b.x * s, b.y * s, b.z * s);
    glEnd();
  };
  switch (dir) {
  case 1:
    strip({{0, 0, 0}, {0.3f, 0, 0}, {0.4f, 0.2f, 0}, {0.5f, -0.2f, 0}, {0.6f, 0, 0}, {1, 0, 0}});
    lines({1, 0.2f, 0}, {1, -0.2f, 0});
    if (BrV) Value(1.2f * s, 0, 0, n.xtstiff);
    break;
  case 2:
    strip({{0, 0, 0}, {0, -0.3f, 0}, {0.2f, -0.4f, 0}, {-0.2f, -0.5f, 0}, {0, -0.6f, 0}, {0, -1, 0}});
    lines({0.2f, -1, 0}, {-0.2f, -1, 0});
    if (BrV) Value(0, -1.2f * s, 0, n.YTStiff);
    break;
  case 3:
    strip({{0, 0, 0}, {0, 0, -0.3f}, {0.2f, 0, -0.4f}, {-0.2f, 0, -0.5f}, {0, 0, -0.6f}, {0, 0, -1}});
    lines({0.2f, 0, -1}, {-0.2f, 0, -1});
    if (BrV) Value(0.2f * s, 0, -s, n.ZTStiff);
    break;
  case 4:
    strip({{0.6f, 0.2f, 0}, {0.3f, 0.2f, 0}, {0.3f, -0.2f, 0}, {0.6f, -0.2f, 0}});
    lines({0, 0, 0}, {0.3f, 0, 0});
    if (BrV) Value(0.8f * s, 0, 0, n.XRStiff);
    break;
  case 5:
    strip({{0.2f, -0.6f, 0}, {0.2f, -0.3f, 0}, {-0.2f, -0.3f, 0}, {-0.2f, -0.6f, 0}});
    lines({0, 0, 0}, {0, -0.3f, 0});
    if (BrV) Value(0, -s, 0, n.YRStiff);
    break;
  }
  EndSymbol();
}

void DrawLoadArrow(const Nodeb& n, Single s, int dir, Boolean LV) {
  glColor3f(1, 0, 0);
  glPushMatrix();
  glTranslatef(n.xcoord, n.ycoord, 0);
  UndoStretch();
  if (dir == 1) glRotatef(180, 0, 0, 1);
  else if (dir == 2) glRotatef(-90, 0, 0, 1);
  else if (dir == 4) glRotatef(90, 0, 0, 1);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glEnable(GL_POLYGON_OFFSET_LINE);
  glPolygonOffset(-1, -1);
  glBegin(GL_TRIANGLES);
  glVertex3f(0, 0, 0);
  glVertex3f(0.5f * s, 0.125f * s, 0);
  glVertex3f(0.5f * s, -0.125f * s, 0);
  glEnd();
  glBegin(GL_LINES);
  Line(0.5f * s, 0, 0, s, 0, 0);
  glEnd();
  glDisable(GL_POLYGON_OFFSET_LINE);
  if (LV) {
    glColor3f(0, 0, 0);
    Single load = (dir == 1 || dir == 3) ? n.XLoad : n.YLoad;
    DrawText3f(s, 0, 0, SingleToText(std::fabs(load)));
  }
  glPopMatrix();
}

void DrawSelection(Single s) {
  Selection& sel = gSelection();
  for (Long i = 1; i <= sel.SelectedCounter(); ++i)
    std::visit([s](const auto& o) { DrawSelected(*o, s); }, sel.Item(i));
}

void ModelBody(View& v) {
  const Single MarkerSize =
      static_cast<Single>(v.OptionPropertyMarker_Size * 0.001 * v.SLimitMaxX / v.ViewZoom);
  const Single LayerOffset =
      static_cast<Single>(v.OptionLayerOffset_Distance * 0.001 * v.SLimitMaxX / v.ViewZoom);
  const Single SelectedMarkerSize =
      static_cast<Single>(v.OptionSelectedMarker_Size * 0.001 * v.SLimitMaxX / v.ViewZoom);
  Mesh& mesh = gMesh();
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glEnable(GL_POLYGON_OFFSET_LINE);
  glPolygonOffset(-2, -2);
  if (v.OptionShowNodeNumber)
    for (const auto& n : mesh.Nodes()) Draw(*n, MarkerSize, v.OptionShowNodeNumber);
  if (v.OptionShowBoundary)
    for (const auto& n : mesh.Nodes())
      DrawBoundary(*n, MarkerSize, LayerOffset, v.OptionShowBoundaryValue);
  if (v.OptionShowBrace)
    for (const auto& n : mesh.Nodes())
      DrawBrace(*n, MarkerSize, LayerOffset, v.OptionShowBraceValue);
  if (v.OptionShowLoad)
    for (const auto& n : mesh.Nodes()) DrawLoad(*n, MarkerSize, LayerOffset, v.OptionShowLoadValue);
  glDisable(GL_POLYGON_OFFSET_LINE);
  if (v.OptionShowStiffener)
    for (const auto& s : mesh.twoNodes()) Draw(*s, v.OptionShowStiffenerNumber);
  const Single maxT = mesh.fourNodes().MaxThickness();
  for (const auto& p : mesh.fourNodes()) Draw(*p, maxT, v.OptionShowPlateNumber, v.OptionShowPlate);
  glLineWidth(2);
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glEnable(GL_POLYGON_OFFSET_LINE);
  glPolygonOffset(-3, -3);
  glColor3f(1, 0, 0);
  DrawSelection(SelectedMarkerSize);
  glDisable(GL_POLYGON_OFFSET_LINE);
  glLineWidth(1);
}

} // namespace

void DrawText3f(float x, float y, float z, const std::string& text) {
  glRasterPos3f(x, y, z);
  glListBase(kFontListBase);
  glCallLists(static_cast<GLsizei>(text.size()), GL_UNSIGNED_BYTE, text.data());
}

void Draw(const Nodeb& n, Single, Boolean NV) {
  if (NV && n.vID != 0) {
    glColor3f(0, 0, 0);
    DrawText3f(n.xcoord, n.ycoord, 0, Number(n.vID));
  }
}

void DrawBoundary(const Nodeb& n, Single MarkerSize, Single LayerOffset, Boolean BV) {
  if (!n.BoundaryDefined()) return;
  const Boolean flags[5] = {n.XTDir(), n.YTDir(), n.ZTDir(), n.XRDir(), n.YRDir()};
  for (int d = 0; d < 5; ++d)
    if (flags[d]) DrawBoundarySymbol(n, MarkerSize, LayerOffset, d + 1, BV);
}

void DrawBrace(const Nodeb& n, Single MarkerSize, Single LayerOffset, Boolean BrV) {
  if (!n.BraceDefined()) return;
  const Single springs[5] = {n.xtstiff, n.YTStiff, n.ZTStiff, n.XRStiff, n.YRStiff};
  for (int d = 0; d < 5; ++d)
    if (std::fabs(springs[d]) > kTolerance) DrawBraceSymbol(n, MarkerSize, LayerOffset, d + 1, BrV);
}

void DrawLoad(const Nodeb& n, Single MarkerSize, Single, Boolean LV) {
  if (!n.LoadDefined()) return;
  if (n.XLoad > kTolerance) DrawLoadArrow(n, MarkerSize, 1, LV);
  else if (n.XLoad < -kTolerance) DrawLoadArrow(n, MarkerSize, 3, LV);
  if (n.YLoad > kTolerance) DrawLoadArrow(n, MarkerSize, 2, LV);
  else if (n.YLoad < -kTolerance) DrawLoadArrow(n, MarkerSize, 4, LV);
}

void DrawSelected(const Nodeb& n, Single s) { SelectedAt(n.xcoord, n.ycoord, s); }
void DrawSelected(const twoNode& e, Single s) { SelectedAt(e.CPX, e.CPY, s); }
void DrawSelected(const fourNode& e, Single s) { SelectedAt(e.CPX, e.CPY, s); }

void Draw(const twoNode& e, Boolean SV) {
  if (e.PropertyDefined != vbTrue) return;
  const float h = e.width / 2;
  auto quad = [&] {
    glBegin(GL_QUADS);
    glVertex3f(e.Node1->xcoord, e.Node1->ycoord, -h);
    glVertex3f(e.Node2->xcoord, e.Node2->ycoord, -h);
    glVertex3f(e.Node2->xcoord, e.Node2->ycoord, h);
    glVertex3f(e.Node1->xcoord, e.Node1->ycoord, h);
    glEnd();
  };
  glColor3f(0, 0, 0);
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  quad();
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(1, 1);
  glColor4f(1, 1, 0.7f, 0.2f);
  quad();
  glDisable(GL_POLYGON_OFFSET_FILL);
  if (SV && e.vID != 0) {
    glColor3f(0, 0, 0);
    DrawText3f(e.CPX, e.CPY, 0, Number(e.vID));
  }
}

void Draw(const fourNode& e, Single maxThickness, Boolean PV, Boolean P) {
  // A model with plates but no thickness anywhere cannot be shaded: report it
  // as the division it is.
  if (maxThickness == 0) Raise(errDivByZero, "division by zero");
  const float b = 1.0f - (e.Thickness / maxThickness) * 0.3f;
  auto quad = [&] {
    glBegin(GL_QUADS);
    glVertex3f(e.Node1->xcoord, e.Node1->ycoord, 0);
    glVertex3f(e.Node4->xcoord, e.Node4->ycoord, 0);
    glVertex3f(e.Node3->xcoord, e.Node3->ycoord, 0);
    glVertex3f(e.Node2->xcoord, e.Node2->ycoord, 0);
    glEnd();
  };
  glColor3f(0, 0, 0);
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  quad();
  if (P == vbTrue) {
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(2, 2);
    glColor4f(1, 1, b, 0.2f);
    quad();
    glDisable(GL_POLYGON_OFFSET_FILL);
    if (e.PropertyDefined && PV && e.vID != 0) {
      glColor3f(0, 0, 0);
      DrawText3f(e.CPX, e.CPY, 0, Number(e.vID));
    }
  }
}

void Draw_Model(View& v) {
  // A fault that stays (plates with no thickness anywhere) would otherwise ask
  // again at every repaint, and every answer brings a repaint: tell it once
  // until a frame draws cleanly.
  static bool reported = false;
  try {
    if (!v.OptionShowModel) return;
    if (v.OptionShowResult && v.OptionHideModelWhenBuckle) return;
    ModelBody(v);
    reported = false;
  } catch (const std::exception&) {
    glDisable(GL_POLYGON_OFFSET_LINE);
    glDisable(GL_POLYGON_OFFSET_FILL);
    glLineWidth(1);
    if (!reported) {
      reported = true;
      MsgBox("Error..[Draw Model]");
    }
  }
}

void Draw_Coordinate(View& v) {
  try {
    if (!v.OptionShowCoordinate) return;
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glTranslatef(static_cast<float>(v.SLimitCX), v.SLimitCY, 0);
    glRotatef(static_cast<float>(v.ViewRX), 0, 1, 0);
    glRotatef(static_cast<float>(v.ViewRY), 1, 0, 0);
    glRotatef(static_cast<float>(v.ViewRZ), 0, 0, 1);
    glTranslatef(static_cast<float>(-v.SLimitCX), -v.SLimitCY, 0);
    glColor3f(1, 0, 0);
    const double w = v.SLimitMaxXY, m = v.LimitMaxXY;
    const double cx = v.LimitCX, cy = v.LimitCY;
    const bool fit = v.ScreenMode == 1;
    const double z0 = fit ? 0.001 * m : 0.001 * w;
    const double ax = fit ? 0.1 * v.LimitMaxX : 0.1 * w;
    const double ay = fit ? 0.1 * v.LimitMaxY : 0.1 * w;
    const double az = fit ? 0.101 * m : 0.101 * w;
    glBegin(GL_LINES);
    glVertex3d(cx, cy, z0);
    glVertex3d(cx + ax, cy, z0);
    glVertex3d(cx, cy, z0);
    glVertex3d(cx, cy + ay, z0);
    glVertex3d(cx, cy, z0);
    glVertex3d(cx, cy, az);
    glEnd();
    DrawText3f(static_cast<float>(cx + 0.1 * v.SLimitMaxX), static_cast<float>(cy),
               static_cast<float>(0.001 * m), "X");
    DrawText3f(static_cast<float>(cx), static_cast<float>(cy + 0.1 * v.SLimitMaxY),
               static_cast<float>(fit ? 0.01 * m : 0.001 * m), "Y");
    DrawText3f(static_cast<float>(cx), static_cast<float>(cy),
               static_cast<float>(fit ? 0.11 * w : 0.101 * w), "Z");
    glPopMatrix();
  } catch (const std::exception&) {
    MsgBox("Error...");
  }
}

void Load_Projection(const View& v) {
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixd(v.Projection.data());
  glMatrixMode(GL_MODELVIEW);
}

void Load_ModelView(const View& v) {
  glMatrixMode(GL_MODELVIEW);
  glLoadMatrixd(v.ModelView.data());
}

void Capture_Frame_State(View& v) {
  GLint vp[4];
  glGetIntegerv(GL_VIEWPORT, vp);
  for (int i = 0; i < 4; ++i) v.FrameViewport[i] = vp[i];
  glGetDoublev(GL_MODELVIEW_MATRIX, v.FrameModelView.data());
  glGetDoublev(GL_PROJECTION_MATRIX, v.FrameProjection.data());
}

void Paint_Frame(View& v) {
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  // Blending is off, so the alphas of the fills mean nothing on the screen; keep
  // them out of the buffer too, or the window system would blend the surface.
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE);
  glDisable(GL_LIGHT0);
  glDisable(GL_LIGHTING);
  Load_Projection(v);
  if (v.OptionShowStress == 0) {
    const double planes[4][4] = {{1, 0, 0, -v.HClipFrom},
                                 {-1, 0, 0, v.HClipTo},
                                 {0, 1, 0, -v.VClipFrom},
                                 {0, -1, 0, v.VClipTo}};
    v.Draw_ModelView();
    Load_ModelView(v);
    // After the modelview, so the planes stand in model coordinates.
    for (int i = 0; i < 4; ++i) {
      glClipPlane(GL_CLIP_PLANE0 + i, planes[i]);
      glEnable(GL_CLIP_PLANE0 + i);
    }
    if (v.OptionShowCoordinate) Draw_Coordinate(v);
    if (v.OptionShowModel) Draw_Model(v);
    for (int i = 0; i < 4; ++i) glDisable(GL_CLIP_PLANE0 + i);
  }
  Capture_Frame_State(v);
}

} // namespace velk
