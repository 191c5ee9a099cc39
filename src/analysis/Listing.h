#pragma once
// The analysis listing: a sectioned plain-text record of a run's input and
// results, written as the run goes so that a stopped run leaves it cut off
// where it stopped. Items of a table stand in 14-column print zones.
#include <memory>
#include <string>
#include <string_view>

#include "common/TextFile.h"

namespace velk {

class Listing {
public:
  // Creates the file, replacing an earlier one.
  explicit Listing(const std::string& path) : file_(std::make_unique<OutFile>(path)) {}
  // Writes into `sink` instead (tests).
  explicit Listing(std::string* sink) : file_(std::make_unique<OutFile>(sink)) {}

  // One table row or head line, built item by item.
  class Row {
  public:
    explicit Row(Listing& owner) : owner_(owner) {}
    Row& Text(std::string_view text);                       // as it stands
    Row& Int(long value);                                   // " 12 ", "-1 "
    Row& Real(double value);                                // plain real: " .3 ", "-1.5E-07 "
    Row& Formatted(double value, std::string_view picture); // "2.90E+04"
    Row& Tab(std::size_t column);                           // to 1-based column, as Tab(n)
    Row& Then(std::string_view text);                       // straight after the last item
    Row& ThenInt(long value);
    Row& ThenReal(double value);
    void End();

  private:
    void Zone();
    Listing& owner_;
    std::string line_;
    bool first_ = true;
  };

  Row Begin() { return Row(*this); }
  void Line(std::string_view text); // a line by itself: a section title
  void Close();

  // The two number forms of a table, also for other writers of the run.
  static std::string IntItem(long value);
  static std::string RealItem(double value);

private:
  std::unique_ptr<OutFile> file_;
};

} // namespace velk
