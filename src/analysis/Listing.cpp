#include "analysis/Listing.h"

#include "common/TextRules.h"

namespace velk {

std::string Listing::IntItem(long value) {
  return PrintInteger(value);
}

std::string Listing::RealItem(double value) {
  std::string s = DoubleToFileText(value);
  return (s[0] == '-' ? "" : " ") + s + " ";
}

void Listing::Row::Zone() {
  if (!first_) line_ += ZonePad(line_.size());
  first_ = false;
}

Listing::Row& Listing::Row::Text(std::string_view text) {
  Zone();
  line_ += text;
  return *this;
}

Listing::Row& Listing::Row::Int(long value) {
  return Text(IntItem(value));
}
Listing::Row& Listing::Row::Real(double value) {
  return Text(RealItem(value));
}
Listing::Row& Listing::Row::Formatted(double value, std::string_view picture) {
  return Text(Format(value, picture));
}

Listing::Row& Listing::Row::Tab(std::size_t column) {
  if (column > 0 && line_.size() < column - 1) line_.append(column - 1 - line_.size(), ' ');
  first_ = true; // the next item follows at once
  return *this;
}

Listing::Row& Listing::Row::Then(std::string_view text) {
  line_ += text;
  first_ = false;
  return *this;
}
Listing::Row& Listing::Row::ThenInt(long value) {
  return Then(IntItem(value));
}
Listing::Row& Listing::Row::ThenReal(double value) {
  return Then(RealItem(value));
}

void Listing::Row::End() {
  owner_.Line(line_);
  line_.clear();
  first_ = true;
}

void Listing::Line(std::string_view text) {
  file_->Put(text);
  file_->Put("\r\n");
}

void Listing::Close() {
  file_->Close();
}

} // namespace velk
