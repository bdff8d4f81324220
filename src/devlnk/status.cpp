#include "devlnk/status.h"

#include <cerrno>

namespace kolvane::devlnk {

Status StatusFromErrno(int error) {
  switch (error) {
    case ENOENT:
    case ENXIO:
    case ENODEV:
    case ENOTDIR:
    case ELOOP:
    case ENAMETOOLONG:
      return Status::kNoSuchNode;
    case ENOTTY:
    case EISDIR:
      return Status::kWrongNode;
    case EACCES:
    case EPERM:
    case EROFS:
      return Status::kPermissionDenied;
    case EBUSY:
      return Status::kBusy;
    case ECONNREFUSED:
      return Status::kRefused;
    case ENETUNREACH:
    case EHOSTUNREACH:
    case ENETDOWN:
    case EHOSTDOWN:
    case EADDRNOTAVAIL:
    case EAFNOSUPPORT:
      return Status::kUnreachable;
    case ECONNRESET:
    case ECONNABORTED:
    case EPIPE:
    case ENOTCONN:
    case ESHUTDOWN:
    case ETIMEDOUT:  // of a connection that stood: the other end no longer acknowledges
      return Status::kConnectionLost;
    case EMFILE:
    case ENFILE:
    case ENOMEM:
    case ENOBUFS:
      return Status::kOutOfResources;
    default:
      return Status::kIoError;
  }
}

bool EndsConnection(Status status) {
  return status == Status::kClosedByPeer || status == Status::kConnectionLost ||
         status == Status::kUnreachable;
}

}  // namespace kolvane::devlnk
