// Kolvane.ini: any file can be read and written to; settings read from it and stored again are the same.
#include "base/runtime_error.h"
#include "component/ini_text.h"
#include "component/ini_value.h"
#include "component/memory_store.h"
#include "component/settings.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "fuzz/utf8.h"

namespace kolvane::fuzz {
namespace {

constexpr std::uint32_t kInputsPerRoundTrip = 64;

/// The settings in a file's text, as the program's store returns them.
class TextStore final : public component::SettingsStore {
 public:
  explicit TextStore(const component::IniText& text) : text_(text) {}
  std::optional<std::string> Find(const std::string& section, const std::string& key) const override {
    return text_.Find(section, key);
  }
  void Write(const std::string&, const std::string&, const std::string&) override {}
  std::optional<component::SaveFailure> Flush() override { return std::nullopt; }

 private:
  const component::IniText& text_;
};

struct Record {
  device::ConnectionParameters connection;
  terminal::TerminalState terminal;
  terminal::WindowSettings window;

  component::SettingsTarget Target() { return {connection, terminal, window}; }
};

bool Load(const component::SettingsStore& store, Record& record) {
  try {
    component::LoadSettings(store, record.Target(), true);
    return true;
  } catch (const base::RuntimeError& error) {
    Require(IsUtf8(error.what()) && std::string_view(error.what()).find('\n') == std::string_view::npos);
    return false;
  }
}

component::IniEntries Entries(const component::MemoryStore& store) {
  component::IniEntries entries;
  for (const auto& [location, value] : store.values) {
    const std::size_t separator = location.find('/');
    entries[{location.substr(0, separator), location.substr(separator + 1)}] = value;
  }
  return entries;
}

/// Saved into the file, the settings can be read from it again; saving once more changes nothing.
void CheckRoundTrip(Record& record, std::string_view bytes) {
  component::MemoryStore saved;
  Require(!component::SaveSettings(saved, record.Target()));
  const component::IniEntries entries = Entries(saved);
  const std::string merged = component::WithIniEntries(bytes, entries);
  const component::IniText again(merged);
  for (const auto& [location, value] : entries) Require(again.Find(location.first, location.second) == value);
  Require(component::WithIniEntries(merged, entries) == merged);
  Record second;
  Require(Load(TextStore(again), second));
}

void CheckValue(std::string_view bytes) {
  const std::string value = component::DecodeIniValue(bytes);
  Require(IsUtf8(value) && IsUtf8(component::ShownIniValue(value)));
  const std::string encoded = component::EncodeIniValue(value);
  Require(encoded.find_first_of("\r\n") == std::string::npos);
  Require(component::DecodeIniValue(encoded) == value);
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  fuzz::CheckValue(bytes);
  const component::IniText text{std::string(bytes)};
  fuzz::Record record;
  if (fuzz::Load(fuzz::TextStore(text), record) && fuzz::Hash(bytes) % fuzz::kInputsPerRoundTrip == 0)
    fuzz::CheckRoundTrip(record, bytes);
  return 0;
}
