#pragma once
// The text fields of the girder dialog by name, with the caption each shows:
// what a sweep varies, and how its plots name it.
#include <string>
#include <vector>

#include "forms/frmBeamShape.h"

namespace velk {

struct GirderField {
  const char* name;    // "txtBL"
  const char* caption; // "Beam Length", with its group where captions repeat
  std::string frmBeamShape::*text;
};

// In the dialog's order: End 1, End 2, material, mesh.
const std::vector<GirderField>& Girder_Fields();

// "Beam Length (txtBL)": the caption and, in brackets, the name the batch
// tool takes; the name alone for one that is not a field.
std::string Field_Label(const std::string& name);

} // namespace velk
