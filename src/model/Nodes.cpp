#include "model/Nodes.h"

#include "common/TextFile.h"
#include "model/CompactNumbering.h"
#include "model/fourNodes.h"
#include "model/twoNodes.h"

namespace velk {

std::shared_ptr<Nodeb> Nodes::Add(Single pxcoord, Single pycoord, Long ID,
                                  const std::string& sKey) {
  auto n = std::make_shared<Nodeb>();
  n->xcoord = pxcoord;
  n->ycoord = pycoord;
  n->ID = ID;
  mCol.Add(n, sKey);
  return n;
}

void Nodes::Calculate_MaxMinStress(Single& maxStress, Single& minStress, Integer opt) const {
  maxStress = -1E+37f;
  minStress = 1E+37f;
  if (opt < 0 || opt > 3) return;
  for (const auto& n : mCol) {
    if (n->vID == 0) continue;
    Single v = opt == 0 ? n->Sx : opt == 1 ? n->Sy : opt == 2 ? n->SXY : n->Mises;
    if (v > maxStress) maxStress = v;
    if (v < minStress) minStress = v;
  }
}

void Nodes::GeneratevID(const twoNodes& stiffeners, const fourNodes& plates) {
  const std::vector<bool> connected = Touched_Nodes(
      *this, stiffeners, plates, Defined_Flags(stiffeners), Defined_Flags(plates));
  const CompactNumbers numbers = Number_Compact(connected);
  for (long i = 1; i <= Count(); ++i) {
    Nodeb& n = *Item(i);
    n.Connected = ToBoolean(connected[static_cast<std::size_t>(i - 1)]);
    n.vID = numbers.vID[static_cast<std::size_t>(i - 1)];
  }
  MaxvID = numbers.MaxvID;
}

void Nodes::GenerateUvID() {
  for (const auto& n : mCol)
    n->UvID = 0;
  for (long i = 1; i <= Count(); ++i) {
    Long v = Item(i)->vID;
    if (v != 0) Item(v)->UvID = static_cast<Long>(i);
  }
}

void Nodes::ReadNodes(FieldReader& in, bool version14) {
  NumberNodesX_ = in.Integer();
  NumberNodesY_ = in.Integer();
  MaxvID = in.Long();
  // The count comes from the header; nodes are added one by one as records
  // arrive, so a header the file cannot back ends at the first missing field.
  // A record that breaks off is not kept: the model holds whole records only.
  long count = static_cast<long>(NumberNodesX_) * NumberNodesY_;
  for (long i = 1; i <= count; ++i) {
    auto n = std::make_shared<Nodeb>();
    if (version14)
      n->ReadData1_4(in);
    else
      n->ReadData(in);
    mCol.Add(n, std::to_string(i));
  }
}

void Nodes::ReadData(FieldReader& in) {
  ReadNodes(in, false);
}
void Nodes::ReadData1_4(FieldReader& in) {
  ReadNodes(in, true);
}

void Nodes::StoreData1_4(FieldWriter& out) const {
  out.Integer(NumberNodesX_);
  out.Integer(NumberNodesY_);
  out.Integer(MaxvID);
  out.EndLine();
  for (const auto& n : mCol)
    n->StoreData1_4(out);
}

} // namespace velk
