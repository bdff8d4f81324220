// Extras.ini and state.ini: any file can be read; what a window changes is read back the next time, and
// everything else stays.
#include "base/files.h"
#include "component/ini_text.h"
#include "component/settings.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "fuzz/scratch_folder.h"
#include "fuzz/utf8.h"

namespace kolvane::fuzz {
namespace {

constexpr std::uint32_t kInputsPerSave = 16;
constexpr char kFile[] = "Extras.ini";

terminal::Extras FlagsOf(std::uint8_t bits) {
  terminal::Extras extras;
  for (std::size_t i = 0; i < terminal::kExtrasFlags.size(); ++i)
    extras.*terminal::kExtrasFlags[i].value = bits >> i & 1;
  return extras;
}

bool Same(const terminal::Extras& left, const terminal::Extras& right) {
  for (const terminal::ExtrasFlag& flag : terminal::kExtrasFlags)
    if (left.*flag.value != right.*flag.value) return false;
  return true;
}

std::string Content(const std::string& path) {
  std::string bytes;
  Require(base::ReadFile(path, bytes) == 0);
  return bytes;
}

/// Requires that all sections other than the program's own are unchanged.
void RequireOtherKeysKept(const std::string& before, const std::string& after) {
  const component::IniText old{before};
  const component::IniText now{after};
  for (const char* key : {"Geometry", "A", ""}) Require(old.Find("OTHER", key) == now.Find("OTHER", key));
}

void CheckSaving(const std::string& path, const terminal::Extras& wanted) {
  const std::string before = Content(path);
  component::ExtrasFile file(path);
  const bool changed = !Same(file.Load(), wanted);
  Require(!file.Save(wanted));
  const std::string after = Content(path);
  Require(changed || after == before);
  RequireOtherKeysKept(before, after);
  component::ExtrasFile again(path);
  Require(Same(again.Load(), wanted));
  Require(!again.Save(wanted) && Content(path) == after);
}

void CheckState(const std::string& path, std::string_view text) {
  const std::string value = IsUtf8(text) ? std::string(text) : "x";
  component::StateFile state(path);
  Require(IsUtf8(state.Read("WINDOW", "Geometry")));
  state.Write("WINDOW", "Geometry", value);
  Require(!state.Save());
  Require(component::StateFile(path).Read("WINDOW", "Geometry") == value);
}

}  // namespace
}  // namespace kolvane::fuzz

/// A byte of flags to set, then the file; its first line also serves as a state's text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  static fuzz::ScratchFolder folder;
  fuzz::Input input(data, size);
  const terminal::Extras wanted = fuzz::FlagsOf(input.Byte());
  const std::string_view bytes = input.Rest();
  folder.Put(fuzz::kFile, bytes);
  const std::string path = folder / fuzz::kFile;
  (void)component::ExtrasFile(path).Load();
  if (fuzz::Hash(bytes) % fuzz::kInputsPerSave != 0) return 0;
  fuzz::CheckSaving(path, wanted);
  fuzz::CheckState(path, input.Until('\n'));
  return 0;
}
