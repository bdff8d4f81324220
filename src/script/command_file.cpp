#include "script/command_file.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "base/replace_file.h"
#include "script/line_splitter.h"

namespace kolvane::script {
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

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

FileResult ReadLines(const std::string& name, Lines& lines) {
  const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(name.c_str(), "rbe"));
  if (!file) return {Problem::kCannotRead, name, errno};
  bool too_long = false;
  LineSplitter splitter([&](std::string_view line) {
    too_long |= line.size() > kLineLimit;
    lines.Add(line);
  });
  std::array<char, 65536> chunk;
  while (const std::size_t size = std::fread(chunk.data(), 1, chunk.size(), file.get())) {
    splitter.Feed({chunk.data(), size});
    if (too_long || splitter.pending() > kLineLimit) return {Problem::kLineTooLong, name};
  }
  if (std::ferror(file.get()) != 0) return {Problem::kCannotRead, name, errno};
  splitter.Finish();
  return {Problem::kNone, name};
}

FileResult Write(const std::string& name, std::string_view bytes) {
  const int error = base::ReplaceFile(name, bytes);
  return {error == 0 ? Problem::kNone : Problem::kCannotWrite, name, error};
}

}  // namespace

FileResult LoadCommandFile(CommandList& list, const std::string& name) {
  Lines lines;
  FileResult result = ReadLines(name, lines);
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

}  // namespace kolvane::script
