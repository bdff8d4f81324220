// Someone who presses every key and clicks everywhere: random_use_test SEED STEPS [--verbose]. The terminal
// is connected to an instrument that answers at random. The program must not crash, and no step may take
// longer than a minute. With --verbose each step is printed before it is carried out. All files are made in a
// temporary folder; nothing is printed, and no other device is opened.

#include <execinfo.h>
#include <signal.h>
#include <unistd.h>

#include <QAbstractButton>
#include <QAbstractPrintDialog>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QEventLoop>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <random>
#include <string>

#ifdef KOLVANE_SANITIZED
#include <sanitizer/common_interface_defs.h>
#endif

#include "base/scope_exit.h"
#include "base/temp_folder.h"
#include "soak/hands.h"
#include "soak/one_peer_library.h"
#include "soak/whim_instrument.h"
#include "window/window_records.h"

namespace kolvane::soak {
namespace {

constexpr unsigned kStepTimeoutS = 60;
// Steps within the event loops of dialogs and waits that earlier steps have opened.
constexpr int kMaxDepth = 12;
constexpr int kMaxPause = 30;  // ms

// Typed and pasted, separated by "|".
constexpr const char* kTexts =
    "MSV? 1|IDN?|DCL|*IDN?;MSV? 2|| |$|$REPEAT 3|$REPEAT|$ENDREPEAT|$DELAY 20|$DELAY -1|$STOP|$IFERR|"
    "$IFEQUAL 1.5|$IFGREATER -2000|$IFLESS abc|$ENDIF|$GOTO :A|:A|$OPENLOG \"a.log\"|$OPENLOG|"
    "$WRITELOG \"x%1\"|$CLOSELOG|$SPLITPARAMS|$GETPARAM 2|$GETPARAM 99|$CLEAR|$SILENT ON|$SILENT OFF|"
    "$AUTOLOG ON|$FLUSH|$READ|$ANSWERS QUERIES|$ANSWERS ALWAYS|'Kommentar|<0D><0A>|<FF>|ÄÖÜ ß € "
    "Δ|0|1|-1|32767|"
    "32768|65536|99999999999999999999|1e308|0x1F|1,5|1.5|[a-z]+|(|\\K|\\1|a*|^$|BYTE 4\tName|WORD|REAL4 x|"
    "STRING 8|127.0.0.1|a.CMD|/|..|%1|&&|\t";

constexpr Qt::Key kKeys[] = {
    Qt::Key_Return,  Qt::Key_Return, Qt::Key_Enter,  Qt::Key_Escape,   Qt::Key_Tab,    Qt::Key_Tab,
    Qt::Key_Backtab, Qt::Key_Space,  Qt::Key_Up,     Qt::Key_Down,     Qt::Key_Left,   Qt::Key_Right,
    Qt::Key_Home,    Qt::Key_End,    Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Delete, Qt::Key_Backspace,
    Qt::Key_Insert,  Qt::Key_F1,     Qt::Key_F2,     Qt::Key_F3,       Qt::Key_F4,     Qt::Key_F5,
    Qt::Key_F6,      Qt::Key_F7,     Qt::Key_F8,     Qt::Key_F9,       Qt::Key_F10,    Qt::Key_F11,
    Qt::Key_F12,     Qt::Key_Menu,   Qt::Key_Plus,   Qt::Key_Minus,    Qt::Key_Comma,  Qt::Key_Period};

constexpr Qt::KeyboardModifiers kModifiers[] = {Qt::NoModifier,
                                                Qt::NoModifier,
                                                Qt::NoModifier,
                                                Qt::NoModifier,
                                                Qt::ShiftModifier,
                                                Qt::ControlModifier,
                                                Qt::ControlModifier | Qt::ShiftModifier,
                                                Qt::AltModifier};

constexpr const char* kFiles[] = {"a.CMD", "b.CMD",   "a.csv",   "a.txt", "a.fmt",
                                  "a.pdf", "ä ö.bin", "fehlt.x", "a.log"};

// Says where the program was stuck (SIGALRM) or failed (SIGABRT); a sanitized one knows the names of its
// functions.
void ReportPlace(int number) {
  std::fputs(number == SIGALRM ? "a step has taken a minute:\n" : "aborted:\n", stderr);
#ifdef KOLVANE_SANITIZED
  __sanitizer_print_stack_trace();
#else
  void* frames[64];
  backtrace_symbols_fd(frames, backtrace(frames, 64), STDERR_FILENO);
#endif
  _exit(1);
}

class Whims {
 public:
  explicit Whims(std::uint32_t seed) : random_(seed) {}
  int Below(int limit) { return static_cast<int>(random_() % static_cast<std::uint32_t>(limit)); }
  bool OneIn(int times) { return Below(times) == 0; }
  template <typename List>
  auto& Of(List&& list) {
    return list[static_cast<decltype(std::size(list))>(Below(static_cast<int>(std::size(list))))];
  }

 private:
  std::minstd_rand random_;
};

class RandomUse : private window::WindowRecords {
 public:
  RandomUse(std::uint32_t seed, long steps, bool verbose)
      : instrument_(seed), whims_(seed), steps_(steps), verbose_(verbose), library_(instrument_.port()) {
    connection_.port_code = device::port_code::kTcpIp;
    connection_.ip_address = "127.0.0.1";
    connection_.timeout_ms = 100;
    QAccessible::setActive(whims_.OneIn(2));
    MakeFiles();
  }

  void Run() {
    Schedule(0);
    while (steps_ > 0) UseWindow();
    alarm(0);
  }

 private:
  void MakeFiles() {
    std::filesystem::current_path(folder_.path());
    folder_.Write("a.CMD",
                  "$REPEAT 5\nMSV? 1\n$ENDREPEAT\n:A\n$IFERR\n$STOP\n$ENDIF\nIDN?\n$DELAY 30\n$GOTO A\n");
    folder_.Write("b.CMD", "$OPENLOG \"b.log\"\n$AUTOLOG ON\nMSV? 1\nMSV? 2\n$CLOSELOG\n");
    folder_.Write("a.txt", "MSV? 1\n\n\xC4\tb\n");
    folder_.Write("a.csv", "a;b\n1;2\n");
    folder_.Write("a.fmt", "BYTE\ta\nWORD 2\tb\nREAL4\tc\nSTRING 4\td\n");
    std::string bytes;
    for (int i = 0; i < 5000; ++i) bytes += static_cast<char>(i * 7);
    folder_.Write("ä ö.bin", bytes);
  }

  void UseWindow() {
    device_.open_step_status = 0;
    terminal_.receive = {};
    terminal_.options = {};
    terminal_.shown = {};
    terminal_.shown.timeout = "100";
    script_.record = {};
    auto context = ContextWith(library_, folder_.path());
    context.own_folder = KOLVANE_LIBRARY_FOLDER;
    context.user_folder = folder_.path();
    context.unsaved = folder_.Path("unsaved");
    window_.emplace(std::move(context));
    QEventLoop loop;
    QObject::connect(&*window_, &window::MainWindow::Closed, &loop, &QEventLoop::quit);
    window_->Load();
    window_->show();
    loop.exec();
    window_.reset();
  }

  void Schedule(int milliseconds) {
    QTimer::singleShot(milliseconds, &context_, [this] { Step(); });
  }

  // The next step is scheduled first: this one may open a dialog or wait.
  void Step() {
    alarm(kStepTimeoutS);
    Schedule(whims_.OneIn(20) ? whims_.Below(kMaxPause) : 0);
    if (!window_ || !window_->isVisible()) return;
    --steps_;
    if (steps_ <= 0 || depth_ >= kMaxDepth) return CloseSomething();
    ++depth_;
    const base::ScopeExit left([this] { --depth_; });
    if (auto* const dialog = QApplication::activeModalWidget();
        dialog != nullptr && AnswerFileDialog(*dialog))
      return;
    Act();
  }

  void Act() {
    const int kind = whims_.Below(100);
    if (kind < 30) return Click();
    if (kind < 60) return PressKey();
    if (kind < 75) return Type();
    if (kind < 88) return Trigger();
    if (kind < 90) return Resize();
    if (kind < 92) return Copy();
    if (kind < 93) return Wheel();
    if (kind < 94) return Drop();
    if (kind < 95) return ReadAloud();
    if (kind < 96) return OpenList();
    if (kind < 97 && whims_.OneIn(5)) return ChangeDesktop();
    if (kind < 98) return Connect();
    if (kind < 99) return OpenDialog();
    CloseSomething();
  }

  void Say(const QString& what) const {
    if (verbose_) std::fprintf(stderr, "%*s%s\n", depth_, "", qPrintable(what));
  }

  static QString NameOf(const QWidget& widget) {
    return QLatin1String(widget.metaObject()->className()) + ' ' + widget.objectName();
  }

  // What a user can reach at the moment.
  QWidget* Reachable() {
    if (QWidget* const popup = QApplication::activePopupWidget()) return popup;
    if (QWidget* const modal = QApplication::activeModalWidget()) return modal;
    std::vector<QWidget*> windows;
    for (QWidget* const widget : QApplication::topLevelWidgets())
      if (widget->isVisible() && widget->windowHandle() != nullptr) windows.push_back(widget);
    return windows.empty() ? nullptr : whims_.Of(windows);
  }

  // Mostly something that takes the keyboard; labels and frames do little.
  QWidget& PartOf(QWidget& top) {
    const bool any = whims_.OneIn(3);
    std::vector<QWidget*> parts{&top};
    for (QWidget* const part : top.findChildren<QWidget*>()) {
      const bool is_shown = part->isVisible() && part->window() == &top && !part->size().isEmpty();
      if (is_shown && (any || part->focusPolicy() != Qt::NoFocus)) parts.push_back(part);
    }
    return *whims_.Of(parts);
  }

  QPoint PointIn(const QWidget& part, const QWidget& top) {
    return part.mapTo(&top, QPoint(whims_.Below(part.width()), whims_.Below(part.height())));
  }

  void Click() {
    QWidget* const top = Reachable();
    if (top == nullptr || top->windowHandle() == nullptr || top->size().isEmpty()) return;
    const QWidget& part = PartOf(*top);
    QWindow* const window = top->windowHandle();
    // As a window manager does.
    if (top->windowType() != Qt::Popup) top->activateWindow();
    const QPoint at = PointIn(part, *top);
    const QPoint to = PointIn(part, *top);
    const auto modifiers = whims_.Of(kModifiers);
    const auto button = whims_.OneIn(8) ? Qt::RightButton : Qt::LeftButton;
    Say(QStringLiteral("click %1 at %2,%3").arg(NameOf(part)).arg(at.x()).arg(at.y()));
    if (whims_.OneIn(8)) return hands_.DoubleClick(*window, button, modifiers, at);
    hands_.Drag(*window, button, modifiers, at, whims_.OneIn(5) ? to : at);
  }

  QWindow* FocusWindow() {
    if (QWidget* const top = QApplication::focusWindow() == nullptr ? Reachable() : nullptr)
      top->activateWindow();
    return QApplication::focusWindow();
  }

  static QString TextOf(int key, Qt::KeyboardModifiers modifiers) {
    const bool has_text =
        key < Qt::Key_Escape && (modifiers & ~Qt::KeyboardModifiers(Qt::ShiftModifier)) == 0;
    return has_text ? QString(QChar(key)) : QString();
  }

  void PressKey() {
    QWindow* const window = FocusWindow();
    if (window == nullptr) return;
    const auto modifiers = whims_.Of(kModifiers);
    const auto key = whims_.OneIn(3)
                         ? static_cast<Qt::Key>(Qt::Key_0 + whims_.Below(Qt::Key_Z - Qt::Key_0 + 1))
                         : whims_.Of(kKeys);
    if (EndsDialog(key)) return;
    Say(QStringLiteral("key %1 %2 in %3")
            .arg(key, 0, 16)
            .arg(modifiers.toInt(), 0, 16)
            .arg(QApplication::focusWidget() == nullptr ? QString() : NameOf(*QApplication::focusWidget())));
    Hands::Key(*window, key, modifiers, TextOf(key, modifiers));
  }

  void Type() {
    const QString text = whims_.Of(texts_);
    Say("type " + text);
    for (const QChar c : text)
      if (QWindow* const window = FocusWindow()) Hands::Key(*window, Qt::Key_unknown, Qt::NoModifier, c);
    QWindow* const window = FocusWindow();
    if (window != nullptr && !whims_.OneIn(4) && !EndsDialog(Qt::Key_Return))
      Hands::Key(*window, Qt::Key_Return, Qt::NoModifier, "\r");
  }

  void Trigger() {
    QWidget* const top = Reachable();
    if (top == nullptr) return;
    std::vector<QAction*> actions;
    for (QAction* const action : top->findChildren<QAction*>())
      if (action->isEnabled() && action->isVisible() && action->menu() == nullptr) actions.push_back(action);
    if (actions.empty()) return;
    QAction* const action = whims_.Of(actions);
    Say("trigger " + action->objectName() + ' ' + action->text());
    action->trigger();
  }

  void Resize() {
    QWidget* const top = Reachable();
    if (top == nullptr) return;
    const QSize size(200 + whims_.Below(1400), 150 + whims_.Below(900));
    Say(QStringLiteral("resize to %1 x %2").arg(size.width()).arg(size.height()));
    top->resize(size);
  }

  void Copy() {
    const QString text = whims_.Of(texts_);
    Say("clipboard " + text);
    const int lines = whims_.OneIn(4) ? 2000 : 1 + whims_.Below(3);
    QApplication::clipboard()->setText(
        (text + whims_.Of(std::array{"\n", "\r\n", "\r", "\u2028"})).repeated(lines));
  }

  void Wheel() {
    QWidget* const top = Reachable();
    if (top == nullptr || top->size().isEmpty()) return;
    QWidget& part = PartOf(*top);
    const QPointF at(part.rect().center());
    const QPoint turn(0, (whims_.Below(5) - 2) * 120);
    Say("wheel " + NameOf(part));
    QWheelEvent wheel(at, part.mapToGlobal(at), {}, turn, Qt::NoButton, whims_.Of(kModifiers),
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&part, &wheel);
  }

  void Drop() {
    QWidget* const top = Reachable();
    if (top == nullptr || top->size().isEmpty()) return;
    QWidget& part = PartOf(*top);
    QMimeData data;
    if (whims_.OneIn(2))
      data.setUrls({QUrl::fromLocalFile(QString::fromStdString(folder_.Path(whims_.Of(kFiles))))});
    else
      data.setText(whims_.Of(texts_));
    Say("drop on " + NameOf(part));
    const QPointF at(part.rect().center());
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    const QPointer<QWidget> target(&part);
    QApplication::sendEvent(target, &enter);
    if (!enter.isAccepted() || !target) return;
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
  }

  // As a screen reader does.
  void ReadAloud() {
    QWidget* const top = Reachable();
    QAccessibleInterface* part =
        top == nullptr ? nullptr : QAccessible::queryAccessibleInterface(&PartOf(*top));
    while (part != nullptr && part->isValid()) {
      const QString name = part->text(QAccessible::Name) + part->text(QAccessible::Value);
      Say("read " + name.left(40));
      if (QAccessibleTextInterface* const text = part->textInterface()) ReadText(*text);
      part->rect();
      part->state();
      part = part->childCount() == 0 ? nullptr : part->child(whims_.Below(part->childCount()));
    }
  }

  void ReadText(QAccessibleTextInterface& text) {
    const int count = text.characterCount();
    if (count == 0) return;
    int start = 0;
    int end = 0;
    const int at = whims_.Below(count);
    // Qt 6.4 never returns from asking a QLineEdit for the word at the end of its text.
    text.textAtOffset(at, QAccessible::LineBoundary, &start, &end);
    text.characterRect(at);
    text.text(at, std::min(count, at + 100));
    if (whims_.OneIn(4)) text.setCursorPosition(at);
  }

  void ChangeDesktop() {
    Say("change the desktop");
    const bool dark = whims_.OneIn(2);
    QApplication::setPalette(QPalette(dark ? QColor(40, 40, 40) : QColor(240, 240, 240)));
    QFont font = QApplication::font();
    font.setPointSize(7 + whims_.Below(12));
    QApplication::setFont(font);
  }

  void OpenList() {
    if (QApplication::activeModalWidget() != nullptr || window_->IsBusy()) return;
    Say("open a list");
    window_->OpenCommandFile(folder_.Path(whims_.Of(std::array{"a.CMD", "b.CMD", "a.txt", "fehlt.x"})));
  }

  void Connect() {
    if (QApplication::activeModalWidget() != nullptr || window_->IsBusy() || device_.connected) return;
    Say("connect");
    window_->PressConnect();
  }

  // Those that need preparation.
  void OpenDialog() {
    if (QApplication::activeModalWidget() != nullptr || window_->IsBusy()) return;
    const bool inspect = whims_.OneIn(2);
    Say(inspect ? "inspect all" : "configure the connection");
    if (inspect) window_->findChild<pane::OutputPane*>()->selectAll();
    if (!inspect && device_.connected) window_->PressConnect();
    const char* const name = inspect ? "mnuBinInspect" : "mnuConfigureConnection";
    window_->findChild<QAction*>(QLatin1String(name))->trigger();
  }

  // In a dialog not always, so that it stays for a while.
  bool EndsDialog(int key) {
    const auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    const bool ends = key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter;
    return ends && dialog != nullptr && qobject_cast<const QMessageBox*>(dialog) == nullptr &&
           !whims_.OneIn(4);
  }

  bool AnswerFileDialog(QWidget& dialog) {
    if (auto* const print = qobject_cast<QAbstractPrintDialog*>(&dialog)) {
      print->reject();
      return true;
    }
    auto* const files = qobject_cast<QFileDialog*>(&dialog);
    if (files == nullptr) return false;
    const char* const name = whims_.Of(kFiles);
    Say(QStringLiteral("choose ") + name);
    if (whims_.OneIn(4)) {
      files->reject();
    } else {
      files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
          ->setText(QString::fromStdString(folder_.Path(name)));
      static_cast<QDialog*>(files)->accept();
    }
    return true;
  }

  // Without events of its own, so that it ends.
  void CloseSomething() {
    if (QWidget* const popup = QApplication::activePopupWidget()) {
      Say("close " + NameOf(*popup));
      popup->close();
    } else if (QWidget* const modal = QApplication::activeModalWidget();
               modal != nullptr && modal != &*window_) {
      CloseModal(*modal);
    } else if (window_->IsBusy()) {
      QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
      QApplication::sendEvent(&*window_, &escape);
    } else if (steps_ <= 0 || whims_.OneIn(5)) {
      Say("close the window");
      window_->close();
    }
  }

  void CloseModal(QWidget& modal) {
    Say("close " + NameOf(modal));
    auto* const box = qobject_cast<QMessageBox*>(&modal);
    if (box != nullptr && !box->buttons().isEmpty()) {
      whims_.Of(box->buttons())->click();
    } else if (auto* const dialog = qobject_cast<QDialog*>(&modal)) {
      dialog->reject();
    } else {
      modal.close();
    }
  }

  base::TempFolder folder_;
  WhimInstrument instrument_;
  Whims whims_;
  const QStringList texts_ = QString::fromUtf8(kTexts).split(QLatin1Char('|'));
  Hands hands_;
  long steps_;
  bool verbose_;
  int depth_ = 0;
  OnePeerLibrary library_;
  std::optional<window::MainWindow> window_;
  QObject context_;
};

}  // namespace
}  // namespace kolvane::soak

int main(int argc, char** argv) {
  using namespace kolvane;
  if (argc < 3) {
    std::fprintf(stderr, "usage: %s SEED STEPS [--verbose]\n", argv[0]);
    return 2;
  }
  const base::TempFolder home;
  for (const char* name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_DATA_HOME"})
    setenv(name, home.path().c_str(), 1);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  for (const int number : {SIGALRM, SIGABRT}) signal(number, soak::ReportPlace);
  soak::RandomUse(static_cast<std::uint32_t>(std::strtoul(argv[1], nullptr, 10)),
                  std::strtol(argv[2], nullptr, 10), argc > 3 && std::strcmp(argv[3], "--verbose") == 0)
      .Run();
  return 0;
}
