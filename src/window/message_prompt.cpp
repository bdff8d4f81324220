#include "window/message_prompt.h"

#include <QMessageBox>
#include <new>
#include <utility>

#include "base/runtime_error.h"
#include "window/text.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

void Show(QWidget* parent, QMessageBox::Icon icon, std::string_view text) {
  QMessageBox box(icon, ToQt(texts::kProgram), ToQt(text), QMessageBox::Ok, parent);
  box.setObjectName(QStringLiteral("MessageBox"));
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

}  // namespace

void MessagePrompt::ShowError(std::string_view text) { Show(parent_, QMessageBox::Critical, text); }

void MessagePrompt::ShowMessage(std::string_view text) { Show(parent_, QMessageBox::NoIcon, text); }

void MessagePrompt::Guard(const std::function<void()>& event) {
  try {
    event();
  } catch (const base::RuntimeError& error) {
    ShowError(error.what());
  } catch (const std::bad_alloc&) {
    ShowError(texts::kNoMemory);
  }
}

void MessagePrompt::OnTrigger(QAction* action, std::function<void()> event) {
  QObject::connect(action, &QAction::triggered, action, [this, event = std::move(event)] { Guard(event); });
}

}  // namespace kolvane::window
