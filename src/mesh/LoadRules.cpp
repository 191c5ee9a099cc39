#include "mesh/LoadRules.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "common/TextRules.h"

#include "mesh/GirderBuilder.h"

namespace velk {

namespace {

// The generated grid: NX columns of NY nodes, the plate of cell (ix, iy) and
// the longitudinal stiffener of segment ix on row iy numbered as the element
// grids number them.
struct Grid {
  Mesh& mesh;
  long NX = 0, NY = 0;

  explicit Grid(Mesh& m) : mesh(m) {
    Nodes& nodes = m.Nodes();
    NX = nodes.NumberNodesX();
    NY = nodes.NumberNodesY();
    if (NX < 2 || NY < 2 || nodes.Count() != NX * NY ||
        m.fourNodes().Count() != (NX - 1) * (NY - 1) ||
        m.twoNodes().Count() != (NX - 1) * NY + NX * (NY - 1))
      throw RuleRefused("the model has no girder grid with two end columns");
  }
  Nodeb& Node(long ix, long iy) const { return *Grid_Node(mesh.Nodes(), ix, iy); }
  // Thickness of a plate that exists, else 0.
  double PlateT(long ix, long iy) const {
    const fourNode& p = *mesh.fourNodes().Item(ix * (NY - 1) + iy + 1);
    return p.PropertyDefined ? p.Thickness : 0.0;
  }
  // Area of a longitudinal stiffener that exists, else 0.
  double StiffenerA(long ix, long iy) const {
    const twoNode& s = *mesh.twoNodes().Item(iy * (NX - 1) + ix + 1);
    return s.PropertyDefined ? double(s.Thickness) * s.width : 0.0;
  }
};

bool HasFlanges(const BeamShape& b) {
  for (Single v : {b.Top_Flange_W, b.Top_Flange_T, b.Bot_Flange_W, b.Bot_Flange_T, b.Top_Flange_WE,
                   b.Top_Flange_TE, b.Bot_Flange_WE, b.Bot_Flange_TE})
    if (v != 0) return true;
  return false;
}

void RequirePlate(const BeamShape& b, const char* what) {
  if (HasFlanges(b))
    throw RuleRefused(std::string(what) + " are for a plate without flanges (all flanges 0)");
}

void AddLoad(Nodeb& n, double fx, double fy) {
  n.XLoad = static_cast<Single>(n.XLoad + fx);
  n.YLoad = static_cast<Single>(n.YLoad + fy);
  n.UpdatePropertyDefined();
}

void Hold(Nodeb& n, bool x, bool y, bool z) {
  if (x) n.SetXTDir(1);
  if (y) n.SetYTDir(1);
  if (z) n.SetZTDir(1);
  n.UpdatePropertyDefined();
}

// One end section as the mesh idealises it: web strips between the nodes of
// the end column, with the thickness of their plates, and each flange's area
// lumped at its row.
struct EndSection {
  std::vector<double> y, strip; // node heights; strip j lies between nodes j and j + 1
  double bottom = 0, top = 0;   // flange areas
  double A = 0, yc = 0, I = 0;

  EndSection(const Grid& g, long ix) {
    const long cell = ix == 0 ? 0 : g.NX - 2;
    for (long j = 0; j < g.NY; ++j)
      y.push_back(g.Node(ix, j).ycoord);
    for (long j = 0; j + 1 < g.NY; ++j)
      strip.push_back(g.PlateT(cell, j));
    bottom = g.StiffenerA(cell, 0);
    top = g.StiffenerA(cell, g.NY - 1);
    double first = bottom * y.front() + top * y.back();
    A = bottom + top;
    for (std::size_t j = 0; j < strip.size(); ++j) {
      const double a = strip[j] * (y[j + 1] - y[j]);
      A += a;
      first += a * (y[j] + y[j + 1]) / 2;
    }
    if (!(A > 0)) return;
    yc = first / A;
    I = bottom * Square(y.front() - yc) + top * Square(y.back() - yc);
    for (std::size_t j = 0; j < strip.size(); ++j) {
      const double h = y[j + 1] - y[j];
      I += strip[j] * h * (h * h / 12 + Square((y[j] + y[j + 1]) / 2 - yc));
    }
  }
  static double Square(double v) { return v * v; }

  // The resultant at each node of the stress c0 + c1 (y - yc): the work-
  // equivalent share of each strip (exact for a linear stress, so the forces
  // carry the stress's own resultant and moment) plus the flange's area.
  std::vector<double> NodalForces(double c0, double c1) const {
    auto c = [&](double yy) { return c0 + c1 * (yy - yc); };
    std::vector<double> f(y.size(), 0.0);
    f.front() += bottom * c(y.front());
    f.back() += top * c(y.back());
    for (std::size_t j = 0; j < strip.size(); ++j) {
      const double th = strip[j] * (y[j + 1] - y[j]);
      f[j] += th * (2 * c(y[j]) + c(y[j + 1])) / 6;
      f[j + 1] += th * (c(y[j]) + 2 * c(y[j + 1])) / 6;
    }
    return f;
  }
};

// A compressive stress over both end sections, pushing each end into the
// girder: stress(section) gives c0 and c1 of c0 + c1 (y - yc).
template <class StressOf> void LoadEnds(Mesh& mesh, const char* what, StressOf stress) {
  const Grid g(mesh);
  const EndSection ends[2] = {EndSection(g, 0), EndSection(g, g.NX - 1)};
  for (const EndSection& s : ends)
    if (!(s.A > 0 && s.I > 0))
      throw RuleRefused(std::string(what) + " needs end sections of non-zero area");
  for (int e = 0; e < 2; ++e) {
    const auto [c0, c1] = stress(ends[e]);
    const std::vector<double> f = ends[e].NodalForces(c0, c1);
    const long ix = e == 0 ? 0 : g.NX - 1;
    const double inward = e == 0 ? 1.0 : -1.0;
    for (long j = 0; j < g.NY; ++j)
      AddLoad(g.Node(ix, j), inward * f[static_cast<std::size_t>(j)], 0.0);
  }
}

// The boundary of a plate swept anticlockwise, each segment's traction
// sigma n times its length and the thickness of its plate: a uniform traction
// half to each end, a linear one in its work-equivalent shares. sxx varies
// over the height of each end column from `bottom` to `top`.
void LoadEdges(Mesh& mesh, const BeamShape& b, double bottom, double top, double sxy,
               const char* what) {
  RequirePlate(b, what);
  const Grid g(mesh);
  struct Segment {
    long ix0, iy0, ix1, iy1, cellX, cellY;
  };
  std::vector<Segment> segments;
  for (long i = 0; i + 1 < g.NX; ++i)
    segments.push_back({i, 0, i + 1, 0, i, 0});
  for (long j = 0; j + 1 < g.NY; ++j)
    segments.push_back({g.NX - 1, j, g.NX - 1, j + 1, g.NX - 2, j});
  for (long i = g.NX - 1; i > 0; --i)
    segments.push_back({i, g.NY - 1, i - 1, g.NY - 1, i - 1, g.NY - 2});
  for (long j = g.NY - 1; j > 0; --j)
    segments.push_back({0, j, 0, j - 1, 0, j - 1});
  for (const Segment& s : segments)
    if (!(g.PlateT(s.cellX, s.cellY) > 0))
      throw RuleRefused(std::string(what) + " need a plate along the whole boundary");
  auto sxxAt = [&](long ix, double y) {
    if (bottom == top) return bottom;
    const double y0 = g.Node(ix, 0).ycoord, y1 = g.Node(ix, g.NY - 1).ycoord;
    return bottom + (top - bottom) * (y - y0) / (y1 - y0);
  };
  for (const Segment& s : segments) {
    Nodeb& a = g.Node(s.ix0, s.iy0);
    Nodeb& c = g.Node(s.ix1, s.iy1);
    // Outward normal times length, for an anticlockwise sweep.
    const double nx = double(c.ycoord) - a.ycoord, ny = double(a.xcoord) - c.xcoord;
    const double sa = sxxAt(s.ix0, a.ycoord), sc = sxxAt(s.ix1, c.ycoord);
    if (sa == sc) {
      const double t = g.PlateT(s.cellX, s.cellY) / 2;
      const double fx = t * (sa * nx + sxy * ny), fy = t * sxy * nx;
      AddLoad(a, fx, fy);
      AddLoad(c, fx, fy);
    } else {
      const double t = g.PlateT(s.cellX, s.cellY);
      const double shear = sxy * ny / 2, fy = t * sxy * nx / 2;
      AddLoad(a, t * (nx * (2 * sa + sc) / 6 + shear), fy);
      AddLoad(c, t * (nx * (sa + 2 * sc) / 6 + shear), fy);
    }
  }
}

std::string Number(double v) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", v);
  return text;
}

std::vector<std::string> Parts(const std::string& value) {
  std::vector<std::string> parts(1);
  for (char ch : value)
    if (ch == ':')
      parts.emplace_back();
    else
      parts.back() += ch;
  return parts;
}

std::optional<double> Optional(const std::vector<std::string>& parts, std::size_t i) {
  if (i >= parts.size() || parts[i].empty()) return std::nullopt;
  return TextToDouble(parts[i]);
}

} // namespace

void Apply_Fork_Supports(Mesh& mesh, const BeamShape&) {
  const Grid g(mesh);
  for (long ix : {0L, g.NX - 1})
    for (long j = 0; j < g.NY; ++j)
      Hold(g.Node(ix, j), false, false, true);
  Hold(g.Node(0, 0), true, true, true);
  Hold(g.Node(g.NX - 1, 0), false, true, true);
}

void Apply_Simple_Supports(Mesh& mesh, const BeamShape& b) {
  RequirePlate(b, "simple supports");
  const Grid g(mesh);
  for (long i = 0; i < g.NX; ++i)
    for (long j = 0; j < g.NY; ++j)
      if (i == 0 || j == 0 || i == g.NX - 1 || j == g.NY - 1)
        Hold(g.Node(i, j), false, false, true);
  Hold(g.Node(0, 0), true, true, true);
  Hold(g.Node(g.NX - 1, 0), false, true, true);
}

void Apply_End_Moment(Mesh& mesh, const BeamShape&, double M) {
  LoadEnds(mesh, "an end moment", [M](const EndSection& s) { return std::pair(0.0, M / s.I); });
}

void Apply_Axial_Load(Mesh& mesh, const BeamShape&, double P) {
  LoadEnds(mesh, "an axial load", [P](const EndSection& s) { return std::pair(P / s.A, 0.0); });
}

void Apply_Point_Load(Mesh& mesh, const BeamShape& b, double P, std::optional<double> x,
                      bool top) {
  const Grid g(mesh);
  const double at = x.value_or(b.Length / 2.0), tolerance = 1e-5 * std::fabs(b.Length);
  const long row = top ? g.NY - 1 : 0;
  double before = -HUGE_VAL, after = HUGE_VAL;
  for (long i = 0; i < g.NX; ++i) {
    Nodeb& n = g.Node(i, row);
    if (std::fabs(n.xcoord - at) <= tolerance) {
      AddLoad(n, 0.0, -P);
      return;
    }
    if (n.xcoord < at) before = std::max(before, double(n.xcoord));
    if (n.xcoord > at) after = std::min(after, double(n.xcoord));
  }
  if (!x)
    throw RuleRefused("a point load needs a node at mid-length (an even number of "
                      "longitudinal elements)");
  if (before == -HUGE_VAL || after == HUGE_VAL)
    throw RuleRefused("a point load at x = " + Number(at) + " lies beyond the girder");
  throw RuleRefused("a point load at x = " + Number(at) + " needs a node there; the nearest are at " +
                    Number(before) + " and " + Number(after));
}

void Apply_Patch_Load(Mesh& mesh, const BeamShape& b, double F, double c,
                      std::optional<double> x) {
  const Grid g(mesh);
  if (!(c > 0)) throw RuleRefused("a patch load needs a length above 0");
  const double middle = x.value_or(b.Length / 2.0), from = middle - c / 2, to = middle + c / 2;
  const long row = g.NY - 1;
  const double first = g.Node(0, row).xcoord, last = g.Node(g.NX - 1, row).xcoord;
  const double tolerance = 1e-5 * std::fabs(last - first);
  if (from < first - tolerance || to > last + tolerance)
    throw RuleRefused("a patch load of length " + Number(c) + " at x = " + Number(middle) +
                      " reaches beyond the girder (" + Number(first) + " to " + Number(last) + ")");
  // F / c over [from, to], shared by the linear shape functions of each top
  // segment it covers.
  const double q = F / c;
  for (long i = 0; i + 1 < g.NX; ++i) {
    Nodeb &a = g.Node(i, row), &e = g.Node(i + 1, row);
    const double xa = a.xcoord, xe = e.xcoord, h = xe - xa;
    const double p0 = std::max(from, xa), p1 = std::min(to, xe);
    if (!(p1 > p0) || !(h > 0)) continue;
    const double fa = q * ((xe - p0) * (xe - p0) - (xe - p1) * (xe - p1)) / (2 * h);
    const double fe = q * ((p1 - xa) * (p1 - xa) - (p0 - xa) * (p0 - xa)) / (2 * h);
    AddLoad(a, 0.0, -fa);
    AddLoad(e, 0.0, -fe);
  }
}

void Apply_Line_Load(Mesh& mesh, const BeamShape&, double q) {
  const Grid g(mesh);
  std::vector<double> share(static_cast<std::size_t>(g.NX), 0.0);
  for (long i = 0; i + 1 < g.NX; ++i) {
    const double half = (double(g.Node(i + 1, g.NY - 1).xcoord) - g.Node(i, g.NY - 1).xcoord) / 2;
    share[static_cast<std::size_t>(i)] += half;
    share[static_cast<std::size_t>(i + 1)] += half;
  }
  for (long i = 0; i < g.NX; ++i)
    AddLoad(g.Node(i, g.NY - 1), 0.0, -q * share[static_cast<std::size_t>(i)]);
}

void Apply_Edge_Stress(Mesh& mesh, const BeamShape& b, double S1, double S2) {
  LoadEdges(mesh, b, -S1, -S2, 0.0, "edge stresses");
}

void Apply_Edge_Compression(Mesh& mesh, const BeamShape& b, double S) {
  Apply_Edge_Stress(mesh, b, S, S);
}

void Apply_Edge_Shear(Mesh& mesh, const BeamShape& b, double T) {
  LoadEdges(mesh, b, 0.0, 0.0, T, "edge shears");
}

const std::vector<std::string>& Rule_Options() {
  static const std::vector<std::string> options = {"--supports", "--moment",  "--axial",
                                                   "--point",    "--udl",     "--edge-sx",
                                                   "--edge-sxy", "--patch"};
  return options;
}

std::string Rule_Value_Problem(const std::string& option, const std::string& value) {
  const std::vector<std::string> parts = Parts(value);
  auto numbers = [&](std::size_t least, std::size_t most, std::size_t mayBeEmpty) {
    if (parts.size() < least || parts.size() > most) return false;
    for (std::size_t i = 0; i < parts.size(); ++i)
      if (!IsNumeric(parts[i]) && !(i >= mayBeEmpty && parts[i].empty())) return false;
    return true;
  };
  if (option == "--supports")
    return value == "fork" || value == "simple" ? "" : "--supports takes fork or simple";
  if (option == "--point") {
    const bool side = parts.size() < 3 || parts[2] == "top" || parts[2] == "bottom";
    const std::vector<std::string> front(parts.begin(), parts.begin() + std::min<std::size_t>(2, parts.size()));
    const bool ok = side && parts.size() <= 3 && IsNumeric(front[0]) &&
                    (front.size() < 2 || IsNumeric(front[1]) || (front[1].empty() && parts.size() == 3));
    return ok ? "" : "--point takes P[:x[:top|bottom]]";
  }
  if (option == "--edge-sx") return numbers(1, 2, 2) ? "" : "--edge-sx takes S or S1:S2";
  if (option == "--patch") return numbers(2, 3, 3) ? "" : "--patch takes F:c[:x]";
  if (std::find(Rule_Options().begin(), Rule_Options().end(), option) == Rule_Options().end())
    return "unknown rule " + option;
  return IsNumeric(value) ? "" : option + " takes a number";
}

void Apply_Rule(Mesh& mesh, const BeamShape& b, const std::string& option,
                const std::string& value) {
  if (const std::string problem = Rule_Value_Problem(option, value); !problem.empty())
    throw RuleRefused(problem);
  if (option == "--supports")
    return value == "fork" ? Apply_Fork_Supports(mesh, b) : Apply_Simple_Supports(mesh, b);
  const std::vector<std::string> parts = Parts(value);
  const double v = TextToDouble(parts[0]);
  if (option == "--moment")
    Apply_End_Moment(mesh, b, v);
  else if (option == "--axial")
    Apply_Axial_Load(mesh, b, v);
  else if (option == "--point")
    Apply_Point_Load(mesh, b, v, Optional(parts, 1), parts.size() < 3 || parts[2] == "top");
  else if (option == "--udl")
    Apply_Line_Load(mesh, b, v);
  else if (option == "--edge-sx")
    Apply_Edge_Stress(mesh, b, v, parts.size() == 2 ? TextToDouble(parts[1]) : v);
  else if (option == "--edge-sxy")
    Apply_Edge_Shear(mesh, b, v);
  else if (option == "--patch")
    Apply_Patch_Load(mesh, b, v, TextToDouble(parts[1]), Optional(parts, 2));
}

} // namespace velk
