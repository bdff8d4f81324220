#include "base/system.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace kolvane::base {
namespace {

TEST(SystemErrorText, IsGerman) {
  EXPECT_EQ(SystemErrorText(ENOENT), "Datei oder Ordner nicht gefunden");
  EXPECT_EQ(SystemErrorText(EACCES), "Keine Berechtigung");
  EXPECT_EQ(SystemErrorText(EPERM), "Keine Berechtigung");
  EXPECT_EQ(SystemErrorText(EISDIR), "Der Name bezeichnet einen Ordner");
  EXPECT_EQ(SystemErrorText(ENOTDIR), "Ein Teil des Pfades ist kein Ordner");
  EXPECT_EQ(SystemErrorText(ENOSPC), "Der Datenträger ist voll");
  EXPECT_EQ(SystemErrorText(EFBIG), "Die Datei würde zu groß");
  EXPECT_EQ(SystemErrorText(EROFS), "Der Datenträger ist schreibgeschützt");
  EXPECT_EQ(SystemErrorText(ENAMETOOLONG), "Der Name ist zu lang");
  EXPECT_EQ(SystemErrorText(ETIMEDOUT), "Es kam zu lange nichts");
  EXPECT_EQ(SystemErrorText(EIO), "Fehler des Datenträgers");
}

TEST(SystemErrorText, HasTheNumberOfUnknownErrors) { EXPECT_EQ(SystemErrorText(9999), "Systemfehler 9999"); }

}  // namespace
}  // namespace kolvane::base
