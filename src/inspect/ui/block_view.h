#pragma once

#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QTableWidget>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/prompt.h"
#include "base/ui/sliced_job.h"
#include "inspect/block.h"
#include "inspect/ui/dump_text_box.h"
#include "inspect/ui/inspect_controls.h"

namespace kolvane::inspect {

/// The table `ValuePanel`: the bytes at the caret read as each type, low byte first and high byte first.
class ValuePanel final : public QTableWidget {
  Q_OBJECT

 public:
  explicit ValuePanel(std::string decimal_sign, QWidget* parent = nullptr);

  void ShowBytes(std::string_view bytes);

  /// The width at which numbers of up to 32 bits are shown in full, even beside a scroll bar.
  int WidthFor32Bits() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  /// The width with value columns that have room for that text.
  int WidthFor(const char* widest) const;
  QString SelectedText() const;

  std::string decimal_sign_;
};

/// The block in the dump and everything done with its bytes: pages of a file, going to an offset, searching,
/// copying, saving, the label `PositionLabel`. It does not decode; it requests that with CaretSet.
class BlockView final : public QObject {
  Q_OBJECT

 public:
  /// The widgets must outlive this object. Without a prompt the label shows messages.
  BlockView(DumpTextBox& dump, PositionBar& bar, ValuePanel& values, QLabel& label, base::Prompt* prompt,
            QWidget* window);

  /// Shows a dump that is already laid out.
  void ShowDump(std::string dump);
  /// Shows the first page of a file; reports one that cannot be read.
  void LoadFile(const std::string& name);
  void AskForFile();

  /// Updates label and values for the caret. `value` is the length of the selection that a decode has made.
  void CaretMoved(Position value);
  /// The caret's offset in the whole block.
  std::uint64_t Offset() const;
  std::shared_ptr<const BlockSource> source() const { return source_; }
  /// The offset of the page's first byte in the whole block.
  std::uint64_t page_offset() const { return page_ * kPageBytes; }

  void GoTo(const std::string& typed);
  void Find(const std::string& typed);
  void TurnPage(int by);
  void CopyAs(CopyForm form);
  void SaveBlock();
  /// Starts to write a file with `piece`; reports a failure.
  void StartSaving(const std::string& name, std::function<base::SlicedJob::Reached()> piece);
  void ShowMessage(const std::string& text);

 Q_SIGNALS:
  /// The value of the byte at the caret is to be shown; `replaced`: after loading a file or turning the page.
  void CaretSet(bool replaced);

 private:
  static constexpr std::size_t kPageBytes = kMaxDumpBytes;

  void ShowPage(std::uint64_t page, std::size_t byte, bool replaced);
  void MoveTo(std::uint64_t offset);
  void ShowPages();
  std::uint64_t Pages() const { return (source_->size() + kPageBytes - 1) / kPageBytes; }
  void ShowFound(const BlockSearch& search, const std::string& typed, std::size_t count);
  std::optional<ByteRange> SelectedBytes() const;

  DumpTextBox& dump_;
  PositionBar& bar_;
  ValuePanel& values_;
  QLabel& label_;
  base::Prompt* prompt_;
  QWidget* window_;
  std::shared_ptr<const BlockSource> source_ = std::make_shared<BlockSource>();
  QPointer<base::SlicedJob> search_;
  std::string bytes_;  // of the page
  std::uint64_t page_ = 0;
  Position value_ = 0;
};

}  // namespace kolvane::inspect
