#include "window/terminal_bar.h"

#include <QAbstractItemView>
#include <QDropEvent>
#include <QEvent>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "base/ui/fields.h"
#include "base/ui/qt_text.h"
#include "window/field_mark.h"
#include "window/flow_layout.h"
#include "window/icons.h"

namespace kolvane::window {
namespace {

constexpr int kMargin = 6;
constexpr int kBarGap = 6;
constexpr int kGroupGap = 16;

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

QString WithoutMnemonic(const char* label) { return base::ToQt(label).remove(QLatin1Char('&')); }

bool IsEnterPress(const QEvent& event) {
  return event.type() == QEvent::KeyPress && base::IsEnter(static_cast<const QKeyEvent&>(event));
}

bool BringsFiles(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

}  // namespace

BarList::BarList(QWidget* parent) : QComboBox(parent) {
  base::GuardWheel(this);
  connect(this, &QComboBox::activated, this, [this] {
    if (std::exchange(with_mouse_, false)) Q_EMIT PickedWithMouse();
  });
}

// The view is created when first needed.
void BarList::showPopup() {
  with_mouse_ = false;
  QComboBox::showPopup();
  view()->viewport()->installEventFilter(this);
}

bool BarList::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) with_mouse_ = true;
  return QComboBox::eventFilter(watched, event);
}

TerminalBar::TerminalBar(QWidget* parent)
    : QToolBar(parent), command_row_(new QWidget), settings_row_(new QWidget), body_(new QWidget) {
  setObjectName(QStringLiteral("Toolbar2"));
  setWindowTitle(QStringLiteral("Senden und Empfangen"));
  setMovable(false);
  layout()->setContentsMargins(0, 0, 0, 0);
  BuildCommandLine();
  BuildSettings();
  auto* rows = new QVBoxLayout(body_);
  rows->setContentsMargins(0, kMargin, 0, kMargin);
  rows->setSpacing(kBarGap);
  rows->addWidget(command_row_);
  rows->addWidget(settings_row_);
  body_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  addWidget(body_);
}

void TerminalBar::BuildCommandLine() {
  command_ = new QComboBox(command_row_);
  command_->setObjectName(QStringLiteral("cmbCommand"));
  command_->setAccessibleName(QStringLiteral("Befehl"));
  command_->setEditable(true);
  command_->setInsertPolicy(QComboBox::NoInsert);
  command_->setCompleter(nullptr);
  command_->setMaxVisibleItems(20);
  command_->setToolTip(QStringLiteral("Befehl an das Gerät; Pfeil auf und Pfeil ab holen frühere Befehle"));
  command_->lineEdit()->setAccessibleName(command_->accessibleName());
  command_->lineEdit()->installEventFilter(this);
  command_->installEventFilter(this);
  base::TakeAnyLength(command_->lineEdit());
  base::GuardWheel(command_);
  command_->lineEdit()->setPlaceholderText(QStringLiteral("Befehl eingeben, Eingabetaste sendet"));
  send_ = new QPushButton(Icon("send"), QStringLiteral("&Senden"), command_row_);
  send_->setObjectName(QStringLiteral("cmdSend"));
  send_->setToolTip(QStringLiteral("Befehl senden und Antwort lesen"));
  send_->setAutoDefault(false);
  command_row_->setFixedHeight(std::max(command_->sizeHint().height(), send_->sizeHint().height()));
}

void TerminalBar::BuildSettings() {
  new FlowLayout(settings_row_, kGroupGap, kBarGap);
  settings_row_->layout()->setContentsMargins(kMargin, 0, kMargin, 0);
  receive_mode_ =
      AddList("&Empfang bis", "cmbReceiveMode", "Woran das Ende einer Antwort erkannt wird", false);
  count_ = AddField("An&zahl", "BinChars", "So viele Zeichen hat eine Antwort, höchstens 1025", 5);
  count_group_ = count_->parentWidget();
  receive_format_ = AddList("For&mat", "cmbReceiveFormat",
                            "Antworten als Text zeigen oder jedes Byte als hexadezimalen Code", false);
  receive_terminator_ = AddList("Endezeichen Empfan&g", "RcvTermChar",
                                "Bis zu diesem Zeichen wird eine Antwort gelesen; auch ein Zeichencode, etwa "
                                "59",
                                true);
  receive_timeout_ = AddField("&Timeout (ms)", "ReceiveTimo",
                              "So lange wird auf eine Antwort gewartet, in Millisekunden", 7);
  send_terminator_ =
      AddList("Endezeichen Se&nden", "SendTermChar",
              "Wird an jeden Befehl angehängt; auch ein Zeichencode, etwa 59, oder ein Text", true);
}

QComboBox* TerminalBar::AddList(const char* label, const char* name, const char* tip, bool editable) {
  auto* list = new BarList;
  list->setObjectName(QLatin1String(name));
  list->setEditable(editable);
  list->setInsertPolicy(QComboBox::NoInsert);
  if (editable) {
    list->setCompleter(nullptr);
    list->setMinimumContentsLength(5);
  }
  list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  AddGroup(label, tip, list);
  if (editable) list->lineEdit()->setAccessibleName(list->accessibleName());
  // The next thing the user types is a command.
  connect(list, &BarList::PickedWithMouse, this, [this] { command_->setFocus(); });
  return list;
}

QLineEdit* TerminalBar::AddField(const char* label, const char* name, const char* tip, int digits) {
  auto* field = new QLineEdit;
  field->setObjectName(QLatin1String(name));
  field->setFixedWidth(field->fontMetrics().horizontalAdvance(QString(digits + 2, QLatin1Char('0'))));
  AddGroup(label, tip, field);
  return field;
}

void TerminalBar::AddGroup(const char* label, const char* tip, QWidget* field) {
  auto* group = new QWidget(settings_row_);
  auto* row = new QHBoxLayout(group);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kBarGap);
  auto* caption = new QLabel(base::ToQt(label));
  caption->setBuddy(field);
  field->setAccessibleName(WithoutMnemonic(label));
  field->setToolTip(base::ToQt(tip));
  row->addWidget(caption);
  row->addWidget(field);
  settings_row_->layout()->addWidget(group);
}

bool TerminalBar::eventFilter(QObject* watched, QEvent* event) {
  if (watched == command_) KeepSelection(event);
  // A line edit does not accept Enter; the list would pass it to the line edit again.
  if (watched == command_->lineEdit() && IsEnterPress(*event)) {
    watched->event(event);
    event->accept();
    return true;
  }
  // A file dropped on the command line would insert its address as a command.
  const bool drag = event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove ||
                    event->type() == QEvent::Drop;
  if (drag && BringsFiles(*static_cast<QDropEvent*>(event)->mimeData())) {
    event->ignore();
    return true;
  }
  return QToolBar::eventFilter(watched, event);
}

// A line edit drops its selection when a menu or a list takes the focus. The next thing typed would then be
// added to the command sent last instead of replacing it.
void TerminalBar::KeepSelection(const QEvent* event) {
  QLineEdit* line = command_->lineEdit();
  if (event->type() == QEvent::FocusOut) {
    all_selected_ = line->hasSelectedText() && line->selectedText() == line->text();
  } else if (event->type() == QEvent::FocusIn && all_selected_ &&
             static_cast<const QFocusEvent*>(event)->reason() != Qt::MouseFocusReason) {
    line->selectAll();
  }
}

void TerminalBar::ShowCount(bool visible) {
  if (count_group_->isVisibleTo(settings_row_) == visible) return;
  count_group_->setVisible(visible);
  updateGeometry();
}

int TerminalBar::HeightAt(int width) const {
  return command_row_->height() + settings_row_->layout()->heightForWidth(width) + 2 * kMargin + kBarGap;
}

void TerminalBar::PlaceCommandLine(int command_left, int command_width, int send_left) {
  const int height = command_row_->height();
  command_->setGeometry(command_left, 0, command_width, height);
  send_->setGeometry(send_left, 0, send_->sizeHint().width(), height);
}

void CommandBoxView::ShowHistory(const terminal::CommandHistory& history, terminal::HistoryChange change) {
  if (change.inserted) box_->insertItem(0, base::ToQt(history.entries().front()));
  if (change.dropped_last) box_->removeItem(box_->count() - 1);
  box_->setCurrentIndex(0);
  box_->lineEdit()->setText(box_->itemText(0));
  box_->lineEdit()->selectAll();
  box_->setFocus();
}

ReceiveView::ReceiveView(TerminalBar* bar, terminal::TerminalState& state, device::Device& device,
                         MessagePrompt& prompt, QObject* parent)
    : QObject(parent), bar_(bar), prompt_(prompt), controls_(state.receive, state.shown, device, *this) {
  Fill();
  Connect();
}

void ReceiveView::Fill() {
  AddWords(bar_->receive_mode(), terminal::texts::kReceiveModes);
  AddWords(bar_->receive_format(), terminal::texts::kReceiveFormats);
  AddWords(bar_->receive_terminator(), terminal::kReceiveTerminatorWords);
  AddWords(bar_->send_terminator(), terminal::kSendTerminatorWords);
}

void ReceiveView::Connect() {
  using Controls = terminal::ReceiveControls;
  OnPick(bar_->receive_mode(), &Controls::PickMode);
  OnPick(bar_->receive_format(), &Controls::PickFormat);
  OnEdit(bar_->receive_terminator(), &QComboBox::currentTextChanged, &Controls::EditReceiveTerminator);
  OnEdit(bar_->send_terminator(), &QComboBox::currentTextChanged, &Controls::EditSendTerminator);
  MarkFaults(bar_->receive_timeout(), &terminal::TimeoutFault);
  MarkFaults(bar_->count(), &terminal::CountFault);
  OnEdit(bar_->receive_timeout(), &QLineEdit::textChanged, &Controls::EditTimeout);
  OnEdit(bar_->count(), &QLineEdit::textChanged, &Controls::EditCount);
}

void ReceiveView::OnPick(QComboBox* list, void (terminal::ReceiveControls::*pick)(int)) {
  const auto run = [this, list, pick](int index) {
    if (showing_) return;
    changed_ = list;
    prompt_.Guard([&] { (controls_.*pick)(index); });
  };
  connect(list, &QComboBox::currentIndexChanged, this, run);
  // Picking the item that is already shown changes no index but counts as a pick.
  connect(list, &QComboBox::activated, this, [this, list, run](int index) {
    if (std::exchange(changed_, nullptr) != list) run(index);
    changed_ = nullptr;
  });
}

template <typename Field, typename Signal>
void ReceiveView::OnEdit(Field* field, Signal changed,
                         void (terminal::ReceiveControls::*edit)(std::string_view)) {
  connect(field, changed, this, [this, edit](const QString& text) {
    if (!showing_) prompt_.Guard([&] { (controls_.*edit)(base::FromQt(text)); });
  });
}

void ReceiveView::MarkFaults(QLineEdit* field, std::string (*fault)(std::string_view)) {
  connect(field, &QLineEdit::textChanged, this,
          [field, fault](const QString& text) { MarkField(field, base::ToQt(fault(base::FromQt(text)))); });
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
