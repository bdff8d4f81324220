// The stand-alone program: a host like any other, on the public header alone.

#include <cstdio>
#include <exception>

#include "app/demo.h"
#include "app/end_signals.h"
#include "app/options.h"
#include "kolvane/MainClass.h"

namespace {

using kolvane::app::EndSignals;
using kolvane::app::Options;

enum ExitStatus { kDone = 0, kFailed = 1, kUsage = 2 };

void OpenTerminal(const Options& options, int close_descriptor) {
  kolvane::MainClass terminal;
  kolvane::TerminalOptions presets;
  presets.Folder = options.folder;
  presets.CloseDescriptor = close_descriptor;
  terminal.SetOptions(presets);
  terminal.OpenTerminal(options.mode, 0);
}

int Run(const Options& options) {
  const EndSignals end;
  switch (options.action) {
    case Options::Action::kOpen:
      OpenTerminal(options, end.descriptor());
      return kDone;
    case Options::Action::kDemo:
      kolvane::app::RunDemo(options.folder, end.descriptor());
      return kDone;
    case Options::Action::kHelp:
      std::fputs(kolvane::app::HelpText().c_str(), stdout);
      return kDone;
    case Options::Action::kVersion:
      std::puts("kolvane " KOLVANE_VERSION);
      return kDone;
    case Options::Action::kUsageError:
      break;
  }
  std::fprintf(stderr, "kolvane: %s (see kolvane --help)\n", options.error.c_str());
  return kUsage;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(kolvane::app::ParseOptions(argc, argv));
  } catch (const std::exception& error) {
    std::fprintf(stderr, "kolvane: %s\n", error.what());
    return kFailed;
  }
}
