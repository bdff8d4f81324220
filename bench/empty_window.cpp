// The baseline for the terminal's start: a window with a text pane, the minimum that Qt Widgets can show.

#include <QApplication>
#include <QPlainTextEdit>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QPlainTextEdit pane;
  pane.resize(1160, 740);
  pane.show();
  return QApplication::exec();
}
