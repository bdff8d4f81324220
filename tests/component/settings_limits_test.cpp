#include <gtest/gtest.h>

#include <array>

#include "base/encoding.h"
#include "component/ini_text.h"
#include "component/stored_settings.h"

namespace kolvane::component {
namespace {

struct Key {
  const char* section;
  const char* name;
};

constexpr Key kInt16[] = {{"PORT", "ADDRESS"},
                          {"PORT", "PARITY"},
                          {"PORT", "COMLOG"},
                          {"TERMINAL", "FONTSIZE"},
                          {"COMMANDLIST", "FONTSIZE"}};
constexpr Key kInt16ReadOnly[] = {{"PORT", "RCVBUF"}, {"PORT", "DATABITS"}, {"PORT", "STOPBITS"}};
constexpr Key kInt32[] = {
    {"PORT", "RSTIMO"},           {"PORT", "GPIBTIMO"},        {"PORT", "LPTTIMO"},
    {"PORT", "TCPIPTIMO"},        {"PORT", "USBTIMO"},         {"PORT", "BAUD"},
    {"TERMINAL", "RCVTIMO"},      {"TERMINAL", "FONTCOLOR"},   {"TERMINAL", "BACKCOLOR"},
    {"COMMANDLIST", "FONTCOLOR"}, {"COMMANDLIST", "BACKCOLOR"}};
constexpr Key kBooleans[] = {
    {"TERMINAL", "FONTBOLD"}, {"TERMINAL", "SHOWCOMMANDS"}, {"COMMANDLIST", "FONTBOLD"}};
constexpr Key kTexts[] = {{"PORT", "IPADDRESS"},   {"PORT", "USBADDRESS"},   {"TERMINAL", "SENDTERM"},
                          {"TERMINAL", "RCVTERM"}, {"TERMINAL", "FONTNAME"}, {"COMMANDLIST", "FONTNAME"}};

constexpr const char* kOverflow = "Überlauf";
constexpr const char* kMismatch = "Typen unverträglich";
constexpr const char* kOutOfRange = "Index außerhalb des gültigen Bereichs";

class SettingsLimitsTest : public testing::Test {
 protected:
  // The message of loading a file that holds this one value.
  std::string Load(const Key& key, const std::string& value) {
    std::filesystem::remove(file_);
    base::WriteBytes(file_, WithIniEntries("", {{{key.section, key.name}, value}}));
    settings_ = {};
    return settings_.Load(file_);
  }

  void ExpectUnchanged(const Key& key, const std::string& value) { ExpectSavedAs(key, value, value); }

  void ExpectSavedAs(const Key& key, const std::string& value, const std::string& saved) {
    EXPECT_EQ(Load(key, value), "");
    const std::string other = folder_.Path("b.ini");
    std::filesystem::remove(other);
    ASSERT_EQ(settings_.Save(other), 0);
    EXPECT_EQ(OpenIniStore(other)->Read(key.section, key.name, "(none)"), saved) << key.name << "=" << value;
  }

  void ExpectUnchangedInEveryText(const std::string& text) {
    StoredSettings saved;
    for (std::string* field : TextsOf(saved)) *field = text;
    ASSERT_EQ(saved.Save(file_), 0);
    settings_ = {};
    EXPECT_EQ(settings_.Load(file_), "");
    for (const std::string* field : TextsOf(settings_)) EXPECT_TRUE(*field == text) << text;
  }

  static std::array<std::string*, std::size(kTexts)> TextsOf(StoredSettings& s) {
    return {&s.connection.ip_address,
            &s.connection.usb_address,
            &s.terminal.receive.send_terminator,
            &s.terminal.receive.receive_terminator,
            &s.window.pane.font_name,
            &s.window.command_list.font_name};
  }

  void ExpectRefused(const Key& key, const std::string& value, const std::string& reason) {
    EXPECT_EQ(Load(key, value), std::string("Die gespeicherte Einstellung [") + key.section + "] " +
                                    key.name + "=" + value + " kann nicht gelesen werden: " + reason +
                                    " (Datei „" + file_ + "“)");
  }

  void ExpectOnlyNumbers(const Key& key) {
    for (const char* value : {"", " ", "x", "1x", "1 2", "1;2", "ä", "--1", "&HFF", "True"})
      ExpectRefused(key, value, kMismatch);
  }

  base::TempFolder folder_;
  std::string file_ = folder_.Path("a.ini");
  StoredSettings settings_;
};

TEST_F(SettingsLimitsTest, SixteenBits) {
  for (const Key& key : kInt16) {
    for (const char* value : {"-32768", "-1", "0", "32767"}) ExpectUnchanged(key, value);
    for (const char* value : {"-32769", "32768", "65535", "1e300"}) ExpectRefused(key, value, kOverflow);
    ExpectSavedAs(key, " 32767.4 ", "32767");
    ExpectSavedAs(key, "1,5", "2");
    ExpectOnlyNumbers(key);
  }
}

TEST_F(SettingsLimitsTest, SixteenBitsThatAreOnlyRead) {
  for (const Key& key : kInt16ReadOnly) {
    for (const char* value : {"-32768", "0", "32767"}) ExpectSavedAs(key, value, "(none)");
    for (const char* value : {"-32769", "32768"}) ExpectRefused(key, value, kOverflow);
    ExpectOnlyNumbers(key);
  }
  EXPECT_EQ(Load(kInt16ReadOnly[0], "32767"), "");
  EXPECT_EQ(settings_.connection.receive_buffer, 32767);
  EXPECT_EQ(Load(kInt16ReadOnly[1], "-32768"), "");
  EXPECT_EQ(settings_.connection.data_bits, -32768);
  EXPECT_EQ(Load(kInt16ReadOnly[2], "2"), "");
  EXPECT_EQ(settings_.connection.stop_bits, 2);
}

TEST_F(SettingsLimitsTest, ThirtyTwoBits) {
  for (const Key& key : kInt32) {
    for (const char* value : {"-2147483648", "-1", "0", "2147483647"}) ExpectUnchanged(key, value);
    for (const char* value : {"-2147483649", "2147483648", "1e300"}) ExpectRefused(key, value, kOverflow);
    ExpectOnlyNumbers(key);
  }
}

TEST_F(SettingsLimitsTest, Booleans) {
  for (const Key& key : kBooleans) {
    for (const char* value : {"-1", "0"}) ExpectUnchanged(key, value);
    for (const char* value : {"1", "32768", "-2147483649", "0.4"}) ExpectSavedAs(key, value, "-1");
    ExpectSavedAs(key, "-0", "0");
    ExpectOnlyNumbers(key);
  }
}

TEST_F(SettingsLimitsTest, BooleansThatAreReadAndWrittenInDifferentPlaces) {
  for (const char* section : {"SHOWRESPONSETIME", "LINEBREAKS"}) {
    EXPECT_EQ(Load({section, "SHOWCOMMANDS"}, "-1"), "");
    EXPECT_EQ(settings_.terminal.options.show_response_times, section[0] == 'S');
    EXPECT_EQ(settings_.terminal.options.line_breaks, section[0] == 'L');
    ExpectOnlyNumbers({section, "SHOWCOMMANDS"});
  }
}

TEST_F(SettingsLimitsTest, ListIndexes) {
  const Key mode{"TERMINAL", "RCVMODE"};
  const Key format{"TERMINAL", "RCVFORMAT"};
  for (const char* value : {"0", "1", "2"}) ExpectUnchanged(mode, value);
  for (const char* value : {"0", "1"}) ExpectUnchanged(format, value);
  for (const char* value : {"3", "255"}) ExpectRefused(mode, value, kOutOfRange);
  for (const char* value : {"2", "255"}) ExpectRefused(format, value, kOutOfRange);
  for (const Key& key : {mode, format}) {
    for (const char* value : {"-1", "256", "65536"}) ExpectRefused(key, value, kOverflow);
    ExpectOnlyNumbers(key);
  }
}

TEST_F(SettingsLimitsTest, PortKinds) {
  const Key port{"PORT", "PORT"};
  for (const char* value : {"0", "4", "9"}) ExpectUnchanged(port, value);
  for (const char* value : {"-32768", "-1", "10", "32767"}) ExpectRefused(port, value, kOutOfRange);
  for (const char* value : {"-32769", "32768"}) ExpectRefused(port, value, kOverflow);
  ExpectOnlyNumbers(port);
}

TEST_F(SettingsLimitsTest, IpPorts) {
  const Key port{"PORT", "IPPORT"};
  for (const char* value : {"0", "7", "32767", "32768", "65535"}) ExpectUnchanged(port, value);
  ExpectSavedAs(port, "-1", "65535");
  for (const char* value : {"-32769", "65536"}) ExpectRefused(port, value, kOverflow);
  ExpectOnlyNumbers(port);
}

TEST_F(SettingsLimitsTest, EveryCharacterOfTheCodePageInEveryText) {
  std::string all;
  for (int i = 0; i < 256; ++i) {
    const std::string one = base::FromWindows1252(std::string(1, static_cast<char>(i)));
    ExpectUnchangedInEveryText(one);
    all += one;
  }
  ExpectUnchangedInEveryText(all);
  ExpectUnchangedInEveryText(std::string(100000, 'x'));
}

TEST_F(SettingsLimitsTest, TextsThatLookLikeSomethingElse) {
  for (const Key& key : kTexts) {
    for (const char* text : {"",
                             " ",
                             "  a  ",
                             "\t",
                             "a\t",
                             "Prüfstand; Halle \"2\"",
                             "C:\\neu\\x41",
                             "[PORT]",
                             "PORT=9",
                             ";",
                             "#a",
                             "=",
                             "a,b",
                             "\"",
                             "\"\"",
                             "\\",
                             "\\n",
                             "@",
                             "@@a",
                             "@Invalid()",
                             "@String(a)",
                             "@ByteArray(a)",
                             "\r\n",
                             "\n\r",
                             "%20",
                             "\x01"
                             "1",
                             "日本語",
                             "😀"})
      ExpectUnchanged(key, text);
    ExpectUnchanged(key, std::string("\0 0\0", 4));
  }
}

TEST_F(SettingsLimitsTest, EveryKeyAtOnce) {
  // Each key has a different value, none of them its default.
  const IniEntries read_only = {{{"PORT", "RCVBUF"}, "1001"},
                                {{"PORT", "DATABITS"}, "1002"},
                                {{"PORT", "STOPBITS"}, "1003"},
                                {{"SHOWRESPONSETIME", "SHOWCOMMANDS"}, "-1"},
                                {{"LINEBREAKS", "SHOWCOMMANDS"}, "-1"}};
  IniEntries written = {{{"PORT", "PORT"}, "8"},
                        {{"PORT", "IPPORT"}, "40000"},
                        {{"TERMINAL", "RCVMODE"}, "2"},
                        {{"TERMINAL", "RCVFORMAT"}, "1"},
                        {{"TERMINAL", "FONTBOLD"}, "-1"},
                        {{"TERMINAL", "SHOWCOMMANDS"}, "0"},
                        {{"COMMANDLIST", "FONTBOLD"}, "-1"}};
  int number = 2000;
  for (const Key& key : kInt16) written[{key.section, key.name}] = std::to_string(++number);
  for (const Key& key : kInt32) written[{key.section, key.name}] = std::to_string(100'000 + ++number);
  for (const Key& key : kTexts) written[{key.section, key.name}] = "text " + std::to_string(++number);
  ASSERT_EQ(written.size() + read_only.size(), 34u);

  base::WriteBytes(file_, WithIniEntries(WithIniEntries("", written), read_only));
  EXPECT_EQ(settings_.Load(file_), "");
  EXPECT_EQ(settings_.connection.receive_buffer, 1001);
  EXPECT_EQ(settings_.connection.data_bits, 1002);
  EXPECT_EQ(settings_.connection.stop_bits, 1003);
  EXPECT_TRUE(settings_.terminal.options.show_response_times);
  EXPECT_TRUE(settings_.terminal.options.line_breaks);

  const std::string other = folder_.Path("b.ini");
  ASSERT_EQ(settings_.Save(other), 0);
  const auto saved = OpenIniStore(other);
  for (const auto& [key, value] : written)
    EXPECT_EQ(saved->Read(key.first, key.second, ""), value) << key.second;
  EXPECT_EQ(settings_.connection.timeout_entries.gpib_index, 102'007) << "each in its own field";
}

}  // namespace
}  // namespace kolvane::component
