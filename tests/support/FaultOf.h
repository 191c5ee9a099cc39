#pragma once
#include "common/Fault.h"

namespace velk::test {

// The number of the fault a call raises, or 0 when it raises none.
template <class Fn> int FaultOf(Fn&& fn) {
  try {
    fn();
  } catch (const Fault& f) {
    return f.number();
  }
  return 0;
}

} // namespace velk::test
