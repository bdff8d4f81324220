#include "window/command_dialogs.h"

#include <QFileDialog>

#include "window/text.h"

namespace kolvane::window {
namespace {

constexpr char kFilter[] = "Terminal Befehls-Dateien (*.CMD *.cmd);;Alle Dateien (*)";

std::optional<std::string> Chosen(const QString& name) {
  if (name.isEmpty()) return std::nullopt;
  return FromQt(name);
}

}  // namespace

std::optional<std::string> CommandDialogs::AskOpenName() {
  return Chosen(
      QFileDialog::getOpenFileName(parent_, QStringLiteral("Befehlsliste öffnen"), {}, ToQt(kFilter)));
}

std::optional<std::string> CommandDialogs::AskSaveName() {
  return Chosen(
      QFileDialog::getSaveFileName(parent_, QStringLiteral("Befehlsliste speichern"), {}, ToQt(kFilter)));
}

}  // namespace kolvane::window
