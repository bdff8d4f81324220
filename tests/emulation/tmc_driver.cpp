#include "emulation/tmc_driver.h"

#include <linux/usb/tmc.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace kolvane::emulation {
namespace {

constexpr std::uint8_t kMessageWaits = 0x10;

}  // namespace

DriverResult TmcDriver::Note(std::string call) {
  if (unplugged_) return Refused(ENODEV);
  calls_.push_back(std::move(call));
  return {};
}

DriverResult TmcDriver::Control(unsigned long request, std::span<std::uint8_t> argument) {
  const std::lock_guard lock(mutex_);
  std::uint32_t number = 0;
  switch (request) {
    case USBTMC_IOCTL_CLEAR:
      answer_.clear();
      return Note("clear");
    case USBTMC_IOCTL_AUTO_ABORT:
      return Note("auto-abort");
    case USBTMC488_IOCTL_READ_STB:
      argument[0] = kMessageWaits;
      return Note("status byte");
    case USBTMC_IOCTL_SET_TIMEOUT:
      std::memcpy(&number, argument.data(), sizeof number);
      return number < 100 ? Refused(EINVAL) : Note("timeout " + std::to_string(number));
    default:
      return Refused(ENOTTY);
  }
}

DriverResult TmcDriver::Read(std::span<char> room) {
  std::unique_lock lock(mutex_);
  released_.wait(lock, [this] { return !held_; });
  if (unplugged_) return Refused(ENODEV);
  if (answer_.empty()) return Refused(ETIMEDOUT);
  const std::size_t size = std::min(room.size(), answer_.size());
  answer_.copy(room.data(), size);
  answer_.erase(0, size);
  return {static_cast<long>(size)};
}

DriverResult TmcDriver::Write(std::string_view bytes) {
  const std::lock_guard lock(mutex_);
  const std::string command(bytes.substr(0, bytes.find_last_not_of("\r\n") + 1));
  const DriverResult result = Note("write " + command);
  if (result.value < 0) return result;
  if (command.ends_with('?')) answer_ += command.substr(0, command.size() - 1) + "\r\n";
  return {static_cast<long>(bytes.size())};
}

void TmcDriver::Hold() {
  const std::lock_guard lock(mutex_);
  held_ = true;
}

void TmcDriver::Release() {
  const std::lock_guard lock(mutex_);
  held_ = false;
  released_.notify_all();
}

void TmcDriver::Unplug() {
  const std::lock_guard lock(mutex_);
  unplugged_ = true;
}

std::vector<std::string> TmcDriver::calls() {
  const std::lock_guard lock(mutex_);
  return calls_;
}

}  // namespace kolvane::emulation
