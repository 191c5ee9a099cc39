#include "reports/ReportFile.h"

#include "common/TextFile.h"
#include "model/Analysis.h"
#include "model/Mesh.h"

#include <vector>

namespace velk {

namespace {

std::string Sci(Single value) {
  return Format(value, "Scientific");
}
std::string Flag(Boolean value) {
  return value ? "1" : "0";
}

void Put(OutFile& out, const std::string& line) {
  out.Put(line);
  out.Put("\r\n");
}

void Section(OutFile& out, const char* name, std::initializer_list<std::string_view> heads) {
  Put(out, name);
  Put(out, ZoneLine(heads));
}

bool AnyRestraint(const Nodeb& n) {
  return n.XTDir() || n.YTDir() || n.ZTDir() || n.XRDir() || n.YRDir();
}
// Springs and loads count when not exactly zero: a tiny value is still listed.
bool AnySpring(const Nodeb& n) {
  return n.xtstiff != 0 || n.YTStiff != 0 || n.ZTStiff != 0 || n.XRStiff != 0 || n.YRStiff != 0;
}
bool AnyLoad(const Nodeb& n) {
  return n.XLoad != 0 || n.YLoad != 0;
}

void WriteNodeTables(OutFile& out, Nodes& nodes) {
  Section(out, "[Boundaries]", {"Node#", "X", "Y", "Z", "XR", "YR", " X_Value", " Y_Value"});
  for (const auto& n : nodes)
    if (AnyRestraint(*n))
      Put(out,
          ZoneLine({PrintInteger(n->vID), Flag(n->XTDir()), Flag(n->YTDir()), Flag(n->ZTDir()),
                    Flag(n->XRDir()), Flag(n->YRDir()), Sci(n->XTDirValue), Sci(n->YTDirValue)}));
  Section(out, "[Braces]", {"Node#", "X_Stiff", "Y_Stiff", "Z_Stiff", "XR_Stiff", "YR_Stiff"});
  for (const auto& n : nodes)
    if (AnySpring(*n))
      Put(out, ZoneLine({PrintInteger(n->vID), Sci(n->xtstiff), Sci(n->YTStiff), Sci(n->ZTStiff),
                         Sci(n->XRStiff), Sci(n->YRStiff)}));
  Section(out, "[Loads]", {"Node#", "X_Load", "Y_Load"});
  for (const auto& n : nodes)
    if (AnyLoad(*n)) Put(out, ZoneLine({PrintInteger(n->vID), Sci(n->XLoad), Sci(n->YLoad)}));
}

} // namespace

void Write_Run_Head(OutFile& out, const Analysis& a, std::string_view eigenvalueLabel) {
  Put(out, ZoneLine({"Title: ", a.Title}));
  Put(out, ZoneLine({"Note:  ", a.Discription}));
  Put(out, ZoneLine({"Run_ID:", a.RunID}));
  Put(out, ZoneLine({"Estimated_Eigenvalue: ", PrintSingle(a.EigenValueEstimation)}));
  Put(out, ZoneLine({eigenvalueLabel, PrintSingle(a.EigenValue)}));
}

void Write_Report_To(OutFile& out, const Analysis& a, Mesh& m) {
  Nodes& nodes = m.Nodes();
  Put(out, "[VELK 1.4 Report File]");
  Write_Run_Head(out, a, "Eigenvalue          : ");
  if (a.IGSTF) Put(out, "Torsional Geometric Stiffness Option is Used");
  if (a.ISHEAR) Put(out, "Approximate Shear Distortion Option is Used");

  Section(out, "[Nodes]", {"Node#", "X Coord", "Y Coord"});
  for (const auto& n : nodes)
    if (n->vID != 0) Put(out, ZoneLine({PrintInteger(n->vID), Sci(n->xcoord), Sci(n->ycoord)}));
  Section(out, "[Plates]", {"Plate#", "Thickness", "Node1", "Node2", "Node3", "Node4"});
  for (const auto& p : m.fourNodes())
    if (p->vID != 0)
      Put(out, ZoneLine({PrintInteger(p->vID), Sci(p->Thickness), PrintInteger(p->Node1->vID),
                         PrintInteger(p->Node2->vID), PrintInteger(p->Node3->vID),
                         PrintInteger(p->Node4->vID)}));
  Section(out, "[Stiffeners]", {"Stiffener#", "Width", "Thickness", "Node1", "Node2"});
  for (const auto& s : m.twoNodes())
    if (s->vID != 0)
      Put(out, ZoneLine({PrintInteger(s->vID), Sci(s->width), Sci(s->Thickness),
                         PrintInteger(s->Node1->vID), PrintInteger(s->Node2->vID)}));
  WriteNodeTables(out, nodes);

  Section(out, "[Stress_Nodes]", {"Node#", "Sx", "Sy", "Sxy"});
  for (const auto& n : nodes)
    if (n->vID != 0)
      Put(out, ZoneLine({PrintInteger(n->vID), Sci(n->Sx), Sci(n->Sy), Sci(n->SXY)}));
  Section(out, "[Stress_Stiffeners]", {"Stiffener#", "Stress"});
  for (const auto& s : m.twoNodes())
    if (s->vID != 0) Put(out, ZoneLine({PrintInteger(s->vID), Sci(s->Stress)}));
  Section(out, "[Displacements]", {"Node#", "InpDispX", "InpDispY", "Normalized Z Disp."});
  for (const auto& n : nodes)
    if (n->vID != 0)
      Put(out,
          ZoneLine({PrintInteger(n->vID), Sci(n->InPDispX), Sci(n->InPDispY), Sci(n->zcoord)}));
}

} // namespace velk
