#include <QDir>
#include <QSettings>
#include <QStandardPaths>

#include "component/settings_store.h"

namespace kolvane::component {
namespace {

QString UserFile() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
         QStringLiteral("/Kolvane/Kolvane.ini");
}

QString Key(const std::string& section, const std::string& key) {
  return QString::fromStdString(section + "/" + key);
}

class IniStore final : public SettingsStore {
 public:
  explicit IniStore(const QString& path) : settings_(path, QSettings::IniFormat) {}

  std::string Read(const std::string& section, const std::string& key,
                   const std::string& fallback) const override {
    const QVariant value = settings_.value(Key(section, key));
    if (!value.isValid()) return fallback;
    // A hand-written value with a bare comma is taken for a list.
    return value.toStringList().join(QStringLiteral(",")).toStdString();
  }

  void Write(const std::string& section, const std::string& key, const std::string& value) override {
    settings_.setValue(Key(section, key), QString::fromStdString(value));
  }

 private:
  QSettings settings_;
};

}  // namespace

std::unique_ptr<SettingsStore> OpenIniStore(const std::string& path) {
  return std::make_unique<IniStore>(path.empty() ? UserFile() : QString::fromStdString(path));
}

}  // namespace kolvane::component
