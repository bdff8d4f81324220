#pragma once

#include <linux/serial.h>
#include <umockdev.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace kolvane::emulation {

/// The result of a driver's call: a number from 0 on, or -1 and an errno.
struct DriverResult {
  long value = 0;
  int error = 0;
};

inline DriverResult Refused(int error) { return {-1, error}; }

/// The kernel's side of a device node. Called by the emulation's own thread while the caller waits.
class Driver {
 public:
  virtual ~Driver() = default;
  /// `argument` is a copy of what the request's pointer refers to, of the length in the request; what is
  /// written to it is returned to the caller.
  virtual DriverResult Control(unsigned long request, std::span<std::uint8_t> argument) = 0;
  virtual DriverResult Read(std::span<char> room) = 0;
  virtual DriverResult Write(std::string_view bytes) = 0;
};

/// A computer whose /sys and /dev hold what a test puts there, for this process and those that it starts. The
/// process must have been started with the emulation's preload library.
class EmulatedSystem {
 public:
  EmulatedSystem();
  ~EmulatedSystem();
  EmulatedSystem(const EmulatedSystem&) = delete;
  EmulatedSystem& operator=(const EmulatedSystem&) = delete;

  struct UsbText {
    std::string serial;
    std::string maker;
    std::string product;
  };
  /// A USB device `bus` ("1-1") whose interface a driver of the class has taken, and the node /dev/`node`.
  void AddUsb(const std::string& bus, const UsbText& text, const std::string& kind, const std::string& node);
  /// A node of a class that belongs to no USB device.
  void AddNode(const std::string& kind, const std::string& node);
  /// Pulls the plug: removes record and node.
  void RemoveUsb(const std::string& bus, const std::string& kind, const std::string& node);

  /// Connects /dev/`node` to the driver, which must outlive the system or be detached before.
  void Attach(const std::string& node, Driver& driver);
  void Detach(const std::string& node);
  /// Makes /dev/`node` a terminal line, on a bus with the settings `bus`, if given.
  void AttachLine(const std::string& node, serial_rs485* bus = nullptr);
  /// The other end of that line.
  int LineOf(const std::string& node) const;

 private:
  void Add(const std::string& record);
  void AttachHandler(const std::string& node, UMockdevIoctlBase* handler);

  UMockdevTestbed* testbed_;
};

/// Fails the test and returns false if the preload library is missing.
bool IsEmulated();

}  // namespace kolvane::emulation
