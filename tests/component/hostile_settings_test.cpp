#include <gtest/gtest.h>
#include <sys/stat.h>

#include <random>

#include "base/pattern.h"
#include "component/stored_settings.h"

namespace kolvane::component {
namespace {

#ifdef KOLVANE_SANITIZED
// Sanitizers are several times as slow; builds without them show that time grows no faster than the file.
constexpr std::size_t kHuge = 256 * 1024;
#else
constexpr std::size_t kHuge = 2 * 1024 * 1024;
#endif

class HostileSettingsTest : public testing::Test {
 protected:
  static std::string SavedFile() {
    const base::TempFolder folder;
    StoredSettings settings;
    settings.connection.ip_address = "Prüfstand; Halle \"2\"";
    settings.connection.timeout_entries.rs232_seconds = INT32_MIN;
    settings.terminal.receive.send_terminator = "§";
    settings.window.pane.font_name =
        " a\\b\x01"
        "1 ";
    EXPECT_EQ(settings.Save(folder.Path("a.ini")), 0);
    return base::ReadBytes(folder.Path("a.ini"));
  }

  // Loads the file without changing it. Returns the error message without the file's name, or "".
  std::string Load(const std::string& bytes, StoredSettings& settings) {
    std::filesystem::remove(file_);
    base::WriteBytes(file_, bytes);
    std::string message = settings.Load(file_);
    EXPECT_TRUE(base::ReadBytes(file_) == bytes);
    if (!message.empty()) {
      const std::string file = " (Datei „" + file_ + "“)";
      EXPECT_TRUE(message.ends_with(file)) << message;
      message.resize(message.size() - std::min(file.size(), message.size()));
      EXPECT_TRUE(kMessage.Matches(message)) << message;
      EXPECT_LT(message.size(), 600u);
    }
    return message;
  }

  std::string Load(const std::string& bytes) {
    StoredSettings settings;
    return Load(bytes, settings);
  }

  // As Load; settings that load can be saved, and load again unchanged.
  std::string LoadAndSave(const std::string& bytes) {
    StoredSettings settings;
    const std::string message = Load(bytes, settings);
    if (!message.empty()) return message;
    EXPECT_EQ(settings.Save(file_), 0);
    StoredSettings again;
    EXPECT_EQ(again.Load(file_), "");
    EXPECT_EQ(again.connection.ip_address, settings.connection.ip_address);
    EXPECT_EQ(again.connection.address, settings.connection.address);
    EXPECT_TRUE(again.window.pane.font_name == settings.window.pane.font_name);
    EXPECT_EQ(again.window.pane.font_size, settings.window.pane.font_size);
    return "";
  }

  const base::Pattern kMessage{
      R"(Die gespeicherte Einstellung \[[A-Z]+\] [A-Z]+=.* kann nicht gelesen werden: )"
      "(Überlauf|Typen unverträglich|Index außerhalb des gültigen Bereichs)"};
  base::TempFolder folder_;
  std::string file_ = folder_.Path("a.ini");
};

TEST_F(HostileSettingsTest, CutAtEveryByte) {
  const std::string bytes = SavedFile();
  std::size_t refused = 0;
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    SCOPED_TRACE(length);
    if (!LoadAndSave(bytes.substr(0, length)).empty()) ++refused;
  }
  EXPECT_GT(refused, 20u) << "a number without digits is refused";
}

TEST_F(HostileSettingsTest, EveryByteReplaced) {
  const std::string bytes = SavedFile();
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    SCOPED_TRACE(at);
    for (const char c : {'\0', '\n', '"', '\\', '[', '=', ';', '\xFF'}) {
      std::string changed = bytes;
      changed[at] = c;
      Load(changed);
    }
  }
}

TEST_F(HostileSettingsTest, EveryByteMissing) {
  const std::string bytes = SavedFile();
  for (std::size_t at = 0; at < bytes.size(); ++at) Load(std::string(bytes).erase(at, 1));
}

TEST_F(HostileSettingsTest, BinaryGarbage) {
  std::mt19937 random(1);
  for (int round = 0; round < 30; ++round) {
    std::string bytes = round % 2 == 0 ? "" : "[TERMINAL]\nFONTNAME=";
    for (int i = 0; i < 20000; ++i) bytes += static_cast<char>(random());
    LoadAndSave(bytes);
  }
}

TEST_F(HostileSettingsTest, AHugeFileWithoutALineEnd) {
  for (const char c : {'\0', 'a', '[', '=', '"', '\\', ';', ' ', '\xFF'})
    EXPECT_EQ(LoadAndSave(std::string(kHuge, c)), "");
}

TEST_F(HostileSettingsTest, ManyLinesAroundTheSettings) {
  for (const char* line : {"\n", "[S]\n", "K=\n", "PORT=8\n", "[PORT]\nPORT=8\n", ";a\r\n", "\r"}) {
    std::string bytes;
    while (bytes.size() < kHuge) bytes += line;
    EXPECT_EQ(LoadAndSave("[TERMINAL]\nFONTSIZE=11\n" + bytes + "\n[TERMINAL]\nFONTSIZE=12\n"), "");
    EXPECT_EQ(OpenIniStore(file_)->Read("TERMINAL", "FONTSIZE", ""), "12");
  }
}

TEST_F(HostileSettingsTest, ManyDifferentKeys) {
  std::string bytes = "[PORT]\n";
  for (int i = 0; bytes.size() < kHuge; ++i)
    bytes += "K" + std::to_string(i) + "=" + std::to_string(i) + "\n";
  EXPECT_EQ(LoadAndSave(bytes), "");
  EXPECT_EQ(OpenIniStore(file_)->Read("PORT", "K1000", ""), "1000");
}

TEST_F(HostileSettingsTest, AHugeValue) {
  EXPECT_EQ(LoadAndSave("[TERMINAL]\nFONTNAME=" + std::string(kHuge, 'x')), "");
  EXPECT_EQ(OpenIniStore(file_)->Read("TERMINAL", "FONTNAME", "").size(), kHuge);
  EXPECT_EQ(LoadAndSave("[TERMINAL]\nFONTSIZE=" + std::string(kHuge, 'x')),
            "Die gespeicherte Einstellung [TERMINAL] FONTSIZE=" + std::string(80, 'x') +
                "… kann nicht gelesen werden: Typen unverträglich");
  EXPECT_EQ(LoadAndSave("[TERMINAL]\nFONTSIZE=" + std::string(kHuge, '9')),
            "Die gespeicherte Einstellung [TERMINAL] FONTSIZE=" + std::string(80, '9') +
                "… kann nicht gelesen werden: Überlauf");
}

TEST_F(HostileSettingsTest, TheFirstOneInTheTablesOrderIsNamed) {
  EXPECT_EQ(LoadAndSave("[TERMINAL]\nRCVMODE=x\n[PORT]\nSTOPBITS=y\n"),
            "Die gespeicherte Einstellung [PORT] STOPBITS=y kann nicht gelesen werden: Typen unverträglich");
}

TEST_F(HostileSettingsTest, ALineWithoutAValueIsAbsentAndOneWithAnEmptyValueIsNot) {
  EXPECT_EQ(LoadAndSave("[TERMINAL]\nFONTSIZE\n"), "");
  EXPECT_EQ(
      LoadAndSave("[TERMINAL]\nFONTSIZE=\n"),
      "Die gespeicherte Einstellung [TERMINAL] FONTSIZE= kann nicht gelesen werden: Typen unverträglich");
}

TEST_F(HostileSettingsTest, AMessageIsNotEndedByANul) {
  EXPECT_EQ(
      LoadAndSave(std::string("[TERMINAL]\nFONTSIZE=1\0\n", 23)),
      "Die gespeicherte Einstellung [TERMINAL] FONTSIZE=1\\0 kann nicht gelesen werden: Typen unverträglich");
}

TEST_F(HostileSettingsTest, OfRepeatedKeysOnlyTheLastOneCountsAndStays) {
  base::WriteBytes(file_, "[PORT]\nADDRESS=x\nADDRESS=5\n[A]\nB=1\nB=2\n[PORT]\nADDRESS=6\n");
  StoredSettings settings;
  EXPECT_EQ(settings.Load(file_), "");
  EXPECT_EQ(settings.connection.address, 6);
  EXPECT_EQ(settings.Save(file_), 0);
  const std::string saved = base::ReadBytes(file_);
  EXPECT_EQ(saved.find("ADDRESS=x"), saved.npos);
  EXPECT_EQ(saved.find("\nADDRESS="), saved.rfind("\nADDRESS="));
  EXPECT_NE(saved.find("[A]\nB=1\nB=2\n"), saved.npos) << "other sections stay";
}

}  // namespace
}  // namespace kolvane::component
