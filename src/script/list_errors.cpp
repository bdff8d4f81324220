#include "script/list_errors.h"

#include "script/texts.h"

namespace kolvane::script {

void ListErrors::Report(std::string_view error) {
  const int row = list_.current_row();
  list_.NoteError(row, error);
  prompt_.ShowError(texts::ErrorInRow(row, error));
  list_.HighlightLine(row, kErrorRow.back, kErrorRow.fore, kErrorRow.bold);
  list_.SetCurrentRow(kListRows);
}

}  // namespace kolvane::script
