// The cost of loading and saving compared with reading and replacing the same bytes by bare calls, and of a
// line of the log compared with one write. Usage: files_bench [rounds]

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "base/files.h"
#include "base/temp_folder.h"
#include "component/component_state.h"
#include "component/settings.h"
#include "row.h"
#include "script/command_file.h"
#include "terminal/log_control.h"

namespace kolvane::bench {
namespace {

void Check(bool good) {
  if (!good) std::abort();
}

void BareRead(const std::string& name) {
  static char buffer[1 << 20];
  const int file = open(name.c_str(), O_RDONLY | O_CLOEXEC);
  Check(file >= 0 && read(file, buffer, sizeof buffer) > 0);
  close(file);
}

// Replaces the file as safely as possible: the data is flushed before the rename, the folder after it.
void BareReplace(const std::string& name, const std::string& folder, const std::string& bytes) {
  const std::string temporary = name + ".new";
  const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  Check(write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
  Check(fsync(file) == 0);
  close(file);
  Check(rename(temporary.c_str(), name.c_str()) == 0);
  const int opened = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  fsync(opened);
  close(opened);
}

double MillisecondsPerCall(int times, const std::function<void()>& work) {
  return SecondsOf([&] {
           for (int i = 0; i < times; ++i) work();
         }) /
         times * 1e3;
}

// Loading may take a millisecond more than the bare read, saving two: neither is noticeable.
constexpr double kLoadGoal = 1;
constexpr double kSaveGoal = 2;
constexpr int kLoads = 50;
constexpr int kSaves = 5;

struct Files {
  explicit Files(int round_count) : rounds(round_count) {}

  base::TempFolder folder;
  std::string list_file = folder.Path("a.CMD");
  std::string bare_file = folder.Path("bare");
  std::string settings_file = folder.Path("Kolvane.ini");
  int rounds;
};

void MeasureLoad(const Files& files, const char* claim, const std::string& file,
                 const std::function<void()>& load) {
  const Comparison comparison = Alternate(
      files.rounds, [&] { return MillisecondsPerCall(kLoads, [&] { BareRead(file); }); },
      [&] { return MillisecondsPerCall(kLoads, load); });
  PrintAtMostMore({claim, "open, read, close", "ms"}, comparison, kLoadGoal);
}

void MeasureSave(const Files& files, const char* claim, const std::string& file,
                 const std::function<void()>& save) {
  const std::string bytes = base::ReadBytes(file);
  const std::string folder = files.folder.Path(".");
  const Comparison comparison = Alternate(
      files.rounds,
      [&] { return MillisecondsPerCall(kSaves, [&] { BareReplace(files.bare_file, folder, bytes); }); },
      [&] { return MillisecondsPerCall(kSaves, save); });
  PrintAtMostMore({claim, "write, flush, rename, flush", "ms"}, comparison, kSaveGoal);
}

void MeasureList(const Files& files) {
  script::CommandList list;
  for (int row = 1; row <= script::kListRows; ++row)
    list.SetText(row, "MSV? " + std::to_string(row) + ",4800,0 'Größe");
  const auto save = [&] { Check(script::WriteCommandFile(list, files.list_file).ok()); };
  save();
  MeasureLoad(files, "loading a full command list", files.list_file,
              [&] { Check(script::LoadCommandFile(list, files.list_file).ok()); });
  MeasureSave(files, "saving a full command list", files.list_file, save);
}

void MeasureSettings(const Files& files) {
  component::ComponentState state;
  const component::SettingsTarget target{state.connection, state.terminal, state.window};
  // An unchanged list is not written.
  const auto save = [&] {
    state.connection.ip_port = static_cast<std::int16_t>(state.connection.ip_port % 1000 + 1);
    const auto store = component::OpenIniStore(files.settings_file);
    Check(!component::SaveSettings(*store, target));
  };
  save();
  MeasureLoad(files, "loading the settings", files.settings_file,
              [&] { component::LoadSettings(*component::OpenIniStore(files.settings_file), target, true); });
  MeasureSave(files, "saving the settings", files.settings_file, save);
}

void MeasureLog(const Files& files) {
  constexpr int lines = 20000;
  const std::string line = "+12.345678,-0.001234,+98.765432 10000000";
  const std::string bytes = line + "\r\n";
  const int bare =
      open(files.folder.Path("bare.LOG").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  terminal::LogFile log;
  Check(log.Open(files.folder.Path("a.LOG")) == 0);
  const Comparison comparison = Alternate(
      files.rounds,
      [&] {
        return 1e3 * MillisecondsPerCall(lines, [&] {
                 Check(write(bare, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
               });
      },
      [&] { return 1e3 * MillisecondsPerCall(lines, [&] { Check(log.WriteLine(line) == 0); }); });
  close(bare);
  PrintAtMostMore({"a line of the log", "write(2) of the same bytes", "us"}, comparison, 1);
}

}  // namespace
}  // namespace kolvane::bench

int main(int argc, char** argv) {
  const kolvane::bench::Files files(argc > 1 ? std::atoi(argv[1]) : 15);
  kolvane::bench::MeasureLog(files);
  kolvane::bench::MeasureList(files);
  kolvane::bench::MeasureSettings(files);
}
