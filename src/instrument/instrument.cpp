#include "kolvane/Instrument.h"

#include <stdexcept>

#include "instrument/answer.h"
#include "instrument/connection.h"

namespace kolvane {
namespace {

using devlnk::Code;
using devlnk::PortSession;
using Settings = instrument::Connection::Settings;

std::int32_t Send(PortSession& session, const Settings& settings, std::string_view command) {
  std::string line;
  line.reserve(command.size() + settings.write_termination.size());
  line.append(command).append(settings.write_termination);
  return Code(session.Write(line));
}

MessageEnd EndOf(devlnk::MessageEnd end) {
  switch (end) {
    case devlnk::MessageEnd::kFull:
      return MessageEnd::kCount;
    case devlnk::MessageEnd::kTerminator:
      return MessageEnd::kTermination;
    case devlnk::MessageEnd::kOwnEnd:
      return MessageEnd::kInstrument;
    case devlnk::MessageEnd::kGap:
      break;
  }
  return MessageEnd::kGap;
}

}  // namespace

Instrument::Instrument(const std::string& Resource, const InstrumentOptions& Options)
    : connection_(std::make_unique<instrument::Connection>(Resource, Options)) {}

Instrument::Instrument(Instrument&&) noexcept = default;
Instrument& Instrument::operator=(Instrument&&) noexcept = default;
Instrument::~Instrument() = default;

const std::string& Instrument::Resource() const { return connection_->resource(); }

void Instrument::Close() { connection_->Close(); }

bool Instrument::IsOpen() const { return connection_->is_open(); }

void Instrument::Write(std::string_view Command) {
  connection_->Run(
      [&](PortSession& session, const Settings& settings) { return Send(session, settings, Command); });
}

std::string Instrument::Read() {
  std::string answer;
  connection_->Run([&](PortSession& session, const Settings& settings) {
    return instrument::ReadAnswer(session, settings.read_termination, answer);
  });
  return answer;
}

std::string Instrument::Query(std::string_view Command) {
  std::string answer;
  connection_->Run([&](PortSession& session, const Settings& settings) {
    const std::int32_t failed = Send(session, settings, Command);
    return failed < 0 ? failed : instrument::ReadAnswer(session, settings.read_termination, answer);
  });
  return answer;
}

void Instrument::WriteBytes(std::string_view Bytes) {
  connection_->Run([&](PortSession& session, const Settings&) { return Code(session.Write(Bytes)); });
}

std::string Instrument::ReadBytes(std::size_t Count) {
  std::string bytes;
  connection_->Run(
      [&](PortSession& session, const Settings&) { return instrument::ReadCount(session, Count, bytes); });
  return bytes;
}

std::string Instrument::QueryBlock(std::string_view Command) {
  std::string data;
  connection_->Run([&](PortSession& session, const Settings& settings) {
    const std::int32_t failed = Send(session, settings, Command);
    return failed < 0 ? failed : instrument::ReadBlock(session, settings.read_termination, data);
  });
  return data;
}

std::vector<double> Instrument::QueryValues(std::string_view Command) {
  return instrument::SplitValues(Query(Command));
}

InstrumentMessage Instrument::ReadMessage(const MessageLimits& Limits) {
  if (Limits.Count == 0 || Limits.Count > devlnk::InputQueue::kLimit)
    throw std::invalid_argument("the count must be 1 byte to 16 MiB");
  InstrumentMessage message{};
  connection_->Run([&](PortSession& session, const Settings&) {
    devlnk::MessageEnd end{};
    const std::int32_t status = Code(session.ReadMessage(
        {Limits.Count, Limits.Termination, Limits.InstrumentEnds, Limits.GapMs}, message.Bytes, end));
    message.End = EndOf(end);
    return status;
  });
  return message;
}

std::size_t Instrument::Flush() {
  std::size_t count = 0;
  connection_->Run([&](PortSession& session, const Settings&) {
    count = session.Flush();
    return 0;
  });
  return count;
}

std::size_t Instrument::BytesWaiting() const { return connection_->BytesWaiting(); }

std::uint8_t Instrument::ReadStatusByte() {
  std::uint8_t status_byte = 0;
  connection_->Run(
      [&](PortSession& session, const Settings&) { return Code(session.ReadStatusByte(status_byte)); });
  return status_byte;
}

void Instrument::SetLine(std::int32_t Baud, SerialParity Parity, std::int16_t DataBits, std::int16_t StopBits,
                         SerialFlow Flow) {
  InstrumentOptions options;
  options.Baud = Baud;
  options.Parity = Parity;
  options.DataBits = DataBits;
  options.StopBits = StopBits;
  connection_->SetLine(options, Flow);
}

std::int32_t Instrument::TimeoutMs() const { return connection_->settings().timeout_ms; }

void Instrument::SetTimeoutMs(std::int32_t Milliseconds) {
  if (Milliseconds < 0) throw std::invalid_argument("the time-out must not be negative");
  connection_->Change([&](Settings& settings) { settings.timeout_ms = Milliseconds; });
}

std::string Instrument::ReadTermination() const { return connection_->settings().read_termination; }

void Instrument::SetReadTermination(const std::string& Termination) {
  connection_->Change([&](Settings& settings) { settings.read_termination = Termination; });
}

std::string Instrument::WriteTermination() const { return connection_->settings().write_termination; }

void Instrument::SetWriteTermination(const std::string& Termination) {
  connection_->Change([&](Settings& settings) { settings.write_termination = Termination; });
}

}  // namespace kolvane
