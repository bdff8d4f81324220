// What every SettingsStore promises.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>

#include "base/temp_folder.h"
#include "component/ini_store.h"
#include "component/memory_store.h"

namespace kolvane::component {
namespace {

struct StoreCase {
  const char* name;
  std::function<std::unique_ptr<SettingsStore>(const base::TempFolder&)> make;
};

std::ostream& operator<<(std::ostream& out, const StoreCase& store) { return out << store.name; }

class SettingsStoreContract : public testing::TestWithParam<StoreCase> {
 protected:
  const base::TempFolder folder_;
  const std::unique_ptr<SettingsStore> store_ = GetParam().make(folder_);
};

INSTANTIATE_TEST_SUITE_P(
    Stores, SettingsStoreContract,
    testing::Values(
        StoreCase{"Ini", [](const base::TempFolder& folder) { return OpenIniStore(folder.Path("a.ini")); }},
        StoreCase{"Memory", [](const base::TempFolder&) { return std::make_unique<MemoryStore>(); }}),
    [](const auto& store) { return std::string(store.param.name); });

TEST_P(SettingsStoreContract, AKeyThatWasNeverWrittenIsMissing) {
  EXPECT_EQ(store_->Find("PORT", "ADDRESS"), std::nullopt);
  EXPECT_EQ(store_->Read("PORT", "ADDRESS", "4"), "4");
}

TEST_P(SettingsStoreContract, AWrittenTextIsReadBeforeAndAfterTheFlush) {
  store_->Write("PORT", "IPADDRESS", "prüfstand-3; Halle \"2\"");
  EXPECT_EQ(store_->Find("PORT", "IPADDRESS"), "prüfstand-3; Halle \"2\"");
  EXPECT_FALSE(store_->Flush());
  EXPECT_EQ(store_->Find("PORT", "IPADDRESS"), "prüfstand-3; Halle \"2\"");
}

TEST_P(SettingsStoreContract, AnEmptyTextIsNotAMissingOne) {
  store_->Write("TERMINAL", "RCVTERM", "");
  EXPECT_EQ(store_->Find("TERMINAL", "RCVTERM"), "");
  EXPECT_EQ(store_->Read("TERMINAL", "RCVTERM", "\r\n"), "");
}

TEST_P(SettingsStoreContract, TheLastTextOfAKeyCounts) {
  store_->Write("PORT", "PORT", "1");
  store_->Write("PORT", "PORT", "8");
  EXPECT_EQ(store_->Find("PORT", "PORT"), "8");
}

TEST_P(SettingsStoreContract, AKeyBelongsToItsSection) {
  store_->Write("TERMINAL", "FONTSIZE", "10");
  store_->Write("COMMANDLIST", "FONTSIZE", "12");
  EXPECT_EQ(store_->Find("TERMINAL", "FONTSIZE"), "10");
  EXPECT_EQ(store_->Find("COMMANDLIST", "FONTSIZE"), "12");
  EXPECT_EQ(store_->Find("PORT", "FONTSIZE"), std::nullopt);
}

}  // namespace
}  // namespace kolvane::component
