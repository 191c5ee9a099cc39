#include "reports/PropertyTables.h"

#include "common/Fault.h"
#include "common/TextRules.h"
#include "model/Mesh.h"

namespace velk {

const char* const kPropertyTabCaptions[PropertyTabs::Count] = {
    "Plate", "Stiffener", "Coordinate", "Boundary", "Brace", "Load", "Stress", "Buckled Shape"};

namespace {

constexpr const char* kEnd = "\r\n";

std::string ID5(long value) {
  return Format(value, "00000");
}
std::string Sci(Single value) {
  return Format(value, "Scientific");
}
std::string Flag(Boolean value) {
  return value ? "1" : "0";
}
std::string B(int blanks) {
  return std::string(static_cast<std::size_t>(blanks), ' ');
}

// The row tests look at the stored values against exact zero, not at vID.
std::string Show_Plate(Mesh& m) {
  std::string t = "  ID " + B(2) + " Thick. " + B(2) + "  N1 " + B(2) + "  N2 " + B(2) + "  N3 " +
                  B(2) + "  N4 " + B(2) + kEnd;
  for (const auto& p : m.fourNodes())
    if (p->Thickness != 0)
      t += ID5(p->vID) + B(2) + Sci(p->Thickness) + B(2) + ID5(p->Node1->vID) + B(2) +
           ID5(p->Node2->vID) + B(2) + ID5(p->Node3->vID) + B(2) + ID5(p->Node4->vID) + kEnd;
  return t;
}

std::string Show_Stiffener(Mesh& m) {
  std::string t =
      "  ID " + B(5) + " Width  " + B(5) + " Thick. " + "  N1 " + B(5) + "  N2 " + B(5) + kEnd;
  for (const auto& s : m.twoNodes())
    if (s->Thickness != 0 || s->width != 0)
      t += ID5(s->vID) + B(5) + Sci(s->width) + B(5) + Sci(s->Thickness) + B(5) +
           ID5(s->Node1->vID) + B(5) + ID5(s->Node2->vID) + kEnd;
  return t;
}

std::string Show_Coordinate(Mesh& m) {
  std::string t = "  ID " + B(5) + " X Coord" + B(5) + " Y Coord" + B(5) + kEnd;
  for (const auto& n : m.Nodes())
    if (n->vID != 0) t += ID5(n->vID) + B(5) + Sci(n->xcoord) + B(5) + Sci(n->ycoord) + B(5) + kEnd;
  return t;
}

std::string Show_Boundary(Mesh& m) {
  std::string t = "  ID " + B(2) + "X" + B(2) + "Y" + B(2) + "Z" + B(2) + "XR" + B(1) + "YR" +
                  B(1) + " X Value" + B(1) + " Y Value" + kEnd;
  for (const auto& n : m.Nodes())
    if (n->XTDir() || n->YTDir() || n->ZTDir() || n->XRDir() || n->YRDir())
      t += ID5(n->vID) + B(2) + Flag(n->XTDir()) + B(2) + Flag(n->YTDir()) + B(2) +
           Flag(n->ZTDir()) + B(2) + Flag(n->XRDir()) + B(2) + Flag(n->YRDir()) + B(2) +
           Sci(n->XTDirValue) + B(2) + Sci(n->YTDirValue) + B(2) + kEnd;
  return t;
}

std::string Show_Brace(Mesh& m) {
  std::string t = "  ID " + B(2) + "X  Stiff" + B(2) + "Y  Stiff" + B(2) + "Z  Stiff" + B(2) +
                  "XR Stiff" + B(2) + "YR Stiff" + B(2) + kEnd;
  for (const auto& n : m.Nodes())
    if (n->xtstiff != 0 || n->YTStiff != 0 || n->ZTStiff != 0 || n->XRStiff != 0 ||
        n->YRStiff != 0) {
      t += ID5(n->vID) + B(2);
      for (Single k : {n->xtstiff, n->YTStiff, n->ZTStiff, n->XRStiff, n->YRStiff})
        t += Sci(k) + B(2);
      t += kEnd;
    }
  return t;
}

std::string Show_Load(Mesh& m) {
  std::string t = "  ID " + B(5) + " X Load " + B(5) + " Y Load " + kEnd;
  for (const auto& n : m.Nodes())
    if (n->XLoad != 0 || n->YLoad != 0)
      t += ID5(n->vID) + B(5) + Sci(n->XLoad) + B(5) + Sci(n->YLoad) + B(5) + kEnd;
  return t;
}

std::string Show_Stress(Mesh& m) {
  std::string t = std::string("Nodal Stress ----------") + kEnd + "  Node " + B(2) + "  SX " +
                  B(2) + "  SY " + B(2) + "  SXY " + B(2) + " Mises" + kEnd;
  for (const auto& n : m.Nodes())
    if (n->vID != 0)
      t += ID5(n->vID) + B(2) + Sci(n->Sx) + B(2) + Sci(n->Sy) + B(2) + Sci(n->SXY) + B(2) +
           Sci(n->Mises) + kEnd;
  t += std::string(kEnd) + kEnd + "Stiffener Stress-------" + kEnd + "   ID  " + " Stress" + kEnd;
  for (const auto& s : m.twoNodes())
    if (s->vID != 0) t += ID5(s->vID) + B(2) + Sci(s->Stress) + kEnd;
  return t;
}

std::string Show_Buckled(Mesh& m) {
  std::string t =
      "  Node " + B(2) + " Z Value" + B(2) + " X Disp." + B(2) + " Y Disp." + B(2) + kEnd;
  for (const auto& n : m.Nodes())
    if (n->vID != 0)
      t += ID5(n->vID) + B(2) + Sci(n->zcoord) + B(2) + Sci(n->InPDispX) + B(2) + Sci(n->InPDispY) +
           kEnd;
  return t;
}

} // namespace

std::string Property_Table(int tab, Mesh& m) {
  switch (tab) {
  case PropertyTabs::Plate:
    return Show_Plate(m);
  case PropertyTabs::Stiffener:
    return Show_Stiffener(m);
  case PropertyTabs::Coordinate:
    return Show_Coordinate(m);
  case PropertyTabs::Boundary:
    return Show_Boundary(m);
  case PropertyTabs::Brace:
    return Show_Brace(m);
  case PropertyTabs::Load:
    return Show_Load(m);
  case PropertyTabs::Stress:
    return Show_Stress(m);
  case PropertyTabs::Buckled:
    return Show_Buckled(m);
  default:
    Raise(errSubscript, "no such tab");
  }
}

} // namespace velk
