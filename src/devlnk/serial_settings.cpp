#include "devlnk/serial_settings.h"

namespace kolvane::devlnk {
namespace {

struct Rate {
  std::uint32_t baud;
  tcflag_t code;
};

constexpr Rate kRates[] = {
    {50, B50},           {75, B75},           {110, B110},         {134, B134},         {150, B150},
    {200, B200},         {300, B300},         {600, B600},         {1200, B1200},       {1800, B1800},
    {2400, B2400},       {4800, B4800},       {9600, B9600},       {19200, B19200},     {38400, B38400},
    {57600, B57600},     {115200, B115200},   {230400, B230400},   {460800, B460800},   {500000, B500000},
    {576000, B576000},   {921600, B921600},   {1000000, B1000000}, {1152000, B1152000}, {1500000, B1500000},
    {2000000, B2000000}, {2500000, B2500000}, {3000000, B3000000}, {3500000, B3500000}, {4000000, B4000000},
};

// Rates without a code of their own go by number; the others keep theirs, which other programs can read.
tcflag_t RateCode(std::uint32_t baud) {
  for (const Rate& rate : kRates) {
    if (rate.baud == baud) return rate.code;
  }
  return BOTHER;
}

constexpr cc_t kXon = 0x11;
constexpr cc_t kXoff = 0x13;

tcflag_t ParityFlags(Parity parity) {
  switch (parity) {
    case Parity::kEven:
      return PARENB;
    case Parity::kOdd:
      return PARENB | PARODD;
    case Parity::kNone:
      break;
  }
  return 0;
}

std::optional<Parity> ParityFrom(std::string_view text) {
  if (text.empty() || text == "n" || text == "N") return Parity::kNone;
  if (text == "e" || text == "E") return Parity::kEven;
  if (text == "o" || text == "O") return Parity::kOdd;
  return std::nullopt;
}

}  // namespace

std::optional<SerialParameters> SerialParametersFrom(const PortRequest& request) {
  const auto parity = ParityFrom(request.text);
  if (request.baud < 1 || !parity) return std::nullopt;
  return SerialParameters{static_cast<std::uint32_t>(request.baud), *parity, request.data_bits == 7,
                          request.stop_bits == 2, request.flow};
}

termios2 SettingsFor(const SerialParameters& parameters, const termios2& before) {
  termios2 settings{};
  settings.c_line = before.c_line;
  settings.c_cflag = (before.c_cflag & HUPCL) | CREAD | CLOCAL | RateCode(parameters.baud) |
                     ParityFlags(parameters.parity) | (parameters.seven_data_bits ? CS7 : CS8) |
                     (parameters.two_stop_bits ? CSTOPB : 0) |
                     (parameters.flow == FlowControl::kRtsCts ? CRTSCTS : 0);
  settings.c_ispeed = parameters.baud;
  settings.c_ospeed = parameters.baud;
  // With parity a damaged character arrives as NUL: an error that shows, not a digit that is missing.
  settings.c_iflag = IGNBRK | (parameters.parity == Parity::kNone ? 0 : INPCK);
  if (parameters.flow == FlowControl::kXonXoff) settings.c_iflag |= IXON | IXOFF;
  settings.c_cc[VSTART] = kXon;
  settings.c_cc[VSTOP] = kXoff;
  settings.c_cc[VMIN] = 0;
  settings.c_cc[VTIME] = kSerialSliceMs / 100;
  return settings;
}

serial_rs485 Rs485SettingsFor(const serial_rs485& before) {
  serial_rs485 bus = before;
  bus.flags |= SER_RS485_ENABLED | SER_RS485_RTS_ON_SEND;
  bus.flags &= ~static_cast<std::uint32_t>(SER_RS485_RTS_AFTER_SEND | SER_RS485_RX_DURING_TX);
  return bus;
}

bool RateMatches(std::uint32_t wanted, std::uint32_t reported) {
  const std::uint64_t difference = wanted > reported ? wanted - reported : reported - wanted;
  return difference * 100 <= std::uint64_t{wanted} * 3;
}

}  // namespace kolvane::devlnk
