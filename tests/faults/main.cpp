// Entry of the window's fault tests: the application object that the component makes, offscreen.
#include <gtest/gtest.h>

#include "component/ui/application.h"

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  const kolvane::component::GuardedApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
