#include <sys/prctl.h>
#include <sys/signalfd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <system_error>
#include <variant>

#include "amplifier/options.h"
#include "amplifier/replay_server.h"
#include "amplifier/server.h"
#include "amplifier/whole_file.h"
#include "base/descriptor.h"

namespace {

using namespace kolvane::amplifier;

constexpr int kFailure = 1;
constexpr int kWrongUsage = 2;

int PrintError(const char* text, int status) {
  std::fprintf(stderr, "kolvane-amplifier: %s\n", text);
  return status;
}

// Signals are delivered as readable data, so none can occur between a check and a wait.
kolvane::base::Descriptor EndSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  return kolvane::base::Descriptor(signalfd(-1, &signals, SFD_CLOEXEC));
}

void Announce(const Options& options, unsigned port) {
  if (options.tcp_port) std::printf("listening on 127.0.0.1:%u\n", port);
  if (!options.pty_link.empty()) std::printf("pty ready at %s\n", options.pty_link.c_str());
  std::fflush(stdout);
}

// A replay that cannot start is a usage error, so status 1 always means a difference.
int ServeReplay(const Options& options, int stop) {
  std::optional<ReplayServer> server;
  try {
    server.emplace(options, stop);
  } catch (const std::exception& error) {
    return PrintError(error.what(), kWrongUsage);
  }
  Announce(options, server->Port());
  const std::string difference = server->Run(stop);
  return difference.empty() ? 0 : PrintError(difference.c_str(), kFailure);
}

int Serve(const Options& options) {
  const kolvane::base::Descriptor stop = EndSignals();
  if (options.exit_with_parent) prctl(PR_SET_PDEATHSIG, SIGTERM);
  try {
    if (!options.replay.empty()) return ServeReplay(options, stop.get());
    Server server(options, stop.get());
    Announce(options, server.Port());
    server.Run(stop.get());
    return 0;
  } catch (const ReadingStopped&) {
    return 0;
  } catch (const std::exception& error) {
    return PrintError(error.what(), kFailure);
  }
}

}  // namespace

int main(int argc, char* argv[]) {
  kolvane::base::FillStandardDescriptors();
  const auto parsed = ParseOptions(argc, argv);
  if (const auto* error = std::get_if<UsageError>(&parsed))
    return PrintError(error->text.c_str(), kWrongUsage);
  if (const auto* information = std::get_if<Information>(&parsed)) {
    if (std::fputs(information->text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0) return 0;
    return PrintError(("cannot write: " + std::generic_category().message(errno)).c_str(), kFailure);
  }
  return Serve(std::get<Options>(parsed));
}
