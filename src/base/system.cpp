#include "base/system.h"

#include <cerrno>
#include <cstdlib>
#include <string_view>

#include "base/texts.h"

namespace kolvane::base {
namespace {

struct Row {
  int error;
  std::string_view text;
};

constexpr Row kTexts[] = {
    {ENOENT, "Datei oder Ordner nicht gefunden"},
    {EACCES, "Keine Berechtigung"},
    {EPERM, "Keine Berechtigung"},
    {EISDIR, "Der Name bezeichnet einen Ordner"},
    {ENOTDIR, "Ein Teil des Pfades ist kein Ordner"},
    {EEXIST, "Die Datei ist schon vorhanden"},
    {ENOSPC, "Der Datenträger ist voll"},
    {EDQUOT, "Der Datenträger ist voll"},
    {EFBIG, "Die Datei würde zu groß"},
    {EROFS, "Der Datenträger ist schreibgeschützt"},
    {ENAMETOOLONG, "Der Name ist zu lang"},
    {EINVAL, "Der Name ist ungültig"},
    {ELOOP, "Der Verweis führt im Kreis"},
    {EIO, "Fehler des Datenträgers"},
    {EPIPE, "Die Gegenseite liest nicht mehr"},
    {EAGAIN, "Die Gegenseite nimmt nichts mehr an"},
    {ETIMEDOUT, "Es kam zu lange nichts"},
    {ENXIO, "Gerät nicht bereit"},
    {ENODEV, "Das ist keine gewöhnliche Datei"},
    {ETXTBSY, "Die Datei wird gerade ausgeführt"},
    {EMFILE, "Zu viele offene Dateien"},
    {ENFILE, "Zu viele offene Dateien"},
    {ENOMEM, texts::kNoMemory},
};

}  // namespace

std::string SystemErrorText(int error) {
  for (const Row& row : kTexts) {
    if (row.error == error) return std::string(row.text);
  }
  return "Systemfehler " + std::to_string(error);
}

std::filesystem::path UserFolder(const char* variable, const char* below_home) {
  namespace fs = std::filesystem;
  constexpr auto kOwn = "Kolvane";
  const char* named = std::getenv(variable);
  if (named != nullptr && fs::path(named).is_absolute()) return fs::path(named) / kOwn;
  const char* home = std::getenv("HOME");
  if (home == nullptr || !fs::path(home).is_absolute()) return {};
  return fs::path(home) / below_home / kOwn;
}

}  // namespace kolvane::base
