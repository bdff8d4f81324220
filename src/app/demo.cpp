#include "app/demo.h"

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
constexpr char kDemoLog[] = "demo.LOG";

// The demo's own place: the list and its log in the current folder of the demo, settings and the component's
// files below it. All of it goes with its owner, but what the user has saved there.
class DemoFolder {
 public:
  DemoFolder() {
    std::string pattern = (fs::temp_directory_path() / "kolvane-demo-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the demo in " + pattern);
    path_ = pattern;
    fs::create_directory(component());
  }
  ~DemoFolder() {
    std::error_code ignored;
    fs::remove_all(component(), ignored);
    for (const char* own : {kDemoList, kDemoLog}) fs::remove(path_ / own, ignored);
    std::error_code kept;
    fs::remove(path_, kept);
    if (kept) std::fprintf(stderr, "kolvane: what was saved in the demo stays in %s\n", path_.c_str());
  }
  DemoFolder(const DemoFolder&) = delete;
  DemoFolder& operator=(const DemoFolder&) = delete;

  const fs::path& path() const { return path_; }
  fs::path component() const { return path_ / "component"; }

 private:
  fs::path path_;
};

fs::path WriteSettings(const fs::path& folder, std::uint16_t port) {
  constexpr int kTcpIpOption = 8;
  const fs::path file = folder / "Kolvane.ini";
  std::ofstream(file) << "[PORT]\nPORT=" << kTcpIpOption << "\nIPADDRESS=127.0.0.1\nIPPORT=" << port << '\n';
  return file;
}

// The help files are found beside the component.
void FillFolder(const DemoFolder& demo, const fs::path& component_folder) {
  fs::copy_file(component_folder / kDemoList, demo.path() / kDemoList);
  for (const auto& entry : fs::directory_iterator(component_folder)) {
    if (entry.path().extension() == ".BNS") fs::copy_file(entry, demo.component() / entry.path().filename());
  }
}

void ShowDemo(const std::string& folder, const DemoFolder& demo, std::uint16_t port) {
  const EndSignals end;
  TerminalOptions options;
  options.CommandList = (demo.path() / kDemoList).string();
  options.Folder = (folder.empty() ? demo.component() : fs::absolute(folder)).string();
  options.SettingsFile = WriteSettings(demo.component(), port).string();
  options.CloseDescriptor = end.descriptor();
  options.ConnectAtStart = true;
  fs::current_path(demo.path());
  MainClass terminal;
  terminal.SetOptions(options);
  terminal.OpenTerminal(2, 0);
}

int PlayDemo(const DemoFolder& demo, std::uint16_t port) {
  std::fputs("kolvane: no display, so the demo's command list runs without a window\n", stderr);
  fs::current_path(demo.path());
  CommandRunOptions options;
  options.Connect = "TCPIP::127.0.0.1::" + std::to_string(port) + "::SOCKET";
  options.ShowCommands = true;
  const StopSignals stop;
  options.StopRequested = StopSignals::Raised;
  return static_cast<int>(RunCommandList(kDemoList, options));
}

}  // namespace

int RunDemo(const std::string& folder) {
  const fs::path programs = fs::read_symlink("/proc/self/exe").parent_path();
  const AmplifierProcess amplifier((programs / "kolvane-amplifier").string());
  const DemoFolder demo;
  FillFolder(demo, MainClass::OwnFolder());
  try {
    ShowDemo(folder, demo, amplifier.port());
    return 0;
  } catch (const NoDisplay&) {
    return PlayDemo(demo, amplifier.port());
  }
}

}  // namespace kolvane::app
