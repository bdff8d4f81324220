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

/// The same with its pages damaged: they are in the compressed part at the end; the directory before it stays
/// whole.
inline std::string HelpWithoutPages() {
  std::string bytes = CompiledHelp();
  for (std::size_t i = bytes.size() - 2000; i < bytes.size(); ++i) bytes[i] = '\xFF';
  return bytes;
}

/// The file, read.
class CompiledHelpFixture : public testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(file_, nullptr); }

  const std::unique_ptr<HelpFile> file_ = HelpFile::Open(KOLVANE_TEST_HELP);
};

}  // namespace kolvane::help
