#pragma once

#include <cstdint>
#include <string>

#include "kolvane/Export.h"
#include "kolvane/Variant.h"

namespace kolvane {

// What a host gives to the terminal: its device object. The host derives from HostObject (operating mode 1)
// or from HostObject and IoObject (operating mode 0), overrides what its device supports and passes the
// object to MainClass::InitTerminal. The following holds for every operation of both classes.
//
// Who calls, when. Only the terminal calls, and only inside OpenTerminal.
//   1. Before the window is shown, once: the connection data, through GetDeviceProperty or GetDeviceInfo.
//      After that the device counts as open, because the host opened it.
//   2. While the window is prepared, and whenever the user selects another receive mode or time-out:
//      SetIOTimeout; FlushInQ after the first.
//   3. For each command: SetLastError(0), WriteCommand, LastError, LastErrorDescription; then for its answer
//      SetLastError(0), SetIOTimeout, Read, LastError, LastErrorDescription. An answer that ends at a gap is
//      read byte by byte: Read of one byte and the two error calls each time, and after the first byte
//      SetIOTimeout(50).
//   4. On connect and disconnect: SetLastError(0), InitializeDevice or OpenDevice (CloseDevice), LastError,
//      LastErrorDescription. When the user flushes the input: FlushInQ.
//   5. While the window closes: if the user left the device disconnected, it is opened again as in 4, so
//      that the host gets it back open. Then the reference to the object is released.
// A reference is held during each call, so an object that is released in the middle of a call (the window
// closes, InitTerminal gets another one) lives until the call returns.
//
// On which thread. Always that of OpenTerminal, from the event loop that runs there. A call that waits blocks
// the window for as long; it should not wait longer than the time-out it was given. It may process the host's
// own events but must not open a second terminal; no command and no attempt to connect starts before it has
// returned.
// The process's locale is the host's.
//
// With which values. Texts are UTF-8 for the host; when a text is converted to bytes, a character outside
// Windows-1252 becomes "?". Arguments passed by reference belong to the call: the host may change them, and
// changes are ignored except for DevIdx, Answer, Buffer, Value, Kind, Address and Count of FlushInQ. A
// changed DevIdx is used for the calls that follow.
//
// What a failure does. An operation fails when LastError is negative afterwards; the terminal shows
// LastErrorDescription (instead of the answer, after the command or in a message box) and continues. An
// exception of any type is a failure too: its what() is the description, its code is -901, and LastError is
// not called. Only an exception in step 1 is not caught: it reaches the caller of OpenTerminal, and no window
// is shown. Operations that the host does not override throw RuntimeError::Kind::kNoMember.

/// The `IO` sub-object of a host's device object: many devices, each addressed by its index (operating mode
/// 0). `DevIdx` is the index given to OpenTerminal.
class KOLVANE_EXPORT IoObject {
 public:
  virtual ~IoObject();

  /// Opens (or reopens) the device.
  virtual void InitializeDevice(std::int16_t& DevIdx);
  virtual void CloseDevice(std::int16_t& DevIdx);
  /// Sends `Command` followed by `Terminator`: 2 means CR LF, -1 nothing, any other value (0 to 255) the
  /// character with that Windows-1252 code. `Extra` is 0.
  virtual void WriteCommand(std::int16_t& DevIdx, std::string& Command, std::int16_t& Terminator,
                            std::int16_t& Extra);
  /// Reads one answer, waiting no longer than the time-out.
  ///
  /// `Binary` 0: text into `Answer`, up to the character with the code `Terminator` (10 for CR LF, 0 for
  /// none) or `Count` (16000) characters. `Answer` is passed in as `Count` spaces, the room for the answer;
  /// trailing spaces and terminators are stripped afterwards, and it may also be returned as bytes. `Binary`
  /// 1: exactly `Count` (1 to 1025) bytes into `Buffer`, which is passed in as that many zero bytes; missing
  /// bytes count as zero, and a text is converted to Windows-1252 bytes. A one-byte read that returns no byte
  /// ends an answer, as a failure does. `Zero` is 0. Of `Answer` and `Buffer`, the one not asked for is
  /// ignored.
  virtual void Read(std::int16_t& DevIdx, std::int16_t& Binary, std::int16_t& Zero, std::int16_t& Terminator,
                    std::int32_t& Count, Variant& Answer, Variant& Buffer);
  /// Sets the time-out of the following reads and writes, in milliseconds.
  virtual void SetIOTimeout(std::int16_t& DevIdx, std::int32_t& Milliseconds);
  /// Discards unread input. The user is told, with a count of 0.
  virtual void FlushInQ(std::int16_t& DevIdx);
  /// Stores property `Number` in `Value`. The terminal asks for 2, 3, 4, 5, 6 in this order and then for 9
  /// (port kinds 100 and 200) or 8 (all others):
  ///
  ///     2  port kind: 1, 2 COM1, COM2; 10, 20 RS485 on COM1, COM2; 90, 91 LPT1, LPT2; 100 TCP/IP;
  ///        200 USB; 488 GPIB; -1 none (offline)
  ///     3  baud rate, 32 bits
  ///     4  parity: 0 none, 1 even, 2 odd; for port kinds 90 and 91 the parallel-port mode
  ///     5  data bits; for port kind 100 the IP port instead, with 8 standing for port 7
  ///     6  stop bits
  ///     8  device address
  ///     9  IP address or USB serial number, a text
  ///
  /// Numbers have 16 bits except the baud rate; any Variant that converts will do. If one does not convert,
  /// for example because `Value` was left empty, OpenTerminal throws RuntimeError.
  virtual void GetDeviceProperty(std::int16_t& DevIdx, std::int16_t& Number, Variant& Value);
};

/// A host's device object. Operating mode 0 uses IO() and the three error members, mode 1 everything except
/// IO().
class KOLVANE_EXPORT HostObject {
 public:
  virtual ~HostObject();

  /// Called again for each operation; the returned object must outlive the operation.
  virtual IoObject& IO();

  /// Opens (or reopens) the device.
  virtual void OpenDevice();
  virtual void CloseDevice();
  /// Sends `Command`, which already carries its terminator.
  virtual void WriteCommand(const std::string& Command);
  /// Like IoObject::Read, for the one device. There is no call for the time-out: the host's own applies.
  virtual void Read(std::int16_t& Binary, std::int16_t& Terminator, std::int32_t& Count, Variant& Answer,
                    Variant& Buffer);
  /// Discards unread input and sets `Count`, initially 0, to the number of bytes discarded. The user is told
  /// the count, 0 if it throws.
  virtual void FlushInQ(std::int32_t& Count);
  /// Stores the port kind (as property 2 of IoObject::GetDeviceProperty) in `Kind`, and in `Address` a text
  /// for kinds 100 (IP address, its port is shown as 7) and 200 (USB serial number), otherwise a 16-bit
  /// number. If a value is left empty or does not convert, OpenTerminal throws RuntimeError.
  virtual void GetDeviceInfo(Variant& Kind, Variant& Address);

  /// How the last operation ended: any negative number is a failure. Called after operations in both modes. A
  /// number beyond 16 bits is clamped; one beyond 32 bits, and anything that is not a number, including
  /// nothing, is a failure.
  virtual Variant LastError();
  /// Called with 0 before an operation whose result is checked.
  virtual void SetLastError(std::int16_t Code);
  /// Called after each LastError, even if nothing failed; shown to the user if something did.
  virtual std::string LastErrorDescription();
};

}  // namespace kolvane
