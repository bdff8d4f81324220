#include "window/script_view.h"

#include <QCoreApplication>
#include <utility>

#include "base/number.h"
#include "base/read_file.h"
#include "device/folder_file.h"
#include "help/rtf_reader.h"
#include "help/rtf_texts.h"
#include "script/texts.h"
#include "window/text.h"

namespace kolvane::window {
namespace {

// Between rows that take less, looking for events each time would cost more than the rows.
constexpr int kEventsEachMs = 4;

constexpr char kReference[] = "TermCmdHelp.rtf";

script::ScriptLinks LinksOf(const ScriptParts& parts, const ScriptSurroundings& around,
                            script::RunHost& host) {
  return {.state = parts.state,
          .terminal = parts.slices.terminal,
          .device = parts.slices.device,
          .session = parts.core.session,
          .output = parts.core.output,
          .pane = around.pane,
          .libraries = parts.library,
          .clock = parts.core.clock,
          .prompt = around.prompt,
          .log = parts.log,
          .host = host,
          .decimal_sign = base::SystemDecimalSign()};
}

terminal::Color ColorOf(const help::RtfFormat& format) {
  return static_cast<terminal::Color>(format.colour.value_or(terminal::kNoColor));
}

void AppendDocument(terminal::OutputPane& pane, const help::RtfDocument& document) {
  const std::size_t begin = pane.text().Length();
  for (const help::RtfParagraph& paragraph : document.paragraphs) {
    pane.AppendLine("", terminal::kNoColor);
    for (const help::RtfRun& run : paragraph.runs) pane.AppendRun(run.text, ColorOf(run.format));
  }
  // From behind the text, so that its first line comes to stand at the top.
  pane.EnsureVisible(pane.text().Length());
  pane.EnsureVisible(begin + 1);
}

}  // namespace

ScriptView::ScriptView(ScriptParts parts, ScriptSurroundings surroundings, ScriptToolbar* toolbar,
                       QObject* parent)
    : QObject(parent),
      around_(std::move(surroundings)),
      core_(LinksOf(parts, around_, *this)),
      files_(core_.list, around_.dialogs, around_.prompt),
      toolbar_(toolbar),
      grid_(new script::CommandGrid(core_.list)) {
  ConnectButtons();
  ShowRecording();
  since_events_.start();
}

std::string ScriptView::FileStatus() const {
  return script::texts::ListStatus(core_.list.file_name(), core_.list.left_out());
}

bool ScriptView::EndRun() {
  core_.runner.Abort();
  return core_.runner.running();
}

void ScriptView::Yield() {
  if (since_events_.elapsed() < kEventsEachMs) return;
  QCoreApplication::processEvents();
  since_events_.start();
}

void ScriptView::ConnectButtons() {
  const auto on = [this](const char* key, std::function<void()> event) {
    around_.prompt.OnTrigger(toolbar_->Button(key), std::move(event));
  };
  on("TB_PLAY", [this] { Play(); });
  on("TB_SINGLESTEP", [this] { SingleStep(); });
  on("TB_STOP", [this] { core_.runner.Stop(); });
  on("TB_BREAK", [this] { core_.runner.Break(); });
  on("TB_RECORD", [this] { ToggleRecording(); });
  on("TB_NEWSCRIPT", [this] { files_.New(); });
  on("TB_OPENSCRIPT", [this] { files_.Open(); });
  on("TB_SAVESCRIPT", [this] { files_.Save(); });
  on("TB_SPECIALCOMMANDS", [this] { ShowSpecialCommands(); });
}

void ScriptView::Play() {
  core_.runner.Play();
  AfterRun();
}

void ScriptView::SingleStep() {
  core_.runner.SingleStep();
  AfterRun();
}

// A press while a run is on comes here too, and has done nothing.
void ScriptView::AfterRun() {
  grid_->Flush();
  if (!core_.runner.running()) Q_EMIT RunEnded();
}

void ScriptView::ToggleRecording() {
  core_.recorder.Toggle();
  ShowRecording();
}

void ScriptView::ShowRecording() {
  toolbar_->ShowRecording(core_.recorder.button().tag, core_.recorder.button().image);
}

void ScriptView::ShowSpecialCommands() {
  const std::string path = device::FolderFile(around_.folder, kReference);
  std::string bytes;
  if (base::ReadFile(path, bytes) != 0)
    return around_.prompt.ShowError("Die Datei „" + path + "“ kann nicht gelesen werden");
  const help::RtfResult read = help::ReadRtf(bytes);
  if (read.fault == help::RtfFault::kNotRichText)
    return around_.prompt.ShowError(path + ": " + std::string(help::FaultText(read.fault)));
  AppendDocument(around_.pane, read.document);
}

}  // namespace kolvane::window
