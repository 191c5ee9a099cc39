#include "reports/VtuFile.h"

#include "common/Fault.h"
#include "common/TextFile.h"
#include "model/Mesh.h"
#include "model/Nodes.h"
#include "model/fourNodes.h"
#include "model/twoNodes.h"

#include <array>
#include <functional>
#include <string>

namespace velk {

namespace {

using Corners = std::array<long, 4>; // 0-based point numbers

// The generator's corners run anticlockwise, but a mirrored or hand-edited
// mesh may turn a cell over; viewers expect one winding for their normals.
Corners AnticlockwiseCorners(const fourNode& p) {
  const std::array<const Nodeb*, 4> n = {p.Node1.get(), p.Node2.get(), p.Node3.get(),
                                         p.Node4.get()};
  double twiceArea = 0;
  for (int k = 0; k < 4; ++k) {
    const Nodeb& a = *n[k];
    const Nodeb& b = *n[(k + 1) % 4];
    twiceArea += double(a.xcoord) * b.ycoord - double(b.xcoord) * a.ycoord;
  }
  Corners c;
  for (int k = 0; k < 4; ++k)
    c[k] = n[k]->ID - 1;
  if (twiceArea < 0) std::swap(c[1], c[3]);
  return c;
}

class VtuWriter {
public:
  explicit VtuWriter(OutFile& out) : out_(out) {}

  void Open(const char* tag, const std::string& attributes = {}) {
    Line("<" + std::string(tag) + attributes + ">");
    depth_ += 2;
  }
  void Close(const char* tag) {
    depth_ -= 2;
    Line("</" + std::string(tag) + ">");
  }
  void Line(const std::string& text) {
    out_.Put(std::string(depth_, ' '));
    out_.Put(text);
    out_.Put("\n");
  }
  // A data array of `rows` tuples, one tuple to a line.
  void Array(const std::string& type, const std::string& name, int components, long rows,
             const std::function<std::string(long)>& row) {
    std::string head = " type=\"" + type + "\"";
    if (!name.empty()) head += " Name=\"" + name + "\"";
    if (components > 1) head += " NumberOfComponents=\"" + std::to_string(components) + "\"";
    Open("DataArray", head + " format=\"ascii\"");
    for (long i = 0; i < rows; ++i)
      Line(row(i));
    Close("DataArray");
  }

private:
  OutFile& out_;
  std::size_t depth_ = 0;
};

std::string Numbers(std::initializer_list<Single> values) {
  std::string s;
  for (Single v : values) {
    if (!s.empty()) s += ' ';
    s += SingleToExactText(v);
  }
  return s;
}

} // namespace

void Write_Vtu_To(OutFile& out, Mesh& mesh, const std::vector<ModeShape>& extraModes) {
  Nodes& nodes = mesh.Nodes();
  const long nodeCount = nodes.Count();
  for (const ModeShape& m : extraModes)
    if (static_cast<long>(m.size()) != nodeCount)
      Raise(errSubscript, "a mode shape needs one value per node");

  std::vector<const fourNode*> plates;
  for (const auto& p : mesh.fourNodes())
    if (IsTrue(p->PropertyDefined)) plates.push_back(p.get());
  std::vector<const twoNode*> stiffeners;
  for (const auto& s : mesh.twoNodes())
    if (IsTrue(s->PropertyDefined)) stiffeners.push_back(s.get());
  const long cellCount = static_cast<long>(plates.size() + stiffeners.size());

  // A node outside the structure shows no result, whatever its fields hold
  // from an earlier run.
  auto result = [&](long i, Single Nodeb::*field) {
    const Nodeb& n = *nodes.Item(i + 1);
    return n.vID != 0 ? n.*field : 0.0f;
  };
  auto scalar = [&](Single Nodeb::*field) {
    return [&, field](long i) { return SingleToExactText(result(i, field)); };
  };

  VtuWriter w(out);
  w.Line("<?xml version=\"1.0\"?>");
  w.Open("VTKFile", " type=\"UnstructuredGrid\" version=\"0.1\" byte_order=\"LittleEndian\"");
  w.Open("UnstructuredGrid");
  w.Open("Piece", " NumberOfPoints=\"" + std::to_string(nodeCount) + "\" NumberOfCells=\"" +
                      std::to_string(cellCount) + "\"");

  w.Open("PointData", " Scalars=\"Sx\" Vectors=\"Mode1\"");
  w.Array("Float32", "InPlaneDisplacement", 3, nodeCount, [&](long i) {
    return Numbers({result(i, &Nodeb::InPDispX), result(i, &Nodeb::InPDispY), 0.0f});
  });
  w.Array("Float32", "Sx", 1, nodeCount, scalar(&Nodeb::Sx));
  w.Array("Float32", "Sy", 1, nodeCount, scalar(&Nodeb::Sy));
  w.Array("Float32", "Sxy", 1, nodeCount, scalar(&Nodeb::SXY));
  w.Array("Float32", "Mises", 1, nodeCount, scalar(&Nodeb::Mises));
  w.Array("Float32", "Mode1", 3, nodeCount, [&](long i) {
    return Numbers({0.0f, 0.0f, result(i, &Nodeb::zcoord)});
  });
  for (std::size_t k = 0; k < extraModes.size(); ++k) {
    const ModeShape& m = extraModes[k];
    w.Array("Float32", "Mode" + std::to_string(k + 2), 3, nodeCount, [&](long i) {
      return Numbers({0.0f, 0.0f, nodes.Item(i + 1)->vID != 0 ? m[std::size_t(i)] : 0.0f});
    });
  }
  w.Close("PointData");

  const long plateCount = static_cast<long>(plates.size());
  auto stiffener = [&](long c) { return stiffeners[std::size_t(c - plateCount)]; };
  w.Open("CellData", " Scalars=\"Thickness\"");
  w.Array("Float32", "Thickness", 1, cellCount, [&](long c) {
    return SingleToExactText(c < plateCount ? plates[std::size_t(c)]->Thickness
                                            : stiffener(c)->Thickness);
  });
  w.Array("Float32", "Width", 1, cellCount,
          [&](long c) { return SingleToExactText(c < plateCount ? 0.0f : stiffener(c)->width); });
  w.Array("Float32", "StiffenerStress", 1, cellCount,
          [&](long c) { return SingleToExactText(c < plateCount ? 0.0f : stiffener(c)->Stress); });
  w.Close("CellData");

  w.Open("Points");
  w.Array("Float32", "", 3, nodeCount, [&](long i) {
    const Nodeb& n = *nodes.Item(i + 1);
    return Numbers({n.xcoord, n.ycoord, 0.0f});
  });
  w.Close("Points");

  w.Open("Cells");
  w.Array("Int64", "connectivity", 1, cellCount, [&](long c) {
    if (c < plateCount) {
      const Corners k = AnticlockwiseCorners(*plates[std::size_t(c)]);
      return std::to_string(k[0]) + ' ' + std::to_string(k[1]) + ' ' + std::to_string(k[2]) + ' ' +
             std::to_string(k[3]);
    }
    const twoNode& s = *stiffener(c);
    return std::to_string(s.Node1->ID - 1) + ' ' + std::to_string(s.Node2->ID - 1);
  });
  w.Array("Int64", "offsets", 1, cellCount, [&](long c) {
    return std::to_string(c < plateCount ? 4 * (c + 1) : 4 * plateCount + 2 * (c + 1 - plateCount));
  });
  w.Array("UInt8", "types", 1, cellCount,
          [&](long c) { return std::to_string(c < plateCount ? kVtkQuad : kVtkLine); });
  w.Close("Cells");

  w.Close("Piece");
  w.Close("UnstructuredGrid");
  w.Close("VTKFile");
}

} // namespace velk
