#include "window/script_toolbar.h"

#include <QLayout>
#include <QStyle>

namespace kolvane::window {
namespace {

constexpr ButtonRow kButtons[] = {
    {"TB_PLAY", "play", "Befehlsliste abspielen (F5)", true, false},
    {"TB_SINGLESTEP", "single-step", "Einzelschritt (F10)", true, false},
    {"TB_BREAK", "break", "Nach der laufenden Zeile anhalten", true, false},
    {"TB_STOP", "stop", "Befehlsliste beenden (Umschalt+F5)", true, false},
    {"TB_RECORD", "record-off", "Gesendete Befehle aufzeichnen", true, true},
    {"TB_NEWSCRIPT", "list-new", "Neue Befehlsliste", true, false},
    {"TB_OPENSCRIPT", "list-open", "Befehlsliste öffnen", true, false},
    {"TB_SAVESCRIPT", "list-save", "Befehlsliste speichern", true, false},
    {"TB_PRINTSCRIPT", "list-print", "Befehlsliste drucken", true, true},
    {"TB_CUT", "cut", "Ausschneiden", true, false},
    {"TB_COPY", "copy", "Kopieren", true, false},
    {"TB_PASTE", "paste", "Einfügen", true, true},
    {"TB_SPECIALCOMMANDS", "special-commands", "Hilfe zu den $-Befehlen", true, false},
};

constexpr QSize kLarge(22, 22);
constexpr QSize kSmall(16, 16);
constexpr QSize kSmallest(12, 12);
constexpr int kRunControls = 4;  // the first buttons

}  // namespace

ScriptToolbar::ScriptToolbar(QWidget* parent) : KeyToolbar("Toolbar3", "Befehlsliste", kButtons, parent) {
  setOrientation(Qt::Vertical);
  Button("TB_PLAY")->setShortcut(Qt::Key_F5);
  Button("TB_STOP")->setShortcut(Qt::SHIFT | Qt::Key_F5);
  Button("TB_SINGLESTEP")->setShortcut(Qt::Key_F10);
  // The key beside Scroll Lock is called otherwise while Ctrl is held.
  Button("TB_BREAK")->setShortcuts({Qt::Key_F6, Qt::CTRL | Qt::Key_Pause, Qt::CTRL | Qt::Key_Cancel});
  Button("TB_RECORD")->setShortcut(Qt::CTRL | Qt::Key_R);
  Button("TB_PRINTSCRIPT")->setShortcut(Qt::CTRL | Qt::Key_P);
  Button("TB_SPECIALCOMMANDS")->setShortcut(Qt::CTRL | Qt::Key_F1);
  Button("TB_RECORD")->setCheckable(true);
}

void ScriptToolbar::ShowRecording(int tag, int image) {
  ShowState("TB_RECORD", tag, image, Button("TB_RECORD")->toolTip());
  Button("TB_RECORD")->setChecked(tag == 1);
}

void ScriptToolbar::FitInto(int height) {
  if (iconSize() == kLarge) whole_height_ = sizeHint().height();
  if (height >= whole_height_) return setIconSize(kLarge);
  setIconSize(height >= RunControlHeight(kSmall) ? kSmall : kSmallest);
}

int ScriptToolbar::RunControlHeight(QSize icons) const {
  const int padding = widgetForAction(Button("TB_STOP"))->sizeHint().height() - iconSize().height();
  const QMargins margins = layout()->contentsMargins();
  return kRunControls * (icons.height() + padding + layout()->spacing()) + margins.top() + margins.bottom() +
         style()->pixelMetric(QStyle::PM_ToolBarExtensionExtent, nullptr, this);
}

}  // namespace kolvane::window
