#include "app/demo.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>

#include "app/signals.h"
#include "kolvane/CommandRun.h"
#include "kolvane/MainClass.h"

extern char** environ;

namespace kolvane::app {
namespace {

// The first line read from `fd`, without its end; at end of file, what was read before.
std::string FirstLine(int fd) {
  std::string line;
  char c = 0;
  for (;;) {
    const ssize_t got = base::Uninterrupted([&] { return read(fd, &c, 1); });
    if (got <= 0 || c == '\n') return line;
    line += c;
  }
}

std::uint16_t PortIn(std::string_view line) {
  std::uint16_t port = 0;
  const std::size_t colon = line.rfind(':');
  if (colon != std::string_view::npos)
    std::from_chars(line.data() + colon + 1, line.data() + line.size(), port);
  return port;
}

}  // namespace

AmplifierProcess::AmplifierProcess(const std::string& program) {
  Start(program);
  port_ = PortIn(FirstLine(output_.get()));
  if (port_ != 0) return;
  Stop();
  throw std::runtime_error("the simulated amplifier did not start: " + program);
}

AmplifierProcess::~AmplifierProcess() { Stop(); }

void AmplifierProcess::Start(const std::string& program) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error(std::string("pipe: ") + std::strerror(errno));
  output_ = base::Descriptor(ends[0]);
  const base::Descriptor input(ends[1]);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input.get(), STDOUT_FILENO);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t none;
  sigemptyset(&none);
  // The signals that end the terminal may be blocked here, but must end the amplifier.
  posix_spawnattr_setsigmask(&attributes, &none);
  // Ctrl+C is for the terminal only, which still talks to the amplifier while it ends.
  posix_spawnattr_setpgroup(&attributes, 0);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
  std::string words[] = {program, "--tcp", "0", "--exit-with-parent"};
  char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
  const int failure = posix_spawn(&child_, program.c_str(), &actions, &attributes, arguments, environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  if (failure != 0)
    throw std::runtime_error("the simulated amplifier cannot be started: " + program + ": " +
                             std::strerror(failure));
}

void AmplifierProcess::Stop() {
  kill(child_, SIGTERM);
  base::Uninterrupted([this] { return waitpid(child_, nullptr, 0); });
}

namespace {

namespace fs = std::filesystem;

constexpr char kDemoList[] = "demo.CMD";
constexpr char kDemoLog[] = "demo.LOG";

// The demo's folder: it is the current folder and holds the list and its log, with settings and the
// component's files below. All of it is deleted with this object, except files saved by the user.
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

// The help files are in the component's folder.
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
