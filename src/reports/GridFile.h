#pragma once
// The displacement grid file (.txt): the buckled shape as a table with the
// shape of the node grid, top row of the girder first.
namespace velk {

struct Analysis;
class Nodes;
class OutFile;

constexpr const char* kGridFilter = "All Files (*.*)|*.*|VELK Grid Out Files(*.txt)|*.txt";

void Write_GridFile_To(OutFile& out, const Analysis& a, Nodes& nodes);

} // namespace velk
