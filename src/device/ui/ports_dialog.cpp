#include "device/ui/ports_dialog.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <iterator>
#include <limits>
#include <optional>
#include <string_view>

#include "base/number.h"
#include "base/texts.h"
#include "base/ui/buttons.h"
#include "base/ui/qt_text.h"
#include "device/connection_parameters.h"
#include "device/port_table.h"

namespace kolvane::device {
namespace {

constexpr const char* kRates[] = {"300",     "600",     "1200",    "2400",    "4800",    "9600",
                                  "19200",   "38400",   "57600",   "115200",  "230400",  "460800",
                                  "500000",  "576000",  "921600",  "1000000", "1152000", "1500000",
                                  "2000000", "2500000", "3000000", "3500000", "4000000"};

constexpr std::int32_t kDefaultRate = 9600;
constexpr std::int32_t kNoRate = 1;
constexpr std::int16_t kBuffer = 4096;  // bytes
constexpr int kLastBoard = 15;

struct PortFieldRow {
  const char* object_name;
  const char* label;
  std::int16_t code;  // of the port to test; 0: none
};

// In the order of kPortSettings.
constexpr PortFieldRow kFields[] = {{"COM1_Node", "COM&1, Gerätedatei", port_code::kCom1},
                                    {"COM1_Baud", "COM1, &Baudrate", 0},
                                    {"COM2_Node", "COM&2, Gerätedatei", port_code::kCom2},
                                    {"COM2_Baud", "COM2, Baud&rate", 0},
                                    {"LPT1_Node", "&LPT1, Gerätedatei", port_code::kLpt1},
                                    {"LPT2_Node", "LP&T2, Gerätedatei", port_code::kLpt2},
                                    {"GPIB_Board", "&GPIB, Nummer der Karte", port_code::kGpib}};
static_assert(std::size(kFields) == kPortSettings.size());

bool Offers(const PortSetting& setting, const AttachedPort& port) {
  if (setting.name == "GPIB") return port.kind == AttachedPort::Kind::kGpib;
  if (setting.name.starts_with("LPT")) return port.kind == AttachedPort::Kind::kParallel;
  return port.kind == AttachedPort::Kind::kSerial;
}

std::optional<std::int32_t> RateFrom(std::string_view text) {
  return base::NumberValue(text, 1, std::numeric_limits<std::int32_t>::max());
}

// Device files cannot be judged: an adapter may be attached later. What the environment gives is not saved.
std::string FaultOf(const PortSetting& setting) {
  if (setting.value.empty() || setting.fixed) return {};
  if (setting.IsRate() && !RateFrom(setting.value)) return "„" + setting.value + "“ ist keine Baudrate";
  if (setting.name == "GPIB" && !base::NumberValue(setting.value, 0, kLastBoard))
    return "„" + setting.value + "“ ist keine Nummer einer GPIB-Karte (0 bis " + std::to_string(kLastBoard) +
           ")";
  return {};
}

QStringList Choices(const PortSetting& setting, const std::vector<AttachedPort>& ports) {
  QStringList choices(QString{});
  if (setting.IsRate()) {
    for (const char* rate : kRates) choices << QLatin1String(rate);
    return choices;
  }
  for (const AttachedPort& port : ports) {
    if (Offers(setting, port))
      choices << (setting.name == "GPIB" ? QString::number(port.board) : base::ToQt(port.node));
  }
  return choices;
}

}  // namespace

PortsDialog::PortsDialog(const PortsDialogContext& context, QWidget* parent)
    : QDialog(parent), context_(context), loaded_(LoadPortSettings()), result_(new QLabel) {
  setObjectName(QStringLiteral("PortsDialog"));
  setWindowTitle(QStringLiteral("Schnittstellen zuordnen"));
  auto* layout = new QVBoxLayout(this);
  auto* form = new QFormLayout;
  layout->addLayout(form);
  for (const PortSetting& setting : loaded_) fields_.push_back(AddField(form, setting));
  result_->setTextFormat(Qt::PlainText);
  result_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout->addWidget(result_);
  // In the dialog before it has buttons, so that the dialog learns which one is the default.
  auto* buttons = new QDialogButtonBox;
  layout->addWidget(buttons);
  auto* test = buttons->addButton(QStringLiteral("&Prüfen"), QDialogButtonBox::ActionRole);
  test->setObjectName(QStringLiteral("cmdTest"));
  test->setEnabled(!context.connected);
  if (context.connected) test->setToolTip(QStringLiteral("Geht nur ohne Verbindung"));
  auto* ok = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
  ok->setObjectName(QStringLiteral("cmdOK"));
  ok->setDefault(true);
  buttons->addButton(QStringLiteral("Abbrechen"), QDialogButtonBox::RejectRole)
      ->setObjectName(QStringLiteral("cmdCancel"));
  base::OnClick(test, [this] { Test(); });
  connect(buttons, &QDialogButtonBox::accepted, this, &PortsDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &PortsDialog::reject);
}

QComboBox* PortsDialog::AddField(QFormLayout* form, const PortSetting& setting) {
  const PortFieldRow& row = kFields[fields_.size()];
  auto* field = new QComboBox;
  field->setObjectName(QLatin1String(row.object_name));
  field->setEditable(true);
  field->addItems(Choices(setting, context_.attached));
  field->setCurrentText(base::ToQt(setting.value));
  field->setMinimumContentsLength(30);
  field->lineEdit()->setPlaceholderText(setting.IsRate() ? QStringLiteral("wie in „Verbindung konfigurieren“")
                                                         : base::ToQt(DefaultNode(setting.name)));
  field->setEnabled(!setting.fixed);
  if (setting.fixed)
    field->setToolTip(base::ToQt("Die Umgebungsvariable KOLVANE_" + setting.name + " gibt dies vor"));
  form->addRow(base::ToQt(row.label), field);
  return field;
}

std::vector<PortSetting> PortsDialog::Entered() const {
  std::vector<PortSetting> settings = loaded_;
  for (std::size_t at = 0; at < settings.size(); ++at)
    settings[at].value = base::FromQt(fields_[at]->currentText().trimmed());
  return settings;
}

void PortsDialog::Test() {
  QStringList results;
  const std::vector<PortSetting> settings = Entered();
  for (std::size_t at = 0; at < settings.size(); ++at) {
    const PortSetting& setting = settings[at];
    if (kFields[at].code == 0 || setting.value.empty()) continue;
    const bool has_rate = at + 1 < settings.size() && settings[at + 1].IsRate();
    const QString result = TestOne(kFields[at].code, setting.value, has_rate ? settings[at + 1].value : "");
    results << base::ToQt(setting.name) + QLatin1String(": ") + result;
  }
  result_->setText(results.isEmpty() ? QStringLiteral("Nichts zugeordnet") : results.join(u'\n'));
}

// Opens and closes the port; nothing is sent.
QString PortsDialog::TestOne(std::int16_t code, const std::string& node, const std::string& rate) {
  PortLibrary* library = context_.library.Library();
  if (library == nullptr) return base::ToQt(context_.library.Failure());
  if (!library->TakesNode()) return QStringLiteral("lässt sich mit dieser Portbibliothek nicht prüfen");
  library->SetNode(code, node);
  const std::int32_t baud = IsSerial(code) ? RateFrom(rate).value_or(kDefaultRate) : kNoRate;
  const std::int32_t status = library->OpenPort(code, baud, "n", 8, 1, kBuffer);
  library->ClosePort();
  if (status >= 0) return QStringLiteral("in Ordnung");
  const std::string words = library->StatusText(status);
  return QString::number(status) + (words.empty() ? QString() : QLatin1String(": ") + base::ToQt(words));
}

void PortsDialog::accept() {
  const std::vector<PortSetting> settings = Entered();
  for (const PortSetting& setting : settings) {
    if (const std::string fault = FaultOf(setting); !fault.empty()) return context_.prompt.ShowError(fault);
  }
  if (const int error = SavePortSettings(settings))
    return context_.prompt.ShowError(base::texts::NotWritten("ports.ini", error));
  QDialog::accept();
}

}  // namespace kolvane::device
