#include "window/command_reference.h"

#include <utility>

#include "base/read_file.h"
#include "device/folder_file.h"
#include "help/rtf_reader.h"
#include "help/rtf_texts.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

constexpr char kReference[] = "TermCmdHelp.rtf";

terminal::Color ColorOf(const help::RtfFormat& format) {
  const auto color = static_cast<terminal::Color>(format.color.value_or(terminal::kNoColor));
  return format.bold ? color | terminal::kBold : color;
}

// Caret at the begin.
terminal::PaneText PaneTextOf(const help::RtfDocument& document) {
  terminal::PaneText text;
  bool first = true;
  for (const help::RtfParagraph& paragraph : document.paragraphs) {
    if (!std::exchange(first, false)) text.AppendLine("", terminal::kNoColor);
    for (const help::RtfRun& run : paragraph.runs) {
      text.SetSelectionColor(ColorOf(run.format));
      text.ReplaceSelection(run.text);
    }
    text.SetSelectionColor(terminal::kNoColor);
  }
  text.MoveTo(0);
  return text;
}

}  // namespace

CommandReference::CommandReference(terminal::OutputPane& pane, std::vector<std::string> folders,
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
