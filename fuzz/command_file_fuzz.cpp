// Command files: a list that was read, written and read again is unchanged.
#include "script/command_file.h"

#include "base/encoding.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "fuzz/scratch_folder.h"
#include "fuzz/utf8.h"

namespace kolvane::fuzz {
namespace {

constexpr std::uint32_t kInputsPerWrite = 64;

std::size_t Lines(std::string_view bytes) {
  std::size_t lines = 0;
  for (std::size_t at = 0; at < bytes.size(); ++lines) {
    at = std::min(bytes.find_first_of("\r\n", at), bytes.size());
    at += bytes.substr(at).starts_with("\r\n") ? 2 : 1;
  }
  return lines;
}

/// The list has a row for each line of the file, with exactly its bytes apart from the line end.
void CheckRows(const script::CommandList& list, std::string_view bytes) {
  const auto lines = Lines(bytes);
  Require(list.left_out() == (lines > script::kListRows ? lines - script::kListRows : 0));
  const int rows = static_cast<int>(std::min<std::size_t>(lines, script::kListRows));
  std::size_t at = 0;
  for (int row = 1; row <= rows; ++row) {
    Require(IsUtf8(list.Text(row)));
    const std::string line = base::ToWindows1252(list.Text(row));
    Require(bytes.substr(at, line.size()) == line);
    at += line.size();
    at += bytes.substr(at).starts_with("\r\n") ? 2 : 1;
  }
  Require(list.LastUsedRow() <= rows);
}

void CheckWritten(const script::CommandList& list, ScratchFolder& folder) {
  static script::CommandList again;
  Require(WriteCommandFile(list, folder / "written.CMD").ok());
  Require(LoadCommandFile(again, folder / "written.CMD").ok());
  for (int row = 1; row <= script::kListRows; ++row) Require(list.Text(row) == again.Text(row));
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  static fuzz::ScratchFolder folder;
  static script::CommandList list;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  folder.Put("read.CMD", bytes);
  fuzz::Require(LoadCommandFile(list, folder / "read.CMD").ok());
  fuzz::CheckRows(list, bytes);
  if (fuzz::Hash(bytes) % fuzz::kInputsPerWrite == 0) fuzz::CheckWritten(list, folder);
  return 0;
}
