#pragma once
// The check of a model before a run: what a project file can hold but the
// dialogs never make, and what would give a wrong buckling load without a
// word. Every front end words the answer itself.
#include <optional>
#include <string>

namespace velk {

class Mesh;
struct Material;

struct ModelProblem {
  std::string text; // a lowercase clause naming the object and its value
  // The stored compact numbering is out of date; renumbering repairs it.
  bool numbering = false;
};

// The first problem, in this order: the material, negative sections, the
// elements' defined flags against their sections, the compact numbering,
// then the shape of each plate that takes part. The model is not changed.
std::optional<ModelProblem> Check_Model(const Mesh& mesh, const Material& material);

} // namespace velk
