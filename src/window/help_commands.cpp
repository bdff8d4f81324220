#include "window/help_commands.h"

#include <utility>

#include "base/files.h"
#include "device/histories.h"
#include "help/rtf_reader.h"
#include "window/icons.h"
#include "window/printing.h"
#include "window/texts.h"

namespace kolvane::window {

HelpCommands::HelpCommands(QWidget* window, std::vector<std::string> folders, base::Prompt& prompt)
    : window_(window),
      folders_(std::move(folders)),
      prompt_(prompt),
      key_(window, [this](const help::HelpTarget& target) { ShowTarget(DefaultFile(), target); }) {}

void HelpCommands::ShowHelp(std::int32_t number, const std::string& path) {
  ShowTarget(path.empty() ? DefaultFile() : path, {static_cast<std::uint32_t>(number), {}});
}

void HelpCommands::Close() {
  if (help_ != nullptr) help_->hide();
}

std::string HelpCommands::DefaultFile() const {
  return device::FirstFolderFile(folders_, help::kHelpFileName);
}

void HelpCommands::ShowTarget(const std::string& path, const help::HelpTarget& target) {
  if (const auto file = files_.Get(path)) Window().ShowTarget(file, target);
}

help::HelpWindow& HelpCommands::Window() {
  if (help_ == nullptr) {
    const auto print = [this](const QTextDocument& page, const QString& title, QWidget* parent) {
      PrintDocument(parent, prompt_, title, page);
    };
    help_ = new help::HelpWindow({Icon, print}, window_);
  }
  return *help_;
}

namespace {

constexpr char kReference[] = "TermCmdHelp.rtf";

base::Color ColorOf(const help::RtfFormat& format) {
  const auto color = static_cast<base::Color>(format.color.value_or(base::kNoColor));
  return format.bold ? color | base::kBold : color;
}

// The caret is at the start.
pane::PaneText PaneTextOf(const help::RtfDocument& document) {
  pane::PaneText text;
  bool first = true;
  for (const help::RtfParagraph& paragraph : document.paragraphs) {
    if (!std::exchange(first, false)) text.AppendLine("", base::kNoColor);
    for (const help::RtfRun& run : paragraph.runs) {
      text.SetSelectionColor(ColorOf(run.format));
      text.ReplaceSelection(run.text);
    }
    text.SetSelectionColor(base::kNoColor);
  }
  text.MoveTo(0);
  return text;
}

}  // namespace

CommandReference::CommandReference(pane::OutputPane& pane, std::vector<std::string> folders,
                                   MessagePrompt& prompt)
    : pane_(pane), folders_(std::move(folders)), prompt_(prompt) {}

void CommandReference::Press() {
  if (pane_.ShowsAside()) return pane_.EndAside();
  Show();
}

void CommandReference::Show() {
  const std::string path = device::FirstFolderFile(folders_, kReference);
  std::string bytes;
  if (const int error = base::ReadFile(path, bytes)) return prompt_.ShowError(texts::NotRead(path, error));
  const help::RtfResult read = help::ReadRtf(bytes);
  if (read.fault != help::RtfFault::kNotRichText) pane_.ShowAside(PaneTextOf(read.document));
  if (read.fault != help::RtfFault::kNone)
    prompt_.ShowError(path + ": " + std::string(help::FaultText(read.fault)));
}

}  // namespace kolvane::window
