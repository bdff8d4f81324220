#include "app/demo.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "app/amplifier_process.h"
#include "app/end_signals.h"
#include "app/stop_signals.h"
#include "kolvane/CommandRun.h"
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

// The demo has the component's files in a folder of its own.
void FillFolder(const fs::path& folder, const fs::path& component_folder) {
  for (const char* name : {"TermCmdHelp.rtf", kDemoList})
    fs::copy_file(component_folder / name, folder / name, fs::copy_options::skip_existing);
  // Large, only read, and no reason to end the demo where it is missing.
  fs::create_symlink(component_folder / "Terminal.chm", folder / "Terminal.chm");
  for (const auto& entry : fs::directory_iterator(component_folder)) {
    if (entry.path().extension() == ".BNS") fs::copy_file(entry, folder / entry.path().filename());
  }
}

// What the user saves and the list logs outlives the demo in the current folder. Where nothing can be written
// there, the demo's own has to do.
void ChooseCurrentFolder(const fs::path& scratch) {
  if (access(".", W_OK) != 0) fs::current_path(scratch);
}

void ShowDemo(const std::string& folder, const fs::path& scratch, std::uint16_t port) {
  const EndSignals end;
  TerminalOptions options;
  options.CommandList = (scratch / kDemoList).string();
  options.Folder = folder.empty() ? scratch.string() : fs::absolute(folder).string();
  options.SettingsFile = WriteSettings(scratch, port).string();
  options.CloseDescriptor = end.descriptor();
  options.ConnectAtStart = true;
  ChooseCurrentFolder(scratch);
  MainClass terminal;
  terminal.SetOptions(options);
  terminal.OpenTerminal(2, 0);
}

int PlayDemo(const fs::path& scratch, std::uint16_t port) {
  std::fputs("kolvane: no display, so the demo's command list runs without a window\n", stderr);
  // Nobody has chosen to play the list, so nothing of it stays behind.
  fs::current_path(scratch);
  CommandRunOptions options;
  options.Connect = "TCPIP::127.0.0.1::" + std::to_string(port) + "::SOCKET";
  options.ShowCommands = true;
  const StopSignals stop;
  options.StopRequested = StopSignals::Raised;
  return static_cast<int>(RunCommandList((scratch / kDemoList).string(), options));
}

}  // namespace

int RunDemo(const std::string& folder) {
  const fs::path programs = fs::read_symlink("/proc/self/exe").parent_path();
  const AmplifierProcess amplifier((programs / "kolvane-amplifier").string());
  const ScratchFolder scratch;
  FillFolder(scratch.path(), MainClass::OwnFolder());
  try {
    ShowDemo(folder, scratch.path(), amplifier.port());
    return 0;
  } catch (const NoDisplay&) {
    return PlayDemo(scratch.path(), amplifier.port());
  }
}

}  // namespace kolvane::app
