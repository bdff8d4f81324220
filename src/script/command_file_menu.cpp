#include "script/command_file_menu.h"

#include <vector>

#include "base/encoding.h"
#include "script/command_file.h"
#include "script/texts.h"

namespace kolvane::script {
namespace {

bool Succeeded(const FileResult& result, base::Prompt& prompt) {
  if (!result.ok()) prompt.ShowError(texts::FileFailure(result));
  return result.ok();
}

}  // namespace

void CommandFileMenu::New() { list_.ClearCommandScriptGrid(); }

void CommandFileMenu::Open() {
  if (list_.InUse()) return;
  if (const auto name = dialogs_.AskOpenName(list_.file_name())) OpenFile(*name);
}

void CommandFileMenu::OpenFile(const std::string& name) {
  if (!list_.InUse()) Succeeded(LoadCommandFile(list_, name), prompt_);
}

void CommandFileMenu::Save() {
  std::optional<std::string> name = list_.file_name();
  if (name->empty()) name = dialogs_.AskSaveName({});
  if (!name) return;
  const bool lacks = TellWhatTheFileLacks();
  if (!Succeeded(WriteCommandFile(list_, *name), prompt_)) return;
  list_.MarkSaved();
  if (lacks) list_.MarkModified();
}

bool CommandFileMenu::TellWhatTheFileLacks() {
  const std::vector<int> rows = RowsOutsideCodePage(list_);
  if (rows.empty()) return false;
  prompt_.ShowError(texts::NotInFile(rows, base::OutsideWindows1252(list_.Text(rows.front()))));
  return true;
}

void CommandFileMenu::SaveAs() {
  if (list_.InUse()) return;
  const auto name = dialogs_.AskSaveName(list_.file_name());
  if (!name || !Succeeded(WriteEmptyFile(*name), prompt_)) return;
  list_.SetCurrentRow(1);
  list_.SetFileName(*name);
}

}  // namespace kolvane::script
