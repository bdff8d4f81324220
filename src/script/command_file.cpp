#include "script/command_file.h"

#include <utility>
#include <vector>

#include "base/encoding.h"
#include "base/files.h"
#include "script/texts.h"

namespace kolvane::script {
namespace {

std::size_t FindLineEnd(std::string_view text, std::size_t from) {
  while (from < text.size() && text[from] != '\r' && text[from] != '\n') ++from;
  return from;
}

bool Succeeded(const FileResult& result, base::Prompt& prompt) {
  if (!result.ok()) prompt.ShowError(texts::FileFailure(result));
  return result.ok();
}

}  // namespace

void LineSplitter::Feed(std::string_view bytes) {
  std::size_t at = 0;
  while (at < bytes.size()) {
    if (after_cr_ && bytes[at] == '\n') ++at;
    after_cr_ = false;
    const std::size_t end = FindLineEnd(bytes, at);
    if (end == bytes.size()) {
      pending_ += bytes.substr(at);
      return;
    }
    EndLine(bytes.substr(at, end - at));
    after_cr_ = bytes[end] == '\r';
    at = end + 1;
  }
}

void LineSplitter::Finish() {
  if (!pending_.empty()) EndLine({});
}

void LineSplitter::EndLine(std::string_view tail) {
  if (pending_.empty()) return sink_(tail);
  pending_ += tail;
  sink_(pending_);
  pending_.clear();
}

namespace {

using Problem = FileResult::Problem;

struct Lines {
  std::vector<std::string> rows;
  std::size_t left_out = 0;

  void Add(std::string_view line) {
    if (rows.size() < kListRows) {
      rows.push_back(base::FromWindows1252(line));
    } else {
      ++left_out;
    }
  }
};

FileResult ReadLines(const std::string& name, const base::GiveUp& give_up, Lines& lines) {
  bool too_long = false;
  LineSplitter splitter([&](std::string_view line) {
    too_long |= line.size() > kLineLimit;
    lines.Add(line);
  });
  const auto take = [&](std::string_view piece) {
    splitter.Feed(piece);
    too_long |= splitter.pending() > kLineLimit;
    return !too_long;
  };
  const int error = base::ReadPieces(name, take, give_up);
  if (error != 0) return {Problem::kCannotRead, name, error};
  if (too_long) return {Problem::kLineTooLong, name};
  splitter.Finish();
  return {Problem::kNone, name};
}

FileResult Write(const std::string& name, std::string_view bytes) {
  const int error = base::ReplaceFile(name, bytes);
  return {error == 0 ? Problem::kNone : Problem::kCannotWrite, name, error};
}

}  // namespace

FileResult LoadCommandFile(CommandList& list, const std::string& name, const base::GiveUp& give_up) {
  Lines lines;
  FileResult result = ReadLines(name, give_up, lines);
  if (result.ok() && !list.ShowFile(name, std::move(lines.rows), lines.left_out))
    result.problem = Problem::kListRunning;
  return result;
}

std::vector<int> RowsOutsideCodePage(const CommandList& list) {
  std::vector<int> rows;
  for (int row = 1; row <= kListRows; ++row) {
    if (base::FirstOutsideWindows1252(list.Text(row))) rows.push_back(row);
  }
  return rows;
}

FileResult WriteCommandFile(const CommandList& list, const std::string& name) {
  std::string bytes;
  for (int row = 1; row <= kListRows; ++row) {
    bytes += base::ToWindows1252(list.Text(row));
    bytes += "\r\n";
  }
  return Write(name, bytes);
}

FileResult WriteEmptyFile(const std::string& name) { return Write(name, {}); }

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
  const bool unnamed = name->empty();
  if (unnamed) name = dialogs_.AskSaveName({});
  if (!name) return;
  const bool lacks = ReportLostCharacters();
  if (!Succeeded(WriteCommandFile(list_, *name), prompt_)) return;
  list_.MarkSaved(unnamed ? *name : std::string());
  if (lacks) list_.MarkModified();
}

bool CommandFileMenu::ReportLostCharacters() {
  const std::vector<int> rows = RowsOutsideCodePage(list_);
  if (rows.empty()) return false;
  prompt_.ShowError(texts::CharactersNotInFile(rows, base::OutsideWindows1252(list_.Text(rows.front()))));
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
