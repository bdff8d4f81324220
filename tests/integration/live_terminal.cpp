#include "integration/live_terminal.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

namespace kolvane::integration {
namespace {

constexpr std::int32_t kTimeoutMs = 5000;

std::string LinkPath() { return testing::TempDir() + "kolvane_line_" + std::to_string(getpid()); }

}  // namespace

LiveTerminal::LiveTerminal(Line line, amplifier::Options options)
    : amplifier(WithLine(line, std::move(options), LinkPath())),
      library(""),
      core({device, parameters, state}, library, {pane, log, prompt, view}),
      controls(state.receive, state.shown, core.device, view),
      link_(LinkPath()) {
  Configure(line);
  core.connect.Press();
}

LiveTerminal::~LiveTerminal() { core.device.Close(); }

amplifier::Options LiveTerminal::WithLine(Line line, amplifier::Options options, const std::string& link) {
  if (line == Line::kTcp) options.tcp_port = 0;
  if (line == Line::kPty) options.pty_link = link;
  return options;
}

void LiveTerminal::Configure(Line line) {
  setenv("KOLVANE_PORT_LIBRARY", KOLVANE_PORT_LIBRARY_FILE, 1);
  setenv("KOLVANE_COM1", link_.c_str(), 1);
  device.OperMode = 2;
  parameters.timeout_ms = kTimeoutMs;
  state.shown.timeout = std::to_string(kTimeoutMs);
  if (line == Line::kTcp) {
    parameters.port_code = device::port_code::kTcpIp;
    parameters.ip_address = "localhost";
    parameters.ip_port = static_cast<std::int16_t>(amplifier.Port());
  } else {
    parameters.port_code = device::port_code::kCom1;
    parameters.baud = 38400;
    parameters.parity = 0;
    parameters.data_bits = 8;
    parameters.stop_bits = 1;
  }
}

std::string LiveTerminal::Ask(const std::string& command) {
  core.session.SendCommand(command);
  if (!core.session.PostSendCheck(command).continues) return "";
  core.session.GetAnswer();
  return state.last_answer.text;
}

}  // namespace kolvane::integration
