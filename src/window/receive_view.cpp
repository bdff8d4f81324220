#include "window/receive_view.h"

#include <QScopedValueRollback>
#include <utility>

#include "base/ui/qt_text.h"
#include "terminal/receive_controls.h"
#include "window/field_mark.h"

namespace kolvane::window {
namespace {

template <typename Words>
void AddWords(QComboBox* list, const Words& words) {
  for (const auto& word : words) list->addItem(base::ToQt(word));
}

// A word of the list also becomes its current item, so that keys and wheel continue from there. A field that
// already shows the text is not changed, so that the caret of a user typing in it stays.
void ShowText(QComboBox* list, const std::string& text) {
  const QString shown = base::ToQt(text);
  const int index = list->findText(shown, Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (list->currentIndex() != index) list->setCurrentIndex(index);
  if (list->currentText() != shown) list->setEditText(shown);
}

void ShowText(QLineEdit* field, const std::string& text) {
  const QString shown = base::ToQt(text);
  if (field->text() != shown) field->setText(shown);
}

}  // namespace

ReceiveView::ReceiveView(TerminalBar* bar, terminal::TerminalState& state, device::Device& device,
                         MessagePrompt& prompt, QObject* parent)
    : QObject(parent), bar_(bar), controls_(state.receive, state.shown, device, *this) {
  Fill();
  Connect(prompt);
}

void ReceiveView::Fill() {
  AddWords(bar_->receive_mode(), terminal::texts::kReceiveModes);
  AddWords(bar_->receive_format(), terminal::texts::kReceiveFormats);
  AddWords(bar_->receive_terminator(), terminal::kReceiveTerminatorWords);
  AddWords(bar_->send_terminator(), terminal::kSendTerminatorWords);
}

void ReceiveView::Connect(MessagePrompt& prompt) {
  const auto on_pick = [&](QComboBox* list, void (terminal::ReceiveControls::*pick)(int)) {
    const auto run = [this, &prompt, pick](int index) {
      if (showing_) return;
      picked_ = true;
      prompt.Guard([&] { (controls_.*pick)(index); });
    };
    connect(list, &QComboBox::currentIndexChanged, this, run);
    // Picking the item that is already shown changes no index but counts as a pick.
    connect(list, &QComboBox::activated, this, [this, run](int index) {
      if (!std::exchange(picked_, false)) run(index);
      picked_ = false;
    });
  };
  const auto on_edit = [&](auto* field, auto signal,
                           void (terminal::ReceiveControls::*edit)(std::string_view)) {
    connect(field, signal, this, [this, &prompt, edit](const QString& text) {
      if (!showing_) prompt.Guard([&] { (controls_.*edit)(base::FromQt(text)); });
    });
  };
  on_pick(bar_->receive_mode(), &terminal::ReceiveControls::PickMode);
  on_pick(bar_->receive_format(), &terminal::ReceiveControls::PickFormat);
  on_edit(bar_->receive_terminator(), &QComboBox::currentTextChanged,
          &terminal::ReceiveControls::EditReceiveTerminator);
  on_edit(bar_->send_terminator(), &QComboBox::currentTextChanged,
          &terminal::ReceiveControls::EditSendTerminator);
  const auto mark = [this](QLineEdit* field, std::string (*fault)(std::string_view)) {
    connect(field, &QLineEdit::textChanged, this,
            [field, fault](const QString& text) { MarkField(field, base::ToQt(fault(base::FromQt(text)))); });
  };
  mark(bar_->receive_timeout(), &terminal::TimeoutFault);
  mark(bar_->count(), &terminal::CountFault);
  on_edit(bar_->receive_timeout(), &QLineEdit::textChanged, &terminal::ReceiveControls::EditTimeout);
  on_edit(bar_->count(), &QLineEdit::textChanged, &terminal::ReceiveControls::EditCount);
}

void ReceiveView::ShowReceiveControls(const terminal::ReceiveShown& shown, bool count_visible) {
  const QScopedValueRollback<bool> guard(showing_, true);
  bar_->receive_mode()->setCurrentIndex(shown.mode);
  bar_->receive_format()->setCurrentIndex(shown.format);
  ShowText(bar_->receive_terminator(), shown.receive_terminator);
  ShowText(bar_->send_terminator(), shown.send_terminator);
  ShowText(bar_->receive_timeout(), shown.timeout);
  ShowText(bar_->count(), shown.count);
  bar_->ShowCount(count_visible);
  Q_EMIT CountShownOrHidden();
}

}  // namespace kolvane::window
