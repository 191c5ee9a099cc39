#include "reports/GridFile.h"

#include "common/TextFile.h"
#include "model/Analysis.h"
#include "model/Nodes.h"
#include "reports/ReportFile.h"

namespace velk {

void Write_GridFile_To(OutFile& out, const Analysis& a, Nodes& nodes) {
  out.Put("[VELK 1.4 Grid Out File]\r\n");
  Write_Run_Head(out, a, "Eigenvalue: ");
  out.Put("[Node-DisplacementGrid]\r\nUP\r\n");
  const long nx = nodes.NumberNodesX(), ny = nodes.NumberNodesY();
  std::string row;
  for (long j = ny; j >= 1; --j) {
    row.clear();
    for (long i = 1; i <= nx; ++i) {
      const Nodeb& n = *nodes.Item(j + (i - 1) * ny);
      // A node outside the structure shows zero, whatever its shape value holds.
      row += Format(n.vID != 0 ? n.zcoord : 0.0f, "Scientific");
      row += ZonePad(row.size());
    }
    // Each grid row ends with a carriage return of its own before the line end.
    out.Put(row);
    out.Put("\r\r\n");
  }
  out.Put("DOWN\r\n");
}

} // namespace velk
