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
    case ETIMEDOUT:  // of an established connection: the peer no longer acknowledges
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

Status StatusOfTransfer(int error) {
  const bool gone = error == EIO || error == ENXIO || error == ENODEV;
  return gone ? Status::kConnectionLost : StatusFromErrno(error);
}

std::string_view StatusText(std::int32_t code) {
  switch (static_cast<Status>(code)) {
    case Status::kOk:
      return {};
    case Status::kInvalidArgument:
      return "unbrauchbarer Wert";
    case Status::kNotOpen:
      return "keine Verbindung offen";
    case Status::kNotAvailable:
      return "Schnittstelle auf diesem System nicht vorhanden";
    case Status::kNoSuchNode:
      return "Gerät oder Gerätedatei nicht gefunden";
    case Status::kWrongNode:
      return "kein Gerät dieser Art";
    case Status::kPermissionDenied:
      return "keine Berechtigung";
    case Status::kBusy:
      return "von einem anderen Programm benutzt";
    case Status::kModeRefused:
      return "Betriebsart abgelehnt";
    case Status::kHostNotFound:
      return "Rechnername unbekannt";
    case Status::kLookupFailed:
      return "Namensdienst antwortet nicht";
    case Status::kRefused:
      return "Verbindung abgelehnt";
    case Status::kUnreachable:
      return "Gerät nicht erreichbar";
    case Status::kConnectTimeout:
      return "keine Antwort auf den Verbindungsversuch";
    case Status::kReadTimeout:
      return "keine Antwort innerhalb des Timeouts";
    case Status::kWriteTimeout:
      return "Befehl nicht innerhalb des Timeouts gesendet";
    case Status::kClosedByPeer:
      return "Verbindung vom Gerät geschlossen";
    case Status::kConnectionLost:
      return "Verbindung abgerissen";
    case Status::kIoError:
      return "Fehler des Systems bei der Übertragung";
    case Status::kOutOfResources:
      return "Speicher oder Dateien des Systems erschöpft";
    case Status::kGivenUp:
      return "abgebrochen";
  }
  return {};
}

}  // namespace kolvane::devlnk
