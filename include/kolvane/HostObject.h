#pragma once

#include <cstdint>
#include <string>

#include "kolvane/Export.h"
#include "kolvane/Variant.h"

namespace kolvane {

/// The `IO` sub-object of a host's device object: many devices, each addressed by its index (operating mode
/// 0).
///
/// The terminal calls it on the thread that called MainClass::OpenTerminal. Texts are UTF-8. Arguments taken
/// by reference may be changed by the host. A host overrides what it offers; the rest throws
/// RuntimeError::Kind::kNoMember. An exception thrown while the window opens reaches the caller of
/// OpenTerminal; one thrown later becomes a failed operation with its text as the error description.
class KOLVANE_EXPORT IoObject {
 public:
  virtual ~IoObject();

  /// Opens (or opens again) the device `DevIdx`.
  virtual void InitializeDevice(std::int16_t& DevIdx);
  virtual void CloseDevice(std::int16_t& DevIdx);
  /// Sends `Command` ended as `Terminator` says: 2 CR LF, -1 nothing, 0 to 255 that character. `Extra` is 0.
  virtual void WriteCommand(std::int16_t& DevIdx, std::string& Command, std::int16_t& Terminator,
                            std::int16_t& Extra);
  /// Reads one answer. `Binary` 0: text up to the character `Terminator` (10 for CR LF) or `Count`
  /// characters, into `Answer`, which comes filled with `Count` blanks. `Binary` 1: `Count` bytes into
  /// `Buffer`. `Zero` is always 0.
  virtual void Read(std::int16_t& DevIdx, std::int16_t& Binary, std::int16_t& Zero, std::int16_t& Terminator,
                    std::int32_t& Count, Variant& Answer, Variant& Buffer);
  /// The time-out of the following reads and writes, in milliseconds.
  virtual void SetIOTimeout(std::int16_t& DevIdx, std::int32_t& Milliseconds);
  /// Discards what the device has sent and nobody has read.
  virtual void FlushInQ(std::int16_t& DevIdx);
  /// Hands over property `Number`: 2 port kind, 3 baud rate, 4 parity (port kinds 90 and 91: the
  /// parallel-port mode too), 5 data bits, 6 stop bits, 8 device address, 9 IP address or USB serial number.
  virtual void GetDeviceProperty(std::int16_t& DevIdx, std::int16_t& Number, Variant& Value);
};

/// A host's device object, handed to MainClass::InitTerminal.
///
/// Operating mode 0 works through IO() and the two error properties; mode 1 through the operations of this
/// class. What is said of IoObject about threads, texts, references and exceptions holds here too.
class KOLVANE_EXPORT HostObject {
 public:
  virtual ~HostObject();

  virtual IoObject& IO();

  virtual void OpenDevice();
  virtual void CloseDevice();
  /// Sends `Command`, which already carries its terminator.
  virtual void WriteCommand(const std::string& Command);
  /// As IoObject::Read, for the one device.
  virtual void Read(std::int16_t& Binary, std::int16_t& Terminator, std::int32_t& Count, Variant& Answer,
                    Variant& Buffer);
  /// Discards unread input; sets `Count` to the number of bytes discarded.
  virtual void FlushInQ(std::int32_t& Count);
  /// Hands over the port kind and the address: a text for kinds 100 (IP address) and 200 (USB serial number),
  /// a number otherwise.
  virtual void GetDeviceInfo(Variant& Kind, Variant& Address);

  /// The code of the last failed operation, negative; 0 when there was none. Both modes ask it after each
  /// operation.
  virtual Variant LastError();
  /// Called with 0 before an exchange.
  virtual void SetLastError(std::int16_t Code);
  virtual std::string LastErrorDescription();
};

}  // namespace kolvane
