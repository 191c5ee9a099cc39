#pragma once
// How much memory a large allocation may still take, asked before it is
// made: a run that cannot fit is refused in a moment with its size, instead of
// paging the machine to a halt or dying half way.
#include <cstdint>
#include <optional>
#include <string>

namespace velk {

// The bytes this process can still obtain: the least of the memory the system
// reports available, the room left under the process's address-space and
// data limits, and the room left in its control group. Empty when none of
// these can be read (then nothing is refused).
std::optional<std::uint64_t> MemoryAvailable();

// A size for a message: "850 MB", "3.9 GB" (decimal units, as disks and
// system monitors count them).
std::string ByteSizeText(std::uint64_t bytes);

} // namespace velk
