#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "base/temp_folder.h"
#include "base/unprivileged_user.h"
#include "component/ini_store.h"

namespace kolvane::component {
namespace {

namespace fs = std::filesystem;

class IniStoreTest : public testing::Test {
 protected:
  std::string Path() const { return dir_.Path("Kolvane/Kolvane.ini"); }
  std::string Content() const { return base::ReadBytes(Path()); }
  void Give(const std::string& bytes) const {
    fs::create_directories(dir_.Path("Kolvane"));
    base::WriteBytes(Path(), bytes);
  }

  // 0 or the errno.
  static int Save(const std::string& path, const std::string& section, const std::string& key,
                  const std::string& value) {
    const auto store = OpenIniStore(path);
    store->Write(section, key, value);
    const auto failure = store->Flush();
    if (failure) {
      EXPECT_EQ(failure->file, path);
    }
    return failure ? failure->error : 0;
  }

  base::TempFolder dir_;
};

TEST_F(IniStoreTest, ReturnsTheFallbackForAMissingKey) {
  EXPECT_EQ(OpenIniStore(Path())->Read("PORT", "IPADDRESS", "leer"), "leer");
  EXPECT_FALSE(fs::exists(dir_.Path("Kolvane")));
}

TEST_F(IniStoreTest, KeepsTextsByteForByte) {
  for (const std::string value : {"\r\n", "\n", "", " a, b ", "Größe \"1\"", "=;#", "\\"}) {
    EXPECT_EQ(Save(Path(), "TERMINAL", "RCVTERM", value), 0);
    EXPECT_EQ(OpenIniStore(Path())->Read("TERMINAL", "RCVTERM", "x"), value);
  }
}

TEST_F(IniStoreTest, WritesOneEscapedLinePerKeyIntoSections) {
  EXPECT_EQ(Save(Path(), "TERMINAL", "RCVTERM", "\r\n"), 0);
  EXPECT_EQ(Content(), "[TERMINAL]\nRCVTERM=\\r\\n\n");
}

TEST_F(IniStoreTest, ReadsWrittenValuesButSavesThemOnlyOnRequest) {
  Give("[A]\nB=1\n");
  {
    const auto store = OpenIniStore(Path());
    store->Write("A", "B", "2");
    EXPECT_EQ(store->Read("A", "B", ""), "2");
  }
  EXPECT_EQ(Content(), "[A]\nB=1\n");
}

TEST_F(IniStoreTest, LeavesUnknownKeysInTheFile) {
  EXPECT_EQ(Save(Path(), "X", "Y", "1"), 0);
  EXPECT_EQ(Save(Path(), "PORT", "PORT", "8"), 0);
  EXPECT_EQ(OpenIniStore(Path())->Read("X", "Y", ""), "1");
}

TEST_F(IniStoreTest, KeepsChangesByOthers) {
  const auto store = OpenIniStore(Path());
  EXPECT_EQ(Save(Path(), "X", "Y", "1"), 0);
  EXPECT_EQ(store->Read("X", "Y", "not yet"), "not yet");
  store->Write("PORT", "PORT", "8");
  EXPECT_FALSE(store->Flush());
  EXPECT_EQ(Content(), "[X]\nY=1\n\n[PORT]\nPORT=8\n");
}

TEST_F(IniStoreTest, IsInTheConfigurationFolderByDefault) {
  setenv("XDG_CONFIG_HOME", dir_.Path("").c_str(), 1);
  OpenIniStore("")->Read("PORT", "PORT", "");
  const auto store = OpenIniStore("");
  store->Write("PORT", "PORT", "8");
  EXPECT_FALSE(store->Flush());
  EXPECT_EQ(Content(), "[PORT]\nPORT=8\n");
}

TEST_F(IniStoreTest, IsInTheHomeFolderWithoutAConfigurationFolder) {
  const char* before = std::getenv("HOME");
  const std::string home = before == nullptr ? "" : before;
  fs::create_directories(dir_.Path(".config/Kolvane"));
  base::WriteBytes(dir_.Path(".config/Kolvane/Kolvane.ini"), "[PORT]\nPORT=8\n");
  setenv("HOME", dir_.Path("").c_str(), 1);
  setenv("XDG_CONFIG_HOME", "relative", 1);
  EXPECT_EQ(OpenIniStore("")->Read("PORT", "PORT", ""), "8");
  unsetenv("XDG_CONFIG_HOME");
  EXPECT_EQ(OpenIniStore("")->Read("PORT", "PORT", ""), "8");
  unsetenv("HOME");
  const auto nowhere = OpenIniStore("");
  EXPECT_EQ(nowhere->Read("PORT", "PORT", "4"), "4");
  nowhere->Write("PORT", "PORT", "8");
  ASSERT_TRUE(nowhere->Flush());
  setenv("HOME", home.c_str(), 1);
}

TEST_F(IniStoreTest, ALinkStaysALink) {
  fs::create_directory(dir_.Path("real"));
  base::WriteBytes(dir_.Path("real/a.ini"), "[A]\nB=1\n");
  fs::create_symlink("real/a.ini", dir_.Path("link.ini"));
  EXPECT_EQ(OpenIniStore(dir_.Path("link.ini"))->Read("A", "B", ""), "1");
  EXPECT_EQ(Save(dir_.Path("link.ini"), "A", "B", "2"), 0);
  EXPECT_TRUE(fs::is_symlink(dir_.Path("link.ini")));
  EXPECT_EQ(base::ReadBytes(dir_.Path("real/a.ini")), "[A]\nB=2\n");
}

TEST_F(IniStoreTest, AFolderInsteadOfTheFileIsEmptyAndStays) {
  fs::create_directories(Path());
  EXPECT_EQ(OpenIniStore(Path())->Read("A", "B", "x"), "x");
  EXPECT_EQ(Save(Path(), "A", "B", "1"), EISDIR);
  EXPECT_TRUE(fs::is_directory(Path()));
}

TEST_F(IniStoreTest, PipesAndDevicesAreNotReadAsTheyCouldBlock) {
  fs::create_directory(dir_.Path("Kolvane"));
  ASSERT_EQ(mkfifo(Path().c_str(), 0600), 0);
  EXPECT_EQ(OpenIniStore(Path())->Read("A", "B", "x"), "x");
  EXPECT_EQ(Save(Path(), "A", "B", "1"), ENXIO);
  EXPECT_EQ(OpenIniStore("/dev/zero")->Read("A", "B", "x"), "x");
  EXPECT_EQ(Save("/dev/null", "A", "B", "1"), 0);
  EXPECT_EQ(Save("/dev/full", "A", "B", "1"), ENOSPC);
}

TEST_F(IniStoreTest, ReportsWhyItCannotSave) {
  base::WriteBytes(dir_.Path("file"), "");
  EXPECT_EQ(Save(dir_.Path("file/a.ini"), "A", "B", "1"), ENOTDIR);
  fs::create_symlink("loop.ini", dir_.Path("loop.ini"));
  EXPECT_EQ(Save(dir_.Path("loop.ini"), "A", "B", "1"), ELOOP);
}

TEST_F(IniStoreTest, ReportsThatTheCurrentFolderIsGone) {
  const fs::path before = fs::current_path();
  fs::create_directory(dir_.Path("gone"));
  fs::current_path(dir_.Path("gone"));
  fs::remove(dir_.Path("gone"));
  EXPECT_EQ(Save("a.ini", "A", "B", "1"), ENOENT);
  fs::current_path(before);
}

TEST_F(IniStoreTest, AFileThatCannotBeReadIsNeverOverwritten) {
  Give("[A]\nB=1\n");
  fs::permissions(dir_.Path(""), fs::perms::all);
  fs::permissions(dir_.Path("Kolvane"), fs::perms::all);
  fs::permissions(Path(), fs::perms::none);
  std::unique_ptr<SettingsStore> store;
  {
    const base::UnprivilegedUser user;
    store = OpenIniStore(Path());
    EXPECT_EQ(store->Read("A", "B", "x"), "x");
    EXPECT_EQ(Save(Path(), "A", "C", "1"), EACCES);
  }
  fs::permissions(Path(), fs::perms(0644));
  store->Write("A", "B", "2");
  ASSERT_TRUE(store->Flush());
  EXPECT_EQ(Content(), "[A]\nB=1\n");
}

TEST_F(IniStoreTest, AFolderThatCannotBeWrittenKeepsTheFile) {
  Give("[A]\nB=1\n");
  fs::permissions(dir_.Path(""), fs::perms(0755));
  fs::permissions(dir_.Path("Kolvane"), fs::perms(0555));
  {
    const base::UnprivilegedUser user;
    EXPECT_EQ(Save(Path(), "A", "B", "2"), EACCES);
  }
  fs::permissions(dir_.Path("Kolvane"), fs::perms(0755));
  EXPECT_EQ(Content(), "[A]\nB=1\n");
}

TEST_F(IniStoreTest, UnchangedValuesAreNotWritten) {
  Give("[A]\n B = 1\n");
  struct stat before {};
  struct stat after {};
  ASSERT_EQ(stat(Path().c_str(), &before), 0);
  EXPECT_EQ(Save(Path(), "A", "B", "1"), 0);
  ASSERT_EQ(stat(Path().c_str(), &after), 0);
  EXPECT_EQ(before.st_ino, after.st_ino);
}

}  // namespace
}  // namespace kolvane::component
