#pragma once

#include <QBoxLayout>
#include <QCheckBox>
#include <QDialog>
#include <string>
#include <vector>

#include "inspect/decode.h"
#include "inspect/template_list.h"
#include "inspect/ui/format_frame.h"
#include "inspect/ui/inspect_area.h"

namespace kolvane::inspect {

/// What the dialog works on; all of it outlives the dialog.
struct BinInspectContext {
  InspectorState& state;
  std::string folder;  ///< the component's, where the templates are
  std::string decimal_sign;
  std::string user_folder = {};  ///< the user's own, whose templates come first; may be empty
};

/// The dialog `frmBinInspect`: the inspector on widgets. Making it looks for the templates.
class BinInspectDialog final : public QDialog {
  Q_OBJECT

 public:
  explicit BinInspectDialog(BinInspectContext context, QWidget* parent = nullptr);

  /// Shows the dump of what is marked in the output pane (Windows-1252), the caret on its first byte. Throws
  /// RuntimeError kOverflow where it is too long.
  void Initialize(std::string_view marked);

 private:
  void BuildTemplateList();
  void BuildBelow(QVBoxLayout* all);
  QBoxLayout* BuildSide();
  void FormatClick(int option);
  void TemplateClick(int index);
  void Inspect();
  void InspectAtCaret();
  std::string TemplatePath() const;
  void Copy() const;

  BinInspectContext context_;
  std::vector<TemplateFile> templates_;
  InspectArea* area_;
  FormatFrame* formats_;
  QCheckBox* network_order_;
};

}  // namespace kolvane::inspect
