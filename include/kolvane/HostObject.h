#pragma once

#include <cstdint>
#include <string>

#include "kolvane/Export.h"
#include "kolvane/Variant.h"

namespace kolvane {

// What a host gives to the terminal: its device object. The host derives from HostObject (operating mode 1)
// or from HostObject and IoObject (operating mode 0), overrides what its device can do and hands the object
// to MainClass::InitTerminal. What follows holds for every operation of both classes.
//
// Who calls, when. The terminal calls, the host answers; the terminal never calls outside OpenTerminal.
//   1. Before the window is shown, once: the connection data, through GetDeviceProperty or GetDeviceInfo. The
//      device counts as open from then on: it is the host that opened it.
//   2. While the window is prepared, and whenever the user picks another receive mode or time-out:
//      SetIOTimeout; FlushInQ after the first.
//   3. For each command: SetLastError(0), WriteCommand, LastError, LastErrorDescription; then for its answer
//      SetLastError(0), SetIOTimeout, Read, LastError, LastErrorDescription. An answer that ends at a gap is
//      read byte by byte: Read of one byte and the two error calls each time, and after the first byte
//      SetIOTimeout(50).
//   4. On connect and disconnect: SetLastError(0), InitializeDevice or OpenDevice (CloseDevice), LastError,
//      LastErrorDescription. On "clear input": FlushInQ.
//   5. While the window closes: where the user left the device disconnected, it is opened again as in 4, so
//      that the host gets it back open. Then the reference to the object is given up.
// A reference is held for the time of each call, so that an object which is let go meanwhile (the window
// closes, InitTerminal gets another one) lives to the end of it.
//
// On which thread. That of OpenTerminal, always, out of the event loop that runs in there. A call that waits
// stops the window for as long; it should wait no longer than the time-out it was given. It may run events
// of the host's own, but must not open a second terminal; an attempt to connect is not begun again before it
// has returned. The process's locale is the host's.
//
// With which values. Texts are UTF-8 for the host; what the code page Windows-1252 lacks becomes "?" where a
// text has to become bytes. Arguments taken by reference belong to the call: the host may change them, and
// but for DevIdx, Answer, Buffer, Value, Kind, Address and Count of FlushInQ nobody looks at what it left. A
// changed DevIdx goes along with the calls that follow.
//
// What a failure does. An operation fails when LastError is negative afterwards; the terminal shows
// LastErrorDescription (in place of the answer, after the command or in a message box) and goes on. An
// exception, of any type, is a failure too: its what() is the description, its code is -901, and LastError is
// not asked. Only an exception of step 1 gets past the terminal: it reaches the caller of OpenTerminal, and
// no window is shown. Operations that the host does not override throw RuntimeError::Kind::kNoMember.

/// The `IO` sub-object of a host's device object: many devices, each addressed by its index (operating mode
/// 0). `DevIdx` is the index given to OpenTerminal.
class KOLVANE_EXPORT IoObject {
 public:
  virtual ~IoObject();

  /// Opens (or opens again) the device.
  virtual void InitializeDevice(std::int16_t& DevIdx);
  virtual void CloseDevice(std::int16_t& DevIdx);
  /// Sends `Command` ended as `Terminator` says: 2 CR LF, -1 nothing, any other value (0 to 255) the
  /// character with that Windows-1252 code. `Extra` is 0.
  virtual void WriteCommand(std::int16_t& DevIdx, std::string& Command, std::int16_t& Terminator,
                            std::int16_t& Extra);
  /// Reads one answer, waiting for the time-out at most.
  ///
  /// `Binary` 0: text into `Answer`, up to the character with the code `Terminator` (10 for CR LF, 0 for
  /// none) or `Count` (16000) characters. `Answer` comes as a text of `Count` spaces, the room for the
  /// answer; spaces and terminator at its end are stripped afterwards, and it may as well be handed back as
  /// bytes. `Binary` 1: exactly `Count` (1 to 1025) bytes into `Buffer`, which comes with as many zero bytes;
  /// bytes that are missing count as zero, and a text is taken for its Windows-1252 bytes. A read of one byte
  /// that brings none ends an answer, as a failure does. `Zero` is 0. The one of the two values that is not
  /// asked for is ignored.
  virtual void Read(std::int16_t& DevIdx, std::int16_t& Binary, std::int16_t& Zero, std::int16_t& Terminator,
                    std::int32_t& Count, Variant& Answer, Variant& Buffer);
  /// The time-out of the following reads and writes, in milliseconds.
  virtual void SetIOTimeout(std::int16_t& DevIdx, std::int32_t& Milliseconds);
  /// Discards what the device has sent and nobody has read. The user is told, with a count of 0.
  virtual void FlushInQ(std::int16_t& DevIdx);
  /// Puts property `Number` into `Value`. Asked for 2, 3, 4, 5, 6 in this order and then for 9 (port kinds
  /// 100 and 200) or 8 (all others):
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
  /// Numbers have 16 bits but for the baud rate; any Variant that converts will do. One that does not, a
  /// `Value` left as nothing for one, makes OpenTerminal throw RuntimeError.
  virtual void GetDeviceProperty(std::int16_t& DevIdx, std::int16_t& Number, Variant& Value);
};

/// A host's device object. Operating mode 0 works through IO() and the three error members, mode 1 through
/// everything but IO().
class KOLVANE_EXPORT HostObject {
 public:
  virtual ~HostObject();

  /// Asked again for each operation; the object returned outlives the operation.
  virtual IoObject& IO();

  /// Opens (or opens again) the device.
  virtual void OpenDevice();
  virtual void CloseDevice();
  /// Sends `Command`, which already carries its terminator.
  virtual void WriteCommand(const std::string& Command);
  /// As IoObject::Read, for the one device. There is no call for the time-out: the host's own one holds.
  virtual void Read(std::int16_t& Binary, std::int16_t& Terminator, std::int32_t& Count, Variant& Answer,
                    Variant& Buffer);
  /// Discards unread input and sets `Count`, which comes as 0, to the number of bytes discarded; the user is
  /// told, of 0 where it throws.
  virtual void FlushInQ(std::int32_t& Count);
  /// Puts the port kind (as property 2 of IoObject::GetDeviceProperty) into `Kind`, and into `Address` a text
  /// for kinds 100 (IP address, its port is shown as 7) and 200 (USB serial number), a 16-bit number
  /// otherwise. A value that does not convert or is left as nothing makes OpenTerminal throw RuntimeError.
  virtual void GetDeviceInfo(Variant& Kind, Variant& Address);

  /// How the last operation ended: negative for a failure, whatever number it is. Both modes ask after an
  /// operation; a number beyond 16 bits is taken for the nearest one within, and what is not a number,
  /// nothing included, is a failure.
  virtual Variant LastError();
  /// Called with 0 before an operation that is to be judged.
  virtual void SetLastError(std::int16_t Code);
  /// Asked after each LastError, also where nothing failed; shown to the user when something did.
  virtual std::string LastErrorDescription();
};

}  // namespace kolvane
