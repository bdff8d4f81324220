#pragma once

#include <cerrno>
#include <cstdint>
#include <string_view>

namespace kolvane::devlnk {

/// What the C functions answer below 0. docs/status-codes.md explains each to the user. -1 stays free:
/// callers use it for what they give up themselves. All fit 16 bits, since callers may cut a status to that.
enum class Status : std::int32_t {
  kOk = 0,

  kInvalidArgument = -2,
  kNotOpen = -3,
  kNotAvailable = -4,

  kNoSuchNode = -10,
  kWrongNode = -11,
  kPermissionDenied = -12,
  kBusy = -13,
  kModeRefused = -14,

  kHostNotFound = -20,
  kLookupFailed = -21,
  kRefused = -22,
  kUnreachable = -23,
  kConnectTimeout = -24,

  kReadTimeout = -30,
  kWriteTimeout = -31,

  kClosedByPeer = -40,
  kConnectionLost = -41,

  kIoError = -50,
  kOutOfResources = -51,

  kGivenUp = -60,
};

constexpr std::int32_t Code(Status status) { return static_cast<std::int32_t>(status); }

/// The one translation of errno, so that the same failure has the same code on every kind of port.
Status StatusFromErrno(int error);
/// Whether the call may succeed when it is tried again.
constexpr bool IsTransient(int error) { return error == EINTR || error == EAGAIN; }

/// What a status means, German, UTF-8 ("Verbindung abgelehnt"); empty for a number that is no failure of this
/// library.
std::string_view StatusText(std::int32_t code);

/// Whether nothing can be transferred any more until the port is opened again.
bool EndsConnection(Status status);

}  // namespace kolvane::devlnk
