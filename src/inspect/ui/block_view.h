#pragma once

#include <QLabel>
#include <QObject>
#include <optional>
#include <string>

#include "base/prompt.h"
#include "inspect/block_source.h"
#include "inspect/block_text.h"
#include "inspect/ui/block_tools.h"
#include "inspect/ui/dump_text_box.h"
#include "inspect/ui/value_panel.h"

namespace kolvane::inspect {

/// The block in the dump and all that is done with its bytes: pages of a file, going to a place, searching,
/// copying, saving, the label `PositionLabel`. It decodes nothing: it asks for that with CaretSet.
class BlockView final : public QObject {
  Q_OBJECT

 public:
  /// The widgets outlive this. Without a prompt messages stand in the label.
  BlockView(DumpTextBox& dump, PlaceBar& bar, ValuePanel& values, QLabel& label, base::Prompt* prompt,
            QWidget* window);

  /// Shows a dump that is already laid out.
  void ShowDump(std::string dump);
  /// Shows the first page of a file; what cannot be read is told.
  void LoadFile(const std::string& name);
  void AskForFile();

  /// Brings label and values up to the caret. `value` is the selection that a decode has made.
  void CaretMoved(Position value);
  /// Where the caret stands in the whole block.
  std::uint64_t Offset() const;
  const BlockSource& source() const { return source_; }
  /// What is left of the block from there on is in the dump's bytes from this one on.
  std::uint64_t page_offset() const { return page_ * kPageBytes; }

  void GoTo(const std::string& typed);
  void Find(const std::string& typed);
  void TurnPage(int by);
  void CopyAs(CopyForm form);
  void SaveBlock();
  void Tell(const std::string& text);

 Q_SIGNALS:
  /// The caret stands on a byte whose value is to be shown; `replaced` where another block or page came.
  void CaretSet(bool replaced);

 private:
  static constexpr std::size_t kPageBytes = kMostDumpBytes;

  void ShowPage(std::uint64_t page, std::size_t byte, bool replaced);
  void MoveTo(std::uint64_t offset);
  void ShowPages();
  std::uint64_t Pages() const { return (source_.size() + kPageBytes - 1) / kPageBytes; }
  std::optional<ByteRange> Marked() const;

  DumpTextBox& dump_;
  PlaceBar& bar_;
  ValuePanel& values_;
  QLabel& label_;
  base::Prompt* prompt_;
  QWidget* window_;
  BlockSource source_;
  std::string bytes_;  // of the page
  std::uint64_t page_ = 0;
  Position value_ = 0;
};

}  // namespace kolvane::inspect
