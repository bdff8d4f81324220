#include "window/main_toolbar.h"

#include "terminal/texts.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

constexpr ButtonRow kButtons[] = {
    {"TB_SAVETERMWIN", "save", "Save terminal window to file", true, false},
    {"TB_PRINT", "print", "Print terminal window", true, true},
    {"TB_PORTCONFIGURE", "configure-connection", texts::kConfigureTip, false, false},
    {"TB_CONNECT", "connect", terminal::texts::kConnectTip, true, false},
    {"TB_FLUSH", "flush", "Eingangspuffer flushen", true, true},
    {"TB_OPENLOG", "log-open", "Logdatei öffnen", false, false},
    {"TB_CLOSELOG", "log-close", "Logdatei schließen", false, false},
    {"TB_RECORDLOG", "log-record-off", terminal::texts::kStartRecordingTip, false, true},
    {"TB_INSPECT", "inspect", "Binärdaten analysieren", true, true},
    {"TB_HELP", "help", "Hilfe anzeigen", true, false},
};

}  // namespace

MainToolbar::MainToolbar(QWidget* parent) : KeyToolbar("Toolbar1", "Terminal", kButtons, parent) {}

}  // namespace kolvane::window
