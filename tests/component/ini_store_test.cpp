#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <fstream>
#include <sstream>

#include "component/settings_store.h"

namespace kolvane::component {
namespace {

class IniStoreTest : public testing::Test {
 protected:
  std::string Path() const { return dir_.path().toStdString() + "/Kolvane/Kolvane.ini"; }

  std::string Content() const {
    std::ostringstream text;
    text << std::ifstream(Path()).rdbuf();
    return text.str();
  }

  QTemporaryDir dir_;
};

TEST_F(IniStoreTest, GivesTheFallbackForWhatIsNotThere) {
  EXPECT_EQ(OpenIniStore(Path())->Read("PORT", "IPADDRESS", "leer"), "leer");
}

TEST_F(IniStoreTest, KeepsTextsByteForByte) {
  for (const std::string value : {"\r\n", "\n", "", " a, b ", "Größe \"1\"", "=;#", "\\"}) {
    OpenIniStore(Path())->Write("TERMINAL", "RCVTERM", value);
    EXPECT_EQ(OpenIniStore(Path())->Read("TERMINAL", "RCVTERM", "x"), value);
  }
}

TEST_F(IniStoreTest, WritesOneEscapedLineAKeyIntoSections) {
  OpenIniStore(Path())->Write("TERMINAL", "RCVTERM", "\r\n");
  EXPECT_EQ(Content(), "[TERMINAL]\nRCVTERM=\\r\\n\n");
}

TEST_F(IniStoreTest, LeavesUnknownKeysInTheFile) {
  OpenIniStore(Path())->Write("X", "Y", "1");
  OpenIniStore(Path())->Write("PORT", "PORT", "8");
  EXPECT_EQ(OpenIniStore(Path())->Read("X", "Y", ""), "1");
}

TEST_F(IniStoreTest, LiesInTheConfigurationFolderByDefault) {
  qputenv("XDG_CONFIG_HOME", dir_.path().toUtf8());
  OpenIniStore("")->Write("PORT", "PORT", "8");
  EXPECT_EQ(Content(), "[PORT]\nPORT=8\n");
}

}  // namespace
}  // namespace kolvane::component
