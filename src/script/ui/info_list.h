#pragma once

#include <QHeaderView>
#include <QKeyEvent>
#include <QTreeWidget>

namespace kolvane::script {

/// A list below the command list, a fixed number of rows high and hidden at first. Esc closes it.
class InfoList : public QTreeWidget {
  Q_OBJECT

 public:
  QSize sizeHint() const final {
    return {QTreeWidget::sizeHint().width(),
            header()->sizeHint().height() + shown_rows_ * (fontMetrics().height() + 4)};
  }

 Q_SIGNALS:
  void Closed();

 protected:
  InfoList(const QString& object_name, int shown_rows, QWidget* parent)
      : QTreeWidget(parent), shown_rows_(shown_rows) {
    setObjectName(object_name);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    hide();
  }

  /// The columns take the width of their content. Not to be called before the list is shown: a hidden header,
  /// too, measures its sections, in bold.
  void FitColumns(std::initializer_list<int> columns) {
    for (const int column : columns) header()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
  }

  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() != Qt::Key_Escape) return QTreeWidget::keyPressEvent(event);
    hide();
    Q_EMIT Closed();
  }

 private:
  int shown_rows_;
};

}  // namespace kolvane::script
