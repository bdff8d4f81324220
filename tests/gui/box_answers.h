#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QStringList>
#include <QTimer>

namespace kolvane::gui {

/// Once started, records the text of each message box and answers it, a question with yes.
class BoxAnswers {
 public:
  BoxAnswers() {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { AnswerBox(); });
  }

  void Start() { timer_.start(0); }
  const QStringList& texts() const { return texts_; }

 private:
  void AnswerBox() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    texts_ << box->text();
    if (QAbstractButton* yes = box->button(QMessageBox::Yes)) return yes->click();
    box->accept();
  }

  QTimer timer_;
  QStringList texts_;
};

}  // namespace kolvane::gui
