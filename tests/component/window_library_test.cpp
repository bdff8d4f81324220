#include "component/window_library.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "component/folder.h"

namespace kolvane::component {
namespace {

// This program contains the component and has no library beside it.
TEST(WindowLibrary, OpeningWithoutItNamesTheMissingFile) {
  ComponentState state;
  try {
    OpenWindow(state, 2, 0);
    ADD_FAILURE() << "the library exists";
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find(OwnFolder() + "/libkolvane-windows.so"), std::string::npos)
        << error.what();
  }
  EXPECT_FALSE(state.window_open);
}

}  // namespace
}  // namespace kolvane::component
