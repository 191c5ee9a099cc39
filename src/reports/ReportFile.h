#pragma once
// The report file (.vrp): the whole model and its results in headed tables of
// print zones, for the engineer to read; it is never read back.
#include <string>
#include <string_view>

namespace velk {

struct Analysis;
class Mesh;
class OutFile;

constexpr const char* kReportFilter = "All Files (*.*)|*.*|VELK Report Files(*.vrp)|*.vrp";

// The title, note, run and the two eigenvalue lines that the report and the
// grid file begin with; only the eigenvalue's label differs between them.
void Write_Run_Head(OutFile& out, const Analysis& a, std::string_view eigenvalueLabel);

// The report of the model as it stands: nothing renumbered, no check that a
// run has taken place.
void Write_Report_To(OutFile& out, const Analysis& a, Mesh& m);

} // namespace velk
