#include "model/Nodeb.h"

#include "common/TextFile.h"

#include <cmath>

namespace velk {

void Nodeb::UpdatePropertyDefined() {
  PropertyDefined_ = BoundaryDefined_ = BraceDefined_ = LoadDefined_ = vbFalse;
  if (XTDir_ || YTDir_ || ZTDir_ || XRDir_ || YRDir_) PropertyDefined_ = BoundaryDefined_ = vbTrue;
  // Springs are summed with their signs, in Single like the fields themselves.
  Single springs = xtstiff + YTStiff + ZTStiff + XRStiff + YRStiff;
  if (springs > kTolerance) PropertyDefined_ = BraceDefined_ = vbTrue;
  Single loads = static_cast<Single>(std::abs(XLoad) + std::abs(YLoad));
  if (loads > kTolerance) PropertyDefined_ = LoadDefined_ = vbTrue;
}

void Nodeb::ReadCommon(FieldReader& in) {
  xcoord = in.Single();
  ycoord = in.Single();
  zcoord = in.Single();
  InPDispX = in.Single();
  InPDispY = in.Single();
  PropertyDefined_ = in.Boolean();
  BoundaryDefined_ = in.Boolean();
  BraceDefined_ = in.Boolean();
  LoadDefined_ = in.Boolean();
  XTDir_ = in.Boolean();
  YTDir_ = in.Boolean();
  ZTDir_ = in.Boolean();
  XRDir_ = in.Boolean();
  YRDir_ = in.Boolean();
  XTDirValue = in.Single();
  YTDirValue = in.Single();
  Connected = in.Boolean();
  xtstiff = in.Single();
  YTStiff = in.Single();
  ZTStiff = in.Single();
  XRStiff = in.Single();
  YRStiff = in.Single();
  XLoad = in.Single();
  YLoad = in.Single();
}

void Nodeb::ReadData(FieldReader& in) {
  ReadCommon(in);
  ID = in.Long();
  vID = in.Long();
  // The older form repeats the in-plane displacements; the later value stands.
  InPDispX = in.Single();
  InPDispY = in.Single();
}

void Nodeb::ReadData1_4(FieldReader& in) {
  ReadCommon(in);
  ID = in.Long();
  vID = in.Long();
  Connected = in.Boolean();
  Sx = in.Single();
  Sy = in.Single();
  SXY = in.Single();
  Mises = in.Single();
}

void Nodeb::StoreData1_4(FieldWriter& out) const {
  out.Single(xcoord);
  out.Single(ycoord);
  out.Single(zcoord);
  out.Single(InPDispX);
  out.Single(InPDispY);
  out.EndLine();
  out.Boolean(PropertyDefined_);
  out.Boolean(BoundaryDefined_);
  out.Boolean(BraceDefined_);
  out.Boolean(LoadDefined_);
  out.EndLine();
  out.Boolean(XTDir_);
  out.Boolean(YTDir_);
  out.Boolean(ZTDir_);
  out.Boolean(XRDir_);
  out.Boolean(YRDir_);
  out.Single(XTDirValue);
  out.Single(YTDirValue);
  out.Boolean(Connected);
  out.EndLine();
  out.Single(xtstiff);
  out.Single(YTStiff);
  out.Single(ZTStiff);
  out.Single(XRStiff);
  out.Single(YRStiff);
  out.EndLine();
  out.Single(XLoad);
  out.Single(YLoad);
  out.EndLine();
  out.Integer(ID);
  out.Integer(vID);
  out.Boolean(Connected);
  out.EndLine();
  out.Single(Sx);
  out.Single(Sy);
  out.Single(SXY);
  out.Single(Mises);
  out.EndLine();
}

} // namespace velk
