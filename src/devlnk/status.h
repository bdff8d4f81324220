#pragma once

#include <cerrno>
#include <cstdint>
#include <string_view>

namespace kolvane::devlnk {

/// The C functions' results below 0, explained to users in docs/status-codes.md. -1 is free: callers use it
/// for operations that they give up themselves. All fit 16 bits: callers may truncate them.
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

/// The only translations of errno, so that the same failure has the same code on every port kind.
Status StatusFromErrno(int error);
/// For a transfer on an open device node: one whose device has gone is a lost connection.
Status StatusOfTransfer(int error);

/// The meaning of a status, German, UTF-8 ("Verbindung abgelehnt"); empty if it is not a failure of this
/// library.
std::string_view StatusText(std::int32_t code);

/// Whether no transfer is possible any more until the port is reopened.
constexpr bool EndsConnection(Status status) {
  return status == Status::kClosedByPeer || status == Status::kConnectionLost ||
         status == Status::kUnreachable;
}

}  // namespace kolvane::devlnk
