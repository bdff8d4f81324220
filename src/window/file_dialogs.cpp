#include "window/file_dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>

#include "base/ui/file_dialog.h"
#include "base/ui/qt_text.h"
#include "help/ui/help_key.h"

namespace kolvane::window {

namespace {

constexpr auto kAllFiles = "Alle Dateien (*.*)";

struct DialogRow {
  const char* kind;  // each remembers its own folder
  const char* title;
  const char* filters;  // descriptions and patterns alternating
  const char* suffix = "";
  bool must_exist = false;
  bool help_button = false;
};

constexpr auto kCommandList = "CommandList";
constexpr auto kListFilters = "Terminal Befehls-Dateien (*.CMD)|*.CMD|Alle Dateien (*.*)|*.*";

constexpr DialogRow kOpen[] = {
    {.kind = kCommandList,
     .title = "Befehlsliste öffnen",
     .filters = kListFilters,
     .must_exist = true,
     .help_button = true},
    {.kind = "Log",
     .title = "Logdatei öffnen",
     .filters = "Terminal Log-Dateien (*.LOG)|*.LOG|Alle Dateien (*.*)|*.*",
     .help_button = true},
    {.kind = "Text",
     .title = "Textdatei öffnen",
     .filters = "Textdateien (*.TXT)|*.TXT|Log-Dateien (*.LOG)|*.LOG|Alle Dateien (*.*)|*.*",
     .must_exist = true},
};

constexpr DialogRow kSave[] = {
    {.kind = "Terminal",
     .title = "Terminal Inhalt speichern",
     .filters = "Terminal Dateien (*.LOG)|*.LOG|Alle Dateien (*.*)|*.*",
     .suffix = ".LOG"},
    {.kind = kCommandList, .title = "Befehlsliste speichern", .filters = kListFilters, .suffix = ".CMD"},
    {.kind = "Pdf",
     .title = "Als PDF-Datei drucken",
     .filters = "PDF-Dateien (*.PDF)|*.PDF|Alle Dateien (*.*)|*.*",
     .suffix = ".PDF"},
};

// Each description already contains its patterns, as Qt requires.
QStringList NameFilters(const char* filters) {
  const QStringList parts = base::ToQt(filters).split(QLatin1Char('|'));
  QStringList names;
  for (qsizetype i = 0; i < parts.size(); i += 2) names << parts[i];
  return names;
}

// "*.*" means every file, even one without a dot.
void ShowEveryFileForStars(QFileDialog& dialog) {
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
    auto* files = dialog.findChild<QFileSystemModel*>();
    if (files != nullptr && filter == base::ToQt(kAllFiles)) files->setNameFilters({QStringLiteral("*")});
  });
}

void StartBeside(QFileDialog& dialog, const QFileInfo& file) {
  if (file.fileName().isEmpty() || !file.absoluteDir().exists()) return;
  dialog.setDirectory(file.absoluteDir());
  if (dialog.acceptMode() == QFileDialog::AcceptSave) dialog.selectFile(file.fileName());
}

std::optional<std::string> Ask(QFileDialog& dialog, const DialogRow& row, const std::string& beside) {
  dialog.setWindowTitle(base::ToQt(row.title));
  dialog.setNameFilters(NameFilters(row.filters));
  dialog.setFileMode(row.must_exist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  dialog.setDefaultSuffix(base::ToQt(row.suffix));
  ShowEveryFileForStars(dialog);
  base::PrepareFileDialog(dialog, row.kind);
  StartBeside(dialog, QFileInfo(base::ToQt(beside)));
  if (row.help_button) help::AddHelpButton(dialog);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return base::FromQt(dialog.selectedFiles().constFirst());
}

}  // namespace

std::optional<std::string> AskOpenName(QWidget* parent, OpenMode mode, const std::string& beside) {
  QFileDialog dialog(parent);
  dialog.setObjectName(QStringLiteral("OpenDialog"));
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  return Ask(dialog, kOpen[static_cast<std::size_t>(mode)], beside);
}

std::optional<std::string> AskSaveName(QWidget* parent, SaveMode mode, const std::string& beside) {
  QFileDialog dialog(parent);
  dialog.setObjectName(QStringLiteral("SaveDialog"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  return Ask(dialog, kSave[static_cast<std::size_t>(mode)], beside);
}

std::optional<std::string> CommandDialogs::AskOpenName(const std::string& current_file) {
  return window::AskOpenName(parent_, OpenMode::kCommandList, current_file);
}

std::optional<std::string> CommandDialogs::AskSaveName(const std::string& current_file) {
  return window::AskSaveName(parent_, SaveMode::kCommandList, current_file);
}

}  // namespace kolvane::window
