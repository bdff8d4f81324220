#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "help/help_file.h"

namespace kolvane::help {

/// The bytes of the tests' own help file, which the build compiles from tests/help/pages.
inline std::string CompiledHelp() {
  std::ifstream file(KOLVANE_TEST_HELP, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// That file, read.
class CompiledHelpFixture : public testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(file_, nullptr); }

  const std::unique_ptr<HelpFile> file_ = HelpFile::Open(KOLVANE_TEST_HELP);
};

}  // namespace kolvane::help
