#include "emulation/printer_port_driver.h"

#include <linux/parport.h>
#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace kolvane::emulation {
namespace {

int NumberIn(std::span<std::uint8_t> argument) {
  int number = 0;
  std::memcpy(&number, argument.data(), sizeof number);
  return number;
}

}  // namespace

DriverResult PrinterPortDriver::TakeMode(const char* verb, std::span<std::uint8_t> argument) {
  if (!claimed_) return Refused(EPERM);
  const int mode = NumberIn(argument);
  calls_.push_back(verb + std::to_string(mode));
  if (const auto found = refused_modes_.find(mode); found != refused_modes_.end())
    return Refused(found->second);
  mode_ = mode;
  return {};
}

DriverResult PrinterPortDriver::Control(unsigned long request, std::span<std::uint8_t> argument) {
  const std::lock_guard lock(mutex_);
  if (unplugged_) return Refused(ENODEV);
  if (const auto found = refused_.find(request); found != refused_.end()) return Refused(found->second);
  switch (request) {
    case PPCLAIM:
      calls_.emplace_back("claim");
      claimed_ = true;
      return {};
    case PPRELEASE:
      calls_.emplace_back("release");
      claimed_ = false;
      return {};
    case PPNEGOT:
      return TakeMode("negotiate ", argument);
    case PPSETMODE:
      return TakeMode("set ", argument);
    case PPGETMODES:
      std::memcpy(argument.data(), &abilities_, sizeof abilities_);
      return {};
    case PPCLRIRQ:
      return {};
    default:
      return Refused(ENOTTY);
  }
}

DriverResult PrinterPortDriver::Read(std::span<char> room) {
  const std::lock_guard lock(mutex_);
  if (unplugged_) return Refused(ENODEV);
  if (!claimed_) return Refused(EPERM);
  if (mode_ == IEEE1284_MODE_COMPAT) return Refused(EIO);
  if (answer_.empty()) return Refused(EAGAIN);
  const std::size_t size = std::min({room.size(), answer_.size(), piece_});
  answer_.copy(room.data(), size);
  answer_.erase(0, size);
  return {static_cast<long>(size)};
}

DriverResult PrinterPortDriver::Write(std::string_view bytes) {
  const std::lock_guard lock(mutex_);
  if (unplugged_) return Refused(ENODEV);
  if (!claimed_) return Refused(EPERM);
  if (mode_ != IEEE1284_MODE_COMPAT && mode_ != IEEE1284_MODE_EPP) return Refused(EINVAL);
  calls_.push_back("write " + std::string(bytes.substr(0, bytes.find_last_not_of("\r\n") + 1)));
  answer_ += bytes;
  return {static_cast<long>(bytes.size())};
}

void PrinterPortDriver::Refuse(unsigned long request, int error) {
  const std::lock_guard lock(mutex_);
  refused_[request] = error;
}

void PrinterPortDriver::Unplug() {
  const std::lock_guard lock(mutex_);
  unplugged_ = true;
}

void PrinterPortDriver::RefuseMode(int mode, int error) {
  const std::lock_guard lock(mutex_);
  refused_modes_[mode] = error;
}

void PrinterPortDriver::SetAbilities(unsigned int abilities) {
  const std::lock_guard lock(mutex_);
  abilities_ = abilities;
}

void PrinterPortDriver::SetPiece(std::size_t bytes) {
  const std::lock_guard lock(mutex_);
  piece_ = bytes;
}

std::vector<std::string> PrinterPortDriver::calls() {
  const std::lock_guard lock(mutex_);
  return calls_;
}

}  // namespace kolvane::emulation
