#include "help/widget_topics.h"

#include <algorithm>
#include <iterator>

namespace kolvane::help {
namespace {

struct WidgetRow {
  std::string_view name;
  std::uint32_t topic;
};

// A widget that is not listed has the topic of its parent.
constexpr WidgetRow kWidgetRows[] = {
    // windows
    {"frmTerminal", 10},
    {"TermWin", 11},
    {"CommandScript", 12},
    {"UnsavedBar", 402},
    {"FindBar", 105},
    {"FindingsList", 408},
    {"WatchPanel", 409},
    {"StatusBar1", 13},
    {"StatusBar2", 13},
    {"HelpWindow", 16},
    {"OpenDialog", 17},
    {"SaveDialog", 17},
    {"PrintDialog", 18},
    {"FontDialog", 19},
    {"ColorDialog", 20},
    {"CommentDialog", 21},
    {"MessageBox", 22},
    {"ProgressDialog", 23},
    // menus
    {"mnuFile", 100},
    {"mnuNewCommandFile", 402},
    {"mnuOpenCommandFile", 402},
    {"mnuSaveCommandFile", 402},
    {"mnuSaveCommandFileAs", 402},
    {"mnuOpenLog", 122},
    {"mnuCloseLog", 122},
    {"mnuSaveTerminal", 123},
    {"mnuOpenTextFile", 124},
    {"mnuPrintTermWindow", 18},
    {"mnuExit", 100},
    {"mnuCon", 101},
    {"mnuConfigureConnection", 300},
    {"mnuConnect", 120},
    {"mnuDisconnect", 120},
    {"mnuOptions", 102},
    {"mnuOption_0", 125},
    {"mnuOption_1", 126},
    {"mnuOption_2", 127},
    {"mnuExtras", 104},
    {"mnuValues", 130},
    {"ValuesWindow", 130},
    {"mnuFind", 105},
    {"mnuFindNext", 105},
    {"mnuFindPrevious", 105},
    {"mnuCheckList", 408},
    {"mnuBreakpoint", 409},
    {"mnuPlayFromRow", 409},
    {"mnuRunToRow", 409},
    {"mnuRecent", 402},
    {"mnuDuplicateRow", 401},
    {"mnuToggleComment", 401},
    {"mnuMoveUp", 401},
    {"mnuMoveDown", 401},
    {"mnuReadAnswer", 212},
    {"mnuListen", 212},
    {"mnuTimeStamps", 104},
    {"mnuLogTimeStamps", 104},
    {"mnuUtf8", 104},
    {"mnuCopyWithTimes", 104},
    {"mnuQueriesOnly", 211},
    {"mnuPorts", 308},
    {"PortsDialog", 308},
    {"mnuBlocks", 213},
    {"mnuReconnect", 214},
    {"mnuDeviceWords", 202},
    {"mnuPOP1", 103},
    {"mnuSaveAs", 123},
    {"mnuOpen", 124},
    {"mnuPrint", 18},
    {"mnuBackColor", 20},
    {"mnuFont", 19},
    {"mnuBinInspect", 500},
    {"mnuInsertComment", 21},
    // toolbars
    {"Toolbar1", 110},
    {"TB_SAVETERMWIN", 123},
    {"TB_PRINT", 18},
    {"TB_PORTCONFIGURE", 300},
    {"TB_CONNECT", 120},
    {"TB_FLUSH", 121},
    {"TB_OPENLOG", 122},
    {"TB_CLOSELOG", 122},
    {"TB_RECORDLOG", 122},
    {"TB_INSPECT", 500},
    {"TB_HELP", 16},
    {"Toolbar2", 111},
    {"Toolbar3", 112},
    {"TB_PLAY", 403},
    {"TB_SINGLESTEP", 404},
    {"TB_BREAK", 405},
    {"TB_STOP", 405},
    {"TB_RECORD", 406},
    {"TB_NEWSCRIPT", 402},
    {"TB_OPENSCRIPT", 402},
    {"TB_SAVESCRIPT", 402},
    {"TB_PRINTSCRIPT", 18},
    {"TB_CUT", 401},
    {"TB_COPY", 401},
    {"TB_PASTE", 401},
    {"TB_SPECIALCOMMANDS", 407},
    // command line and receiving
    {"cmbCommand", 200},
    {"cmdSend", 201},
    {"cmbReceiveMode", 203},
    {"BinChars", 206},
    {"cmbReceiveFormat", 207},
    {"RcvTermChar", 208},
    {"SendTermChar", 209},
    {"ReceiveTimo", 210},
    // connection dialog
    {"U_Port", 300},
    {"Port_0", 310},
    {"Port_1", 310},
    {"Port_2", 311},
    {"Port_3", 311},
    {"Port_4", 312},
    {"Port_5", 312},
    {"Port_6", 313},
    {"Port_7", 314},
    {"Port_8", 315},
    {"Port_9", 316},
    {"Baud", 301},
    {"Parity", 301},
    {"DataBits", 301},
    {"StopBits", 301},
    {"TIMO", 301},
    {"RCV", 301},
    {"Addr485", 301},
    {"Label1", 301},
    {"DialTIMO", 301},
    {"txtModemScript", 301},
    {"XOnLimit", 302},
    {"XOffLimit", 302},
    {"XonChar", 302},
    {"XoffChar", 302},
    {"DTRControl", 302},
    {"RTSControl", 302},
    {"ExtPar", 302},
    {"GPIBAddr", 303},
    {"GPIBTIMO", 303},
    {"EOSChar", 303},
    {"SendEOIOnWrite", 303},
    {"SendEOIWithEOS", 303},
    {"StopReadOnEOS", 303},
    {"RepeatAddressing", 303},
    {"PAPOMode", 304},
    {"LPTTimo", 304},
    {"IPAddrList", 305},
    {"txtIPPort", 305},
    {"TCPIPTimo", 305},
    {"USBAddrList", 307},
    {"USBTimo", 307},
    {"Command3", 307},
    {"lstScan", 307},
    // inspector
    {"frmBinInspect", 500},
    {"ValuePanel", 500},
    {"PositionLabel", 500},
    {"GoToEdit", 500},
    {"InspectFind", 500},
    {"cmdPreviousPage", 500},
    {"cmdNextPage", 500},
    {"cmdLoadFile", 500},
    {"cmdSaveBlock", 500},
    {"cmdCopyAs", 500},
    {"cmdResultList", 500},
    {"chkRepeat", 500},
    {"cmdSaveCsv", 500},
    {"txtBinData", 501},
    {"NumDisplay", 502},
    {"Frame1", 502},
    {"optFormat", 502},
    {"optFormat_5", 505},
    {"chkMotorola", 503},
    {"cmbSpecialFormat", 505},
    {"lstTemplate", 505},
};

std::optional<std::uint32_t> FindRow(std::string_view name) {
  const auto* row = std::ranges::find(kWidgetRows, name, &WidgetRow::name);
  return row == std::end(kWidgetRows) ? std::nullopt : std::optional(row->topic);
}

}  // namespace

std::optional<std::uint32_t> WidgetTopic(std::string_view object_name) {
  if (const auto topic = FindRow(object_name)) return topic;
  const std::size_t index = object_name.rfind('_');
  const bool indexed = index != std::string_view::npos && index + 1 < object_name.size() &&
                       object_name.find_first_not_of("0123456789", index + 1) == std::string_view::npos;
  return indexed ? FindRow(object_name.substr(0, index)) : std::nullopt;
}

std::vector<std::uint32_t> AllWidgetTopics() {
  std::vector<std::uint32_t> topics;
  for (const WidgetRow& row : kWidgetRows) topics.push_back(row.topic);
  return topics;
}

HelpPlace PlaceOfNames(std::span<const std::string> names) {
  for (const std::string& name : names) {
    if (const auto topic = WidgetTopic(name)) return {*topic, name};
  }
  return {};
}

}  // namespace kolvane::help
