#include "app/demo.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "app/amplifier_process.h"
#include "kolvane/MainClass.h"

namespace kolvane::app {
namespace {

namespace fs = std::filesystem;

constexpr char kDemoList[] = "demo.CMD";

// A folder that goes with its owner.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string pattern = (fs::temp_directory_path() / "kolvane-demo-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the demo in " + pattern);
    path_ = pattern;
  }
  ~ScratchFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

fs::path WriteSettings(const fs::path& folder, std::uint16_t port) {
  constexpr int kTcpIpOption = 8;
  const fs::path file = folder / "Kolvane.ini";
  std::ofstream(file) << "[PORT]\nPORT=" << kTcpIpOption << "\nIPADDRESS=127.0.0.1\nIPPORT=" << port << '\n';
  return file;
}

// The demo has the component's files in a folder of its own, and leaves its log there.
void FillFolder(const fs::path& folder, const fs::path& component_folder) {
  for (const char* name : {"TermCmdHelp.rtf", kDemoList})
    fs::copy_file(component_folder / name, folder / name, fs::copy_options::skip_existing);
  fs::current_path(folder);
}

}  // namespace

void RunDemo(const std::string& folder, int close_descriptor) {
  const fs::path programs = fs::read_symlink("/proc/self/exe").parent_path();
  const AmplifierProcess amplifier((programs / "kolvane-amplifier").string());
  const ScratchFolder scratch;
  FillFolder(scratch.path(), programs.parent_path() / "lib");
  TerminalOptions options;
  options.CommandList = (scratch.path() / kDemoList).string();
  options.Folder = folder.empty() ? scratch.path().string() : folder;
  options.SettingsFile = WriteSettings(scratch.path(), amplifier.port()).string();
  options.CloseDescriptor = close_descriptor;
  options.ConnectAtStart = true;
  MainClass terminal;
  terminal.SetOptions(options);
  terminal.OpenTerminal(2, 0);
}

}  // namespace kolvane::app
