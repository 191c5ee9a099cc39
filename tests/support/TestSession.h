#pragma once
// A fresh session per test: no session objects, a fake host, and the program's
// folder in a scratch directory of its own.
#include "FakeHost.h"

#include <gtest/gtest.h>
#include <string>

namespace velk::test {

class SessionTest : public ::testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;
  std::string Scratch(const std::string& name) const; // a path in the scratch folder

  FakeHost host;
  std::string folder;
};

std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& data);
std::vector<std::string> Lines(const std::string& data); // split at CR LF

} // namespace velk::test
