// A program that opens the Kolvane terminal on its own instruments: cpp-host [--mode 0|1] [--device N]
// [--list FILE]. It prints each call that its device object receives. With --list the command file is played
// at once, and its `BYE` closes the terminal without a user.

#include <kolvane/MainClass.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>

#include "close_request.h"
#include "host_device.h"

namespace {

struct Arguments {
  std::int16_t mode = 0;
  std::int16_t device = 1;
  const char* list = nullptr;
  bool good = true;
};

Arguments Parse(int argc, char** argv) {
  Arguments arguments;
  for (int i = 1; i < argc; i += 2) {
    const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
    if (value != nullptr && std::strcmp(argv[i], "--mode") == 0) {
      arguments.mode = static_cast<std::int16_t>(std::atoi(value));
    } else if (value != nullptr && std::strcmp(argv[i], "--device") == 0) {
      arguments.device = static_cast<std::int16_t>(std::atoi(value));
    } else if (value != nullptr && std::strcmp(argv[i], "--list") == 0) {
      arguments.list = value;
    } else {
      arguments.good = false;
    }
  }
  return arguments;
}

void OpenTerminal(const Arguments& arguments) {
  const host::CloseRequest close;
  kolvane::TerminalOptions options;
  options.CloseDescriptor = close.descriptor();
  if (arguments.list != nullptr) {
    options.CommandList = arguments.list;
    options.PlayAtStart = true;
  }
  kolvane::MainClass terminal;
  terminal.SetOptions(options);
  terminal.InitTerminal(std::make_shared<host::HostDevice>(stdout, [&close] { close.Make(); }));
  terminal.OpenTerminal(arguments.mode, arguments.device);
  std::printf("CanUnload is %s\n", terminal.CanUnload().ToBool() ? "True" : "False");
}

}  // namespace

int main(int argc, char** argv) {
  const Arguments arguments = Parse(argc, argv);
  if (!arguments.good) {
    std::fputs("usage: cpp-host [--mode 0|1] [--device N] [--list FILE]\n", stderr);
    return 2;
  }
  try {
    OpenTerminal(arguments);
    return 0;
  } catch (const std::exception& error) {
    // Nothing was shown: no such device, no display, a stored setting that cannot be read.
    std::fprintf(stderr, "cpp-host: the terminal did not open: %s\n", error.what());
    return 1;
  }
}
