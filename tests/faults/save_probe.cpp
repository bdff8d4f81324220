// Saves one of the terminal's files, as the window does: save_probe list FILE TEXT or history FOLDER ADDRESS.
// Exit status 0 when it was saved, 1 when that was refused.

#include <exception>
#include <string>

#include "device/histories.h"
#include "script/command_file.h"

namespace {

bool Save(const std::string& what, const std::string& where, const std::string& text) {
  if (what == "list") {
    kolvane::script::CommandList list;
    list.SetText(1, text);
    return kolvane::script::WriteCommandFile(list, where).ok();
  }
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
