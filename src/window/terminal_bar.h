#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QObject>
#include <QPushButton>
#include <QToolBar>

#include "terminal/interactive_send.h"
#include "terminal/receive_controls.h"
#include "window/message_prompt.h"

namespace kolvane::window {

/// A list on the terminal bar. The wheel changes it only with the focus; a pick with the mouse is reported,
/// so that the focus can return to where it is needed.
class BarList final : public QComboBox {
  Q_OBJECT

 public:
  explicit BarList(QWidget* parent = nullptr);

  void showPopup() override;

 Q_SIGNALS:
  void PickedWithMouse();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool with_mouse_ = false;
};

/// `Toolbar2` below the pane: the command line with its send button, and below it the settings for sending
/// and receiving. It only holds the controls; the main window acts on them.
class TerminalBar final : public QToolBar {
  Q_OBJECT

 public:
  explicit TerminalBar(QWidget* parent = nullptr);

  QComboBox* command() const { return command_; }
  QPushButton* send() const { return send_; }
  QComboBox* receive_mode() const { return receive_mode_; }
  QComboBox* receive_format() const { return receive_format_; }
  QComboBox* receive_terminator() const { return receive_terminator_; }
  QComboBox* send_terminator() const { return send_terminator_; }
  QLineEdit* receive_timeout() const { return receive_timeout_; }
  QLineEdit* count() const { return count_; }

  void ShowCount(bool visible);

  /// The bar's height at `width`; settings that do not fit continue in a further row.
  int HeightAt(int width) const;

  /// Positions command box and send button, in the bar's coordinates.
  void PlaceCommandLine(int command_left, int command_width, int send_left);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildCommandLine();
  void BuildSettings();
  QComboBox* AddList(const char* label, const char* name, const char* tip, bool editable);
  QLineEdit* AddField(const char* label, const char* name, const char* tip, int digits);
  void AddGroup(const char* label, const char* tip, QWidget* field);
  void KeepSelection(const QEvent* event);

  QWidget* command_row_;
  QWidget* settings_row_;
  QWidget* body_;
  QComboBox* command_ = nullptr;
  bool all_selected_ = false;  // of the command line, when it lost the focus
  QPushButton* send_ = nullptr;
  QComboBox* receive_mode_ = nullptr;
  QComboBox* receive_format_ = nullptr;
  QComboBox* receive_terminator_ = nullptr;
  QComboBox* send_terminator_ = nullptr;
  QLineEdit* receive_timeout_ = nullptr;
  QLineEdit* count_ = nullptr;
  QWidget* count_group_ = nullptr;
};

/// Shows the command history in cmbCommand.
class CommandBoxView final : public terminal::CommandBox {
 public:
  explicit CommandBoxView(QComboBox* box) : box_(box) {}
  void ShowHistory(const terminal::CommandHistory& history, terminal::HistoryChange change) override;

 private:
  QComboBox* box_;
};

/// Connects the receive and send controls of the bar with their rules.
class ReceiveView final : public QObject, private terminal::ReceiveControlsView {
  Q_OBJECT

 public:
  ReceiveView(TerminalBar* bar, terminal::TerminalState& state, device::Device& device, MessagePrompt& prompt,
              QObject* parent);

  terminal::ReceiveControls& controls() { return controls_; }

 Q_SIGNALS:
  /// The bar may need a different height.
  void CountShownOrHidden();

 private:
  void ShowReceiveControls(const terminal::ReceiveShown& shown, bool count_visible) override;
  void Fill();
  void Connect();
  void OnPick(QComboBox* list, void (terminal::ReceiveControls::*pick)(int));
  template <typename Field, typename Signal>
  void OnEdit(Field* field, Signal changed, void (terminal::ReceiveControls::*edit)(std::string_view));
  /// Marks the field while `fault` says something about its text.
  void MarkFaults(QLineEdit* field, std::string (*fault)(std::string_view));

  TerminalBar* bar_;
  MessagePrompt& prompt_;
  terminal::ReceiveControls controls_;
  bool showing_ = false;
  const QComboBox* changed_ = nullptr;  // by the pick that is being reported
};

}  // namespace kolvane::window
