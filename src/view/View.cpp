#include "view/View.h"

#include "common/Fault.h"
#include "common/Host.h"
#include "common/TextFile.h"
#include "model/Nodes.h"
#include "model/fourNodes.h"
#include "model/twoNodes.h"

#include <cmath>
#include <numbers>

namespace velk {

namespace {

Matrix4 Identity() {
  Matrix4 m{};
  m[0] = m[5] = m[10] = m[15] = 1;
  return m;
}

// m = m * b, column-major, as GL multiplies the current matrix on the right.
void MultRight(Matrix4& m, const Matrix4& b) {
  Matrix4 r{};
  for (int c = 0; c < 4; ++c)
    for (int rr = 0; rr < 4; ++rr) {
      double s = 0;
      for (int k = 0; k < 4; ++k)
        s += m[k * 4 + rr] * b[c * 4 + k];
      r[c * 4 + rr] = s;
    }
  m = r;
}

void Translate(Matrix4& m, double x, double y, double z) {
  Matrix4 t = Identity();
  t[12] = x;
  t[13] = y;
  t[14] = z;
  MultRight(m, t);
}

void Scale(Matrix4& m, double x, double y, double z) {
  Matrix4 s = Identity();
  s[0] = x;
  s[5] = y;
  s[10] = z;
  MultRight(m, s);
}

// The rotation glRotatef builds, about a unit axis; angles in degrees, taken as
// 32-bit floats like the call itself.
void Rotate(Matrix4& m, double angleDeg, double x, double y, double z) {
  double a = static_cast<float>(angleDeg) * std::numbers::pi / 180.0;
  double c = std::cos(a), s = std::sin(a), t = 1 - c;
  Matrix4 r = Identity();
  r[0] = x * x * t + c;
  r[1] = y * x * t + z * s;
  r[2] = x * z * t - y * s;
  r[4] = x * y * t - z * s;
  r[5] = y * y * t + c;
  r[6] = y * z * t + x * s;
  r[8] = x * z * t + y * s;
  r[9] = y * z * t - x * s;
  r[10] = z * z * t + c;
  MultRight(m, r);
}

Matrix4 Multiply(const Matrix4& a, const Matrix4& b) {
  Matrix4 m = a;
  MultRight(m, b);
  return m;
}

// Inverse of a 4x4 matrix by cofactors; false when singular.
bool Invert(const Matrix4& m, Matrix4& inv) {
  Matrix4 r;
  r[0] = m[5] * m[10] * m[15] - m[5] * m[11] * m[14] - m[9] * m[6] * m[15] + m[9] * m[7] * m[14] +
         m[13] * m[6] * m[11] - m[13] * m[7] * m[10];
  r[4] = -m[4] * m[10] * m[15] + m[4] * m[11] * m[14] + m[8] * m[6] * m[15] - m[8] * m[7] * m[14] -
         m[12] * m[6] * m[11] + m[12] * m[7] * m[10];
  r[8] = m[4] * m[9] * m[15] - m[4] * m[11] * m[13] - m[8] * m[5] * m[15] + m[8] * m[7] * m[13] +
         m[12] * m[5] * m[11] - m[12] * m[7] * m[9];
  r[12] = -m[4] * m[9] * m[14] + m[4] * m[10] * m[13] + m[8] * m[5] * m[14] - m[8] * m[6] * m[13] -
          m[12] * m[5] * m[10] + m[12] * m[6] * m[9];
  r[1] = -m[1] * m[10] * m[15] + m[1] * m[11] * m[14] + m[9] * m[2] * m[15] - m[9] * m[3] * m[14] -
         m[13] * m[2] * m[11] + m[13] * m[3] * m[10];
  r[5] = m[0] * m[10] * m[15] - m[0] * m[11] * m[14] - m[8] * m[2] * m[15] + m[8] * m[3] * m[14] +
         m[12] * m[2] * m[11] - m[12] * m[3] * m[10];
  r[9] = -m[0] * m[9] * m[15] + m[0] * m[11] * m[13] + m[8] * m[1] * m[15] - m[8] * m[3] * m[13] -
         m[12] * m[1] * m[11] + m[12] * m[3] * m[9];
  r[13] = m[0] * m[9] * m[14] - m[0] * m[10] * m[13] - m[8] * m[1] * m[14] + m[8] * m[2] * m[13] +
          m[12] * m[1] * m[10] - m[12] * m[2] * m[9];
  r[2] = m[1] * m[6] * m[15] - m[1] * m[7] * m[14] - m[5] * m[2] * m[15] + m[5] * m[3] * m[14] +
         m[13] * m[2] * m[7] - m[13] * m[3] * m[6];
  r[6] = -m[0] * m[6] * m[15] + m[0] * m[7] * m[14] + m[4] * m[2] * m[15] - m[4] * m[3] * m[14] -
         m[12] * m[2] * m[7] + m[12] * m[3] * m[6];
  r[10] = m[0] * m[5] * m[15] - m[0] * m[7] * m[13] - m[4] * m[1] * m[15] + m[4] * m[3] * m[13] +
          m[12] * m[1] * m[7] - m[12] * m[3] * m[5];
  r[14] = -m[0] * m[5] * m[14] + m[0] * m[6] * m[13] + m[4] * m[1] * m[14] - m[4] * m[2] * m[13] -
          m[12] * m[1] * m[6] + m[12] * m[2] * m[5];
  r[3] = -m[1] * m[6] * m[11] + m[1] * m[7] * m[10] + m[5] * m[2] * m[11] - m[5] * m[3] * m[10] -
         m[9] * m[2] * m[7] + m[9] * m[3] * m[6];
  r[7] = m[0] * m[6] * m[11] - m[0] * m[7] * m[10] - m[4] * m[2] * m[11] + m[4] * m[3] * m[10] +
         m[8] * m[2] * m[7] - m[8] * m[3] * m[6];
  r[11] = -m[0] * m[5] * m[11] + m[0] * m[7] * m[9] + m[4] * m[1] * m[11] - m[4] * m[3] * m[9] -
          m[8] * m[1] * m[7] + m[8] * m[3] * m[5];
  r[15] = m[0] * m[5] * m[10] - m[0] * m[6] * m[9] - m[4] * m[1] * m[10] + m[4] * m[2] * m[9] +
          m[8] * m[1] * m[6] - m[8] * m[2] * m[5];
  double det = m[0] * r[0] + m[1] * r[4] + m[2] * r[8] + m[3] * r[12];
  if (det == 0) return false;
  for (int i = 0; i < 16; ++i)
    inv[i] = r[i] / det;
  return true;
}

} // namespace

int View::WindowY(double Y) const {
  return static_cast<int>(std::lround(FrameViewport[3] - Y + 1));
}

bool View::ScreenToModel(double X, double Y, float depth, double& ox, double& oy,
                         double& oz) const {
  if (depth >= 0.9f || depth <= 0.1f) return false;
  Matrix4 inv;
  if (!Invert(Multiply(FrameProjection, FrameModelView), inv)) return false;
  const double in[4] = {(X - FrameViewport[0]) / FrameViewport[2] * 2 - 1,
                        (WindowY(Y) - FrameViewport[1]) / double(FrameViewport[3]) * 2 - 1,
                        2.0 * depth - 1, 1};
  double out[4];
  for (int r = 0; r < 4; ++r)
    out[r] = inv[r] * in[0] + inv[4 + r] * in[1] + inv[8 + r] * in[2] + inv[12 + r] * in[3];
  if (out[3] == 0) return false;
  ox = out[0] / out[3];
  oy = out[1] / out[3];
  oz = out[2] / out[3];
  return true;
}

bool View::ModelToScreen(double x, double y, double z, double& wx, double& wy, double& wz) const {
  const Matrix4 m = Multiply(FrameProjection, FrameModelView);
  double out[4];
  for (int r = 0; r < 4; ++r)
    out[r] = m[r] * x + m[4 + r] * y + m[8 + r] * z + m[12 + r];
  if (out[3] == 0) return false;
  wx = FrameViewport[0] + FrameViewport[2] * (out[0] / out[3] + 1) / 2;
  wy = FrameViewport[1] + FrameViewport[3] * (out[1] / out[3] + 1) / 2;
  wz = (out[2] / out[3] + 1) / 2;
  return true;
}

View::View() {
  // The state of Initialization, then the option defaults, then a frame.
  ViewMode = ViewModes::Select;
  PropertyMode = PropertyModes::Plate;
  MeshMode = MeshModes::Plate;
  ScreenMode = ScreenModes::Actual;
  Set_Limits(Nodes{});
  HClipFrom = static_cast<Single>(SLimitX0);
  HClipTo = static_cast<Single>(SLimitX1);
  VClipFrom = static_cast<Single>(SLimitY0);
  VClipTo = static_cast<Single>(SLimitY1);
  Draw_ModelView();
  Draw_Projection();
  FrameModelView = ModelView;
  FrameProjection = Projection;
  Refresh();
}

void View::Set_Limits(const Nodes& nodes) {
  try {
    ComputeLimits(nodes);
  } catch (const std::exception&) {
    MsgBox("Error..[Set Limits]");
  }
}

void View::ComputeLimits(const Nodes& nodes) {
  if (nodes.Count() >= 4) {
    const auto& n1 = nodes.Item(1);
    double x0 = n1->xcoord, x1 = n1->xcoord, y0 = n1->ycoord, y1 = n1->ycoord;
    for (long i = 2; i <= nodes.Count(); ++i) {
      const auto& n = nodes.Item(i);
      if (n->xcoord < x0) x0 = n->xcoord;
      if (n->xcoord > x1) x1 = n->xcoord;
      if (n->ycoord < y0) y0 = n->ycoord;
      if (n->ycoord > y1) y1 = n->ycoord;
    }
    LimitX0 = x0;
    LimitX1 = x1;
    LimitY0 = y0;
    LimitY1 = static_cast<Single>(y1);
  } else {
    LimitX0 = 0;
    LimitX1 = 1;
    LimitY0 = 0;
    LimitY1 = 1;
  }
  LimitMaxX = std::fabs(LimitX1 - LimitX0);
  LimitMaxY = std::fabs(LimitY1 - LimitY0);
  LimitMaxXY = static_cast<Single>(LimitMaxX > LimitMaxY ? LimitMaxX : LimitMaxY);
  LimitCX = LimitX0 + LimitMaxX / 2;
  LimitCY = static_cast<Single>(LimitY0 + LimitMaxY / 2);
  double m = 0.1 * LimitMaxXY;
  SLimitX0 = LimitX0 - m;
  SLimitX1 = LimitX1 + m;
  SLimitY0 = LimitY0 - m;
  SLimitY1 = LimitY1 + m;
  SLimitMaxX = SLimitX1 - SLimitX0;
  SLimitMaxY = SLimitY1 - SLimitY0;
  SLimitMaxXY = static_cast<Single>(SLimitMaxX > SLimitMaxY ? SLimitMaxX : SLimitMaxY);
  SLimitZ0 = 10.0 * LimitMaxXY;
  SLimitZ1 = static_cast<Single>(-10.0 * LimitMaxXY);
  SLimitCX = SLimitX0 + SLimitMaxX / 2;
  SLimitCY = static_cast<Single>(SLimitY0 + SLimitMaxY / 2);
  if (ScaleHeight == 0) Raise(errDivByZero);
  double a = ScaleWidth / ScaleHeight;
  if (SLimitMaxX / SLimitMaxY - a < 0) {
    SLimitMaxX = SLimitMaxY * a;
    SLimitX0 = SLimitCX - SLimitMaxX / 2;
    SLimitX1 = SLimitCX + SLimitMaxX / 2;
  } else {
    SLimitMaxY = SLimitMaxX * ScaleHeight / ScaleWidth;
    SLimitY0 = SLimitCY - SLimitMaxY / 2;
    SLimitY1 = SLimitCY + SLimitMaxY / 2;
  }
  ScreenModeFactorX = ScreenModeFactorY = 1;
  if (ScreenMode == ScreenModes::Fit) {
    if (LimitMaxX == 0) Raise(errDivByZero);
    ScreenModeFactorX = static_cast<Single>(SLimitMaxX / LimitMaxX);
    if (LimitMaxY == 0) Raise(errDivByZero);
    ScreenModeFactorY = static_cast<Single>(SLimitMaxY / LimitMaxY);
  }
}

void View::Draw_Projection() {
  // glOrtho(SLimitX0, SLimitX1, SLimitY0, SLimitY1, -SLimitZ0, -SLimitZ1)
  double l = SLimitX0, r = SLimitX1, b = SLimitY0, t = SLimitY1, n = -SLimitZ0, f = -SLimitZ1;
  Matrix4 m{};
  m[0] = 2 / (r - l);
  m[5] = 2 / (t - b);
  m[10] = -2 / (f - n);
  m[12] = -(r + l) / (r - l);
  m[13] = -(t + b) / (t - b);
  m[14] = -(f + n) / (f - n);
  m[15] = 1;
  Projection = m;
}

Matrix4 View::BuildModelView(bool trueProportion) const {
  // The arguments go through 32-bit floats, as glTranslatef and friends take them.
  auto f = [](double v) { return static_cast<double>(static_cast<float>(v)); };
  Matrix4 m = Identity();
  Translate(m, f(SLimitCX), f(SLimitCY), 0);
  Rotate(m, ViewRX, 0, 1, 0);
  Rotate(m, ViewRY, 1, 0, 0);
  Rotate(m, ViewRZ, 0, 0, 1);
  if (trueProportion || ScreenMode == ScreenModes::Actual)
    Scale(m, ViewZoom, ViewZoom, ViewZoom);
  else
    Scale(m, f(ViewZoom * ScreenModeFactorX * 0.8), f(ViewZoom * ScreenModeFactorY * 0.7),
          ViewZoom);
  Translate(m, f(ViewX - SLimitCX), f(ViewY - SLimitCY), 0);
  return m;
}

void View::Draw_ModelView() {
  ModelView = BuildModelView(false);
}

Matrix4 View::StressModelView() const {
  return BuildModelView(true);
}

void View::Refresh() {
  if (RefreshHook) RefreshHook();
}

void View::ScreenModeChange(const Nodes& nodes) {
  ScreenMode = ScreenMode == ScreenModes::Actual ? ScreenModes::Fit : ScreenModes::Actual;
  Set_Limits(nodes);
  Draw_Projection();
  Refresh();
}

void View::Zoom_All() {
  ViewX = ViewY = 0;
  ViewRX = ViewRY = ViewRZ = 0;
  ViewZoom = 1;
  Refresh();
}

void View::ViewAngle() {
  ViewRX = 25;
  ViewRY = 25;
  ViewRZ = 0;
  Refresh();
}

void View::LeftView() {
  ViewRX = 89.9;
  ViewRY = 0.01;
  ViewRZ = 0.01;
  Refresh();
}

void View::TopView() {
  ViewRX = 0.01;
  ViewRY = 89.9;
  ViewRZ = 0.01;
  Refresh();
}

void View::Center(Single pxcoord, Single pycoord) {
  ViewX = SLimitCX - pxcoord;
  ViewY = SLimitCY - pycoord;
}

void View::Translate_Drag(Single DownX, Single DownY, Single UpX, Single UpY) {
  constexpr double pi = 3.14159; // the drag's own value, not the full one
  ViewX = ViewX + (SLimitX1 - SLimitX0) * ((UpX - DownX) / ScaleWidth) / std::cos(ViewRX * pi / 180);
  ViewY = ViewY - (SLimitY1 - SLimitY0) * ((UpY - DownY) / ScaleHeight) / std::cos(ViewRY * pi / 180);
}

void View::Rotate_Drag(Single DownX, Single DownY, Single UpX, Single UpY) {
  ViewRX = ViewRX + (90 / ScaleWidth) * (UpX - DownX);
  ViewRY = ViewRY - (90 / ScaleHeight) * (UpY - DownY);
  // 360 itself stays; only beyond it wraps.
  if (ViewRX > 360) ViewRX -= 360;
  if (ViewRY > 360) ViewRY -= 360;
  if (ViewRX < 0) ViewRX += 360;
  if (ViewRY < 0) ViewRY += 360;
}

void View::Zoom_Drag(Single DownX, Single UpX) {
  // Below 5% the zoom can only grow; one long drag to the left can still take
  // it from above 5% to below, even through zero.
  if (ViewZoom >= 0.05 || UpX - DownX >= 0)
    ViewZoom = static_cast<Single>(ViewZoom + (UpX - DownX) / ScaleWidth);
}

void View::ZoomInOutCenter(Single pxcoord, Single pycoord, Integer InOut) {
  if (InOut == 0) {
    Center(pxcoord, pycoord);
    ViewZoom = ViewZoom * OptionZoomCenterFactor;
    if (ViewZoom > 100) ViewZoom = 100;
  } else if (InOut == 1) {
    Center(pxcoord, pycoord);
    ViewZoom = ViewZoom / OptionZoomCenterFactor;
    if (ViewZoom < 0.01f) ViewZoom = 0.01f;
  }
}

void View::SetUpClipEq(double hfrom, double hto, double vfrom, double vto) {
  HClipFrom = static_cast<Single>(hfrom);
  HClipTo = static_cast<Single>(hto);
  VClipFrom = static_cast<Single>(vfrom);
  VClipTo = static_cast<Single>(vto);
  Refresh();
}

void View::Initialization(const Nodes& nodes) {
  ModeShown = 0;
  ViewMode = ViewModes::Select;
  PropertyMode = PropertyModes::Plate;
  MeshMode = MeshModes::Plate;
  ScreenMode = ScreenModes::Actual;
  Set_Limits(nodes);
  SetUpClipEq(SLimitX0, SLimitX1, SLimitY0, SLimitY1);
  ViewX = ViewY = 0;
  ViewRX = ViewRY = ViewRZ = 0;
  ViewZoom = 1;
  Draw_ModelView();
  Draw_Projection();
}

void View::SetOptionFallbacks() {
  OptionShowNodeNumber = OptionShowStiffenerNumber = OptionShowPlateNumber = vbFalse;
  OptionShowCoordinate = OptionShowStiffener = vbTrue;
  OptionShowBoundary = vbTrue;
  OptionShowBoundaryValue = vbFalse;
  OptionShowLoad = vbTrue;
  OptionShowLoadValue = vbFalse;
  OptionShowBrace = vbTrue;
  OptionShowBraceValue = vbFalse;
  OptionShowModel = vbTrue;
  OptionShowResult = vbFalse;
  OptionHideModelWhenBuckle = vbFalse;
  OptionInpMagFactor = OptionOutpMagFactor = 10;
  OptionSelectedMarker_Size = OptionPropertyMarker_Size = OptionLayerOffset_Distance = 10;
  OptionFontSize = 10;
  OptionShowStress = StressPlots::None;
  OptionZoomCenterFactor = 2;
  OptionShowPlate = vbTrue;
  OptionShading = vbTrue;
}

void View::ReadData1_4Option(FieldReader& in) {
  try {
    OptionShowNodeNumber = in.Boolean();
    OptionShowStiffenerNumber = in.Boolean();
    OptionShowPlateNumber = in.Boolean();
    OptionShowCoordinate = in.Boolean();
    OptionShowStiffener = in.Boolean();
    OptionShowBoundary = in.Boolean();
    OptionShowBoundaryValue = in.Boolean();
    OptionShowLoad = in.Boolean();
    OptionShowLoadValue = in.Boolean();
    OptionShowBrace = in.Boolean();
    OptionShowBraceValue = in.Boolean();
    OptionShowModel = in.Boolean();
    OptionShowResult = in.Boolean();
    OptionHideModelWhenBuckle = in.Boolean();
    OptionInpMagFactor = in.Single();
    OptionOutpMagFactor = in.Single();
    OptionSelectedMarker_Size = in.Single();
    OptionPropertyMarker_Size = in.Single();
    OptionLayerOffset_Distance = in.Single();
    OptionFontSize = in.Integer();
    OptionShowStress = in.Long();
    OptionZoomCenterFactor = in.Single();
    OptionShowPlate = in.Boolean();
    OptionShading = in.Boolean();
    // A value the option dialog would refuse is damage like an unreadable
    // one: a font of 32767 points would take minutes to build.
    if (OptionFontSize <= 5 || OptionFontSize >= 20 ||
        !(OptionZoomCenterFactor >= 1 && OptionZoomCenterFactor <= 10) ||
        OptionShowStress < StressPlots::None || OptionShowStress > StressPlots::Mises)
      Raise(errInvalidCall, "an option beyond the dialog's range");
  } catch (const Fault&) {
    SetOptionFallbacks();
  }
}

void View::StoreData1_4Option(FieldWriter& out) const {
  out.Boolean(OptionShowNodeNumber);
  out.Boolean(OptionShowStiffenerNumber);
  out.Boolean(OptionShowPlateNumber);
  out.EndLine();
  out.Boolean(OptionShowCoordinate);
  out.Boolean(OptionShowStiffener);
  out.EndLine();
  out.Boolean(OptionShowBoundary);
  out.Boolean(OptionShowBoundaryValue);
  out.Boolean(OptionShowLoad);
  out.Boolean(OptionShowLoadValue);
  out.EndLine();
  out.Boolean(OptionShowBrace);
  out.Boolean(OptionShowBraceValue);
  out.EndLine();
  out.Boolean(OptionShowModel);
  out.Boolean(OptionShowResult);
  out.Boolean(OptionHideModelWhenBuckle);
  out.EndLine();
  out.Single(OptionInpMagFactor);
  out.Single(OptionOutpMagFactor);
  out.EndLine();
  out.Single(OptionSelectedMarker_Size);
  out.Single(OptionPropertyMarker_Size);
  out.Single(OptionLayerOffset_Distance);
  out.Integer(OptionFontSize);
  out.EndLine();
  out.Integer(OptionShowStress);
  out.Single(OptionZoomCenterFactor);
  out.Boolean(OptionShowPlate);
  out.Boolean(OptionShading);
  out.EndLine();
}

// ---- results ----

StressColour StressColourOf(Single s, Single r) {
  if (s >= 0) return {1, 1 - s / r, 1 - s / r, 1};
  return {1 + s / r, 1 + s / r, 1, 1};
}

Vec3f View::DeformedPosition(const Nodeb& n) const {
  return {n.InPDispX * OptionInpMagFactor + n.xcoord, n.InPDispY * OptionInpMagFactor + n.ycoord,
          (ModeShown > 0 ? n.ShownZ : n.zcoord) * OptionOutpMagFactor};
}

void View::DeformedPlate(const fourNode& p, Vec3f (&P)[4], Vec3f& normal) const {
  P[0] = DeformedPosition(*p.Node1);
  P[1] = DeformedPosition(*p.Node4);
  P[2] = DeformedPosition(*p.Node3);
  P[3] = DeformedPosition(*p.Node2);
  const Vec3f a{P[0].x - P[2].x, P[0].y - P[2].y, P[0].z - P[2].z};
  const Vec3f b{P[3].x - P[2].x, P[3].y - P[2].y, P[3].z - P[2].z};
  normal = {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

std::vector<Vec3f> View::AveragedNormals(const Nodes& nodes, const fourNodes& plates) const {
  const long count = nodes.Count();
  std::vector<Vec3f> sum(static_cast<std::size_t>(count) + 1);
  std::vector<Integer> hits(static_cast<std::size_t>(count) + 1, 0);
  for (const auto& p : plates) {
    if (p->Thickness <= kTolerance) continue;
    Vec3f P[4], n;
    DeformedPlate(*p, P, n);
    for (const Nodeb* node : {p->Node1.get(), p->Node2.get(), p->Node3.get(), p->Node4.get()}) {
      // The numbering runs 1 to the count; anything else is a damaged mesh.
      if (node->ID < 1 || node->ID > count) Raise(errSubscript);
      Vec3f& s = sum[static_cast<std::size_t>(node->ID)];
      s.x += n.x, s.y += n.y, s.z += n.z;
      ++hits[static_cast<std::size_t>(node->ID)];
    }
  }
  for (std::size_t i = 1; i < sum.size(); ++i)
    if (hits[i] != 0) sum[i].x /= hits[i], sum[i].y /= hits[i], sum[i].z /= hits[i];
  return sum;
}

Single View::StressScale(const Nodes& nodes, const twoNodes& stiffeners, Single& maxS,
                         Single& minS) const {
  nodes.Calculate_MaxMinStress(maxS, minS, static_cast<Integer>(OptionShowStress - 1));
  if (OptionShowStress == StressPlots::Sx) {
    Single smax = 0, smin = 0;
    stiffeners.Calculate_MaxMinStress(smax, smin, 0);
    if (smax > maxS) maxS = smax;
    if (smin < minS) minS = smin;
  }
  Single r = std::fabs(maxS) > std::fabs(minS) ? std::fabs(maxS) : std::fabs(minS);
  if (r < 1E-40f) r = 1E-16f;
  return r;
}

bool View::StressValueOf(Single CB, Single CR, Single& value) const {
  if (CB > CR)
    value = static_cast<Single>(-(1 - CR) * maxStress);
  else if (CR > CB)
    value = static_cast<Single>((1 - CB) * maxStress);
  else
    return false;
  return true;
}

void View::ShowStressValue(Single CB, Single CR) {
  Single value = 0;
  if (StressValueOf(CB, CR, value) && ShowStress) ShowStress(value);
}

} // namespace velk
