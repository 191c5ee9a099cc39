#pragma once
// `velk-batch sweep`: a buckling load as a curve over one field of the girder
// dialog, one generated and run girder for each value.
#include <string>
#include <vector>

namespace velk::batch {

int Sweep(const std::vector<std::string>& args);

} // namespace velk::batch
