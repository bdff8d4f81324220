#include "window/find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QRegularExpression>

#include "base/ui/buttons.h"
#include "base/ui/fields.h"
#include "base/ui/qt_text.h"
#include "pane/ui/regex_matcher.h"
#include "window/field_mark.h"
#include "window/flow_layout.h"

namespace kolvane::window {
namespace {

constexpr int kFieldGap = 6;
constexpr int kRowGap = 3;
constexpr int kTextColumns = 24;
constexpr int kCountColumns = 22;

QString CountText(const pane::FindState& state) {
  if (state.count == 0) return state.complete ? QStringLiteral("Nichts gefunden") : QString();
  return QStringLiteral("%1 von %2").arg(state.current).arg(state.count);
}

int Columns(const QWidget* widget, int count) { return widget->fontMetrics().averageCharWidth() * count; }

// Pasted text may include line ends, but hits and rows are within one line: keeps the first line that is not
// empty. Returns whether the text has changed.
bool KeepOneLine(QLineEdit* field) {
  const QString text = field->text();
  const QString line =
      text.section(QRegularExpression(QStringLiteral("[\\r\\n]+")), 0, 0, QString::SectionSkipEmpty);
  if (line == text) return false;
  field->setText(line);
  return true;
}

}  // namespace

FindBar::FindBar(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("FindBar"));
  new FlowLayout(this, kFieldGap, kRowGap);
  AddFinding();
  AddReplacing();
  auto* close = Add(new QPushButton(QStringLiteral("Sc&hließen")), "FindClose", "Schließt die Suche (Esc)");
  base::OnClick(close, [this] { Close(); });
  hide();
}

template <typename Widget>
Widget* FindBar::Add(Widget* widget, const char* name, const char* tip) {
  widget->setObjectName(QLatin1String(name));
  widget->setToolTip(base::ToQt(tip));
  layout()->addWidget(widget);
  return widget;
}

void FindBar::AddFinding() {
  layout()->addWidget(label_ = new QLabel);
  text_ = Add(new QLineEdit, "FindText", "Gesuchter Text; Eingabetaste sucht weiter, mit Umschalt zurück");
  base::TakeAnyLength(text_);
  text_->setAccessibleName(QStringLiteral("Suchen"));
  text_->setMinimumWidth(Columns(this, kTextColumns));
  label_->setBuddy(text_);
  match_case_ = Add(new QCheckBox(QStringLiteral("Groß/kle&in")), "FindCase",
                    "Unterscheidet große und kleine Buchstaben");
  regex_ = Add(new QCheckBox(QStringLiteral("&Ausdruck")), "FindRegex",
               "Der Text ist ein regulärer Ausdruck; er gilt für jede Zeile einzeln");
  auto* previous =
      Add(new QPushButton(QStringLiteral("Zurüc&k")), "FindPrevious", "Zum vorigen Treffer (Umschalt+F3)");
  auto* next = Add(new QPushButton(QStringLiteral("&Weiter")), "FindNext", "Zum nächsten Treffer (F3)");
  count_ = Add(new QLabel, "FindCount", "");
  count_->setMinimumWidth(Columns(this, kCountColumns));
  // The row's texts are centred beside the fields, not at its top.
  label_->setMinimumHeight(text_->sizeHint().height());
  count_->setMinimumHeight(text_->sizeHint().height());
  count_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  connect(text_, &QLineEdit::textChanged, this, &FindBar::Search);
  connect(match_case_, &QCheckBox::toggled, this, &FindBar::Search);
  connect(regex_, &QCheckBox::toggled, this, &FindBar::Search);
  base::OnClick(previous, [this] { GoToPrevious(); });
  base::OnClick(next, [this] { GoToNext(); });
}

void FindBar::AddReplacing() {
  auto* field = new QWidget;
  auto* row = new QHBoxLayout(field);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kFieldGap);
  auto* caption = new QLabel(QStringLiteral("Ersetzen d&urch:"));
  replacement_ = new QLineEdit;
  base::TakeAnyLength(replacement_);
  replacement_->setObjectName(QStringLiteral("ReplaceText"));
  replacement_->setAccessibleName(QStringLiteral("Ersetzen durch"));
  replacement_->setToolTip(
      QStringLiteral("Ersatz; bei einem Ausdruck steht \\1 für seine erste Klammer, \\0 für den Treffer"));
  replacement_->setMinimumWidth(Columns(this, kTextColumns));
  caption->setBuddy(replacement_);
  row->addWidget(caption);
  row->addWidget(replacement_);
  layout()->addWidget(field);
  auto* one = Add(new QPushButton(QStringLiteral("E&rsetzen")), "ReplaceNext",
                  "Ersetzt den Treffer und geht zum nächsten");
  auto* all = Add(new QPushButton(QStringLiteral("A&lle ersetzen")), "ReplaceAll",
                  "Ersetzt alle Treffer; Strg+Z nimmt es auf einmal zurück");
  replacing_ = {field, one, all};
  base::OnClick(one, [this] { target_->ReplaceCurrent(replacement_->text()); });
  base::OnClick(all, [this] { ReplaceAll(); });
  connect(replacement_, &QLineEdit::textChanged, this, [this] { KeepOneLine(replacement_); });
  connect(
      replacement_, &QLineEdit::textChanged, this, [this] { MarkUnsendable(replacement_, false); },
      Qt::QueuedConnection);
}

void FindBar::Open(pane::FindTarget* target, const QString& caption) {
  if (target_ != target) {
    if (target_ != nullptr) target_->Search(nullptr);
    if (target_ != nullptr) target_->disconnect(this);
    target_ = target;
    connect(target, &pane::FindTarget::StateChanged, this, &FindBar::ShowState);
  }
  QWidget* focused = window()->focusWidget();
  if (!isAncestorOf(focused)) focused_before_ = focused;
  label_->setText(caption);
  for (QWidget* part : replacing_) part->setVisible(target->Replaces());
  ShowReplaceable();
  const QString selected = target->SelectedText();
  if (!selected.isEmpty()) text_->setText(selected);
  show();
  Q_EMIT OpenedOrClosed();
  text_->setFocus(Qt::ShortcutFocusReason);
  text_->selectAll();
  Search();
}

void FindBar::Close() {
  if (target_ == nullptr) return;
  target_->disconnect(this);
  target_->Search(nullptr);
  QWidget* back = target_->Widget();
  if (focused_before_ != nullptr && focused_before_->isEnabled()) back = focused_before_;
  target_.clear();
  ShowReplaceable();
  hide();
  Q_EMIT OpenedOrClosed();
  back->setFocus(Qt::OtherFocusReason);
}

void FindBar::GoToNext() {
  if (target_ != nullptr) target_->GoToNext();
}

void FindBar::GoToPrevious() {
  if (target_ != nullptr) target_->GoToPrevious();
}

std::shared_ptr<const pane::Matcher> FindBar::MakeMatcher(QString& fault) const {
  const QString text = text_->text();
  const bool match_case = match_case_->isChecked();
  if (text.isEmpty()) return nullptr;
  if (!regex_->isChecked()) return std::make_shared<pane::PlainMatcher>(base::FromQt(text), match_case);
  auto regex = std::make_shared<pane::RegexMatcher>(text, match_case);
  fault = regex->Fault();
  return fault.isEmpty() ? regex : nullptr;
}

void FindBar::Search() {
  if (KeepOneLine(text_) || target_ == nullptr) return;
  QString fault;
  const std::shared_ptr<const pane::Matcher> matcher = MakeMatcher(fault);
  MarkField(text_, fault);
  target_->Search(matcher);
  if (matcher == nullptr)
    count_->setText(fault.isEmpty() ? QString() : QStringLiteral("Ungültiger Ausdruck"));
}

void FindBar::ShowState() {
  if (text_->text().isEmpty() || target_ == nullptr) return count_->clear();
  count_->setText(CountText(target_->State()));
}

void FindBar::ShowReplaceable() {
  const bool possible = target_ != nullptr && target_->CanReplace();
  for (QWidget* part : replacing_) part->setEnabled(possible);
}

void FindBar::ReplaceAll() {
  const int count = target_->ReplaceAll(replacement_->text());
  count_->setText(QStringLiteral("%1 ersetzt").arg(count));
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return Close();
  if (!base::IsEnter(*event)) return QWidget::keyPressEvent(event);
  if (text_->hasFocus())
    event->modifiers().testFlag(Qt::ShiftModifier) ? GoToPrevious() : GoToNext();
  else if (auto* button = qobject_cast<QPushButton*>(focusWidget()))
    button->click();
  else if (replacement_->hasFocus())
    target_->ReplaceCurrent(replacement_->text());
}

}  // namespace kolvane::window
