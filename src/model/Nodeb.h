#pragma once
#include "common/TextRules.h"

namespace velk {

class FieldReader;
class FieldWriter;

// One point of the mesh: what the user puts on it (restraints, springs, loads)
// and what the analysis leaves on it (displacements, buckled shape, stresses).
class Nodeb {
public:
  Single xcoord = 0;
  Single ycoord = 0;
  Single zcoord = 0; // normalised out-of-plane displacement of the buckled shape
  // The out-of-plane shape of a further mode while the view shows it in place
  // of zcoord; never saved.
  Single ShownZ = 0;
  Single InPDispX = 0;
  Single InPDispY = 0;
  Single XTDirValue = 0;
  Single YTDirValue = 0;
  Single xtstiff = 0;
  Single YTStiff = 0;
  Single ZTStiff = 0;
  Single XRStiff = 0;
  Single YRStiff = 0;
  Single XLoad = 0;
  Single YLoad = 0;
  Single Sx = 0;
  Single Sy = 0;
  Single SXY = 0;
  Single Mises = 0;
  Integer NCP = 0;
  Long ID = 0;
  Long vID = 0;
  Long UvID = 0;
  Boolean Connected = vbFalse;

  // The restraint flags store -1 for any non-zero input.
  Boolean XTDir() const { return XTDir_; }
  Boolean YTDir() const { return YTDir_; }
  Boolean ZTDir() const { return ZTDir_; }
  Boolean XRDir() const { return XRDir_; }
  Boolean YRDir() const { return YRDir_; }
  void SetXTDir(int v) { XTDir_ = ToBoolean(v != 0); }
  void SetYTDir(int v) { YTDir_ = ToBoolean(v != 0); }
  void SetZTDir(int v) { ZTDir_ = ToBoolean(v != 0); }
  void SetXRDir(int v) { XRDir_ = ToBoolean(v != 0); }
  void SetYRDir(int v) { YRDir_ = ToBoolean(v != 0); }

  // Read-only: only UpdatePropertyDefined and the readers set these.
  Boolean PropertyDefined() const { return PropertyDefined_; }
  Boolean BoundaryDefined() const { return BoundaryDefined_; }
  Boolean BraceDefined() const { return BraceDefined_; }
  Boolean LoadDefined() const { return LoadDefined_; }

  void UpdatePropertyDefined();

  void ReadData(FieldReader& in);    // version 1.3 record
  void ReadData1_4(FieldReader& in); // version 1.4 record
  void StoreData1_4(FieldWriter& out) const;

private:
  Boolean XTDir_ = vbFalse, YTDir_ = vbFalse, ZTDir_ = vbFalse, XRDir_ = vbFalse, YRDir_ = vbFalse;
  Boolean PropertyDefined_ = vbFalse, BoundaryDefined_ = vbFalse, BraceDefined_ = vbFalse,
          LoadDefined_ = vbFalse;
  void ReadCommon(FieldReader& in); // lines 1 to 5, alike in both versions
};

} // namespace velk
