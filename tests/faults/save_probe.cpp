// Saves one of the terminal's files, as the window does: save_probe list FILE TEXT, history FOLDER ADDRESS,
// extras FILE FLAG, which is switched on and all others off, or state FILE TEXT. Exit status 0 when it was
// saved, 1 when that was refused.

#include <exception>
#include <string>

#include "component/settings.h"
#include "device/histories.h"
#include "script/command_file.h"

namespace {

bool SaveList(const std::string& file, const std::string& text) {
  kolvane::script::CommandList list;
  list.SetText(1, text);
  return kolvane::script::WriteCommandFile(list, file).ok();
}

bool SaveExtras(const std::string& file, const std::string& name) {
  kolvane::terminal::Extras extras;
  for (const kolvane::terminal::ExtrasFlag& flag : kolvane::terminal::kExtrasFlags)
    extras.*flag.value = flag.name == name;
  return !kolvane::component::ExtrasFile(file).Save(extras);
}

bool SaveState(const std::string& file, const std::string& text) {
  kolvane::component::StateFile state(file);
  state.Write("WINDOW", "Splitter", text);
  return !state.Save();
}

bool Save(const std::string& what, const std::string& where, const std::string& text) {
  if (what == "list") return SaveList(where, text);
  if (what == "extras") return SaveExtras(where, text);
  if (what == "state") return SaveState(where, text);
  kolvane::device::SaveIpHistory(where, {text});
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return argc == 4 && Save(argv[1], argv[2], argv[3]) ? 0 : 1;
  } catch (const std::exception&) {
    return 1;
  }
}
