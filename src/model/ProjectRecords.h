#pragma once
// The records of a project file (.inp) after its two header lines, in the
// order the file holds them: written in version 1.4, read in 1.4 and 1.3.
#include "model/Analysis.h"
#include "model/BeamShape.h"
#include "model/Material.h"
#include "model/Mesh.h"

namespace velk {

class FieldReader;
class FieldWriter;

void Store_Project1_4(FieldWriter& out, const Analysis& analysis, const BeamShape& shape,
                      Mesh& mesh, const Material& material);

// False, with nothing read, when the version is neither 1.3 nor 1.4. A 1.3
// file holds no girder parameters: `shape` keeps what it has.
bool Read_Project(FieldReader& in, float version, Analysis& analysis, BeamShape& shape, Mesh& mesh,
                  Material& material);

} // namespace velk
