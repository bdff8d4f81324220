#include "window/script_toolbar.h"

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

}  // namespace

ScriptToolbar::ScriptToolbar(QWidget* parent) : KeyToolbar("Toolbar3", "Befehlsliste", kButtons, parent) {
  setOrientation(Qt::Vertical);
  Button("TB_PLAY")->setShortcut(Qt::Key_F5);
  Button("TB_STOP")->setShortcut(Qt::SHIFT | Qt::Key_F5);
  Button("TB_SINGLESTEP")->setShortcut(Qt::Key_F10);
  Button("TB_RECORD")->setCheckable(true);
}

void ScriptToolbar::ShowRecording(int tag, int image) {
  ShowState("TB_RECORD", tag, image, Button("TB_RECORD")->toolTip());
  Button("TB_RECORD")->setChecked(tag == 1);
}

}  // namespace kolvane::window
