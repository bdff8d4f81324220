#pragma once

#include <QBoxLayout>
#include <QCheckBox>
#include <QDialog>
#include <QFileSystemWatcher>
#include <QLabel>
#include <QSplitter>
#include <string>
#include <vector>

#include "base/prompt.h"
#include "inspect/decode.h"
#include "inspect/template_file.h"
#include "inspect/ui/block_view.h"
#include "inspect/ui/inspect_area.h"
#include "inspect/ui/inspect_controls.h"

namespace kolvane::inspect {

/// What the dialog works on; all of it must outlive the dialog.
struct BinInspectContext {
  InspectorState& state;
  std::string folder;  ///< the component's, which holds the templates
  std::string decimal_sign;
  std::string user_folder = {};    ///< the user's own, whose templates come first; may be empty
  base::Prompt* prompt = nullptr;  ///< for messages about files; null: `PositionLabel` shows them
};

/// The dialog `frmBinInspect` of the inspector. Its constructor lists the templates.
class BinInspectDialog final : public QDialog {
  Q_OBJECT

 public:
  explicit BinInspectDialog(BinInspectContext context, QWidget* parent = nullptr);

  /// Shows the dump of the output pane's selection (Windows-1252), with the caret on its first byte. Throws
  /// RuntimeError kOverflow if it is too long.
  void Initialize(std::string_view selected);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void ShareWidth(int width);
  void BuildBlock(QVBoxLayout* all);
  void ConnectBlock();
  void BuildTemplateList();
  void BuildBelow(QVBoxLayout* all);
  QBoxLayout* BuildSide();
  void FormatClick(int option);
  void TemplateClick(int index);
  void Inspect();
  void InspectAtCaret();
  void CaretSet(bool is_new);
  void ShowResult(const Decoded& decoded, std::size_t caret);
  void ShowRecords();
  void ShowProblems(const std::vector<TemplateProblem>& problems);
  void ShowField(int row);
  void SaveCsv();
  void Watch();
  void TemplateChanged();
  void RunTemplateAgain();
  std::string TemplatePath() const;
  void Copy() const;

  BinInspectContext context_;
  std::vector<TemplateFile> templates_;
  QSplitter* parts_;
  InspectArea* area_;
  PositionBar* bar_;
  ValuePanel* values_;
  QLabel* position_;
  QLabel* problems_;
  BlockButtons* buttons_;
  BlockView* block_;
  QFileSystemWatcher watcher_;
  bool template_ran_ = false;      // in the last decode
  std::vector<ByteRange> fields_;  // the bytes that each line of the result shows
  FormatFrame* formats_;
  QCheckBox* network_order_;
};

}  // namespace kolvane::inspect
