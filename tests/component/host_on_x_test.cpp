// A host without Qt on an X server that resets itself when its last client leaves (tests/gui/with_xvfb).

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <stdexcept>
#include <thread>

#include "base/temp_folder.h"
#include "component/closing_host.h"
#include "gui/shown_terminal.h"
#include "kolvane/MainClass.h"

namespace kolvane {
namespace {

class HostOnX : public testing::Test {
 protected:
  HostOnX() {
    TerminalOptions options;
    options.SettingsFile = folder_.Path("Kolvane.ini");
    terminal_.SetOptions(options);
  }

  base::TempFolder folder_;
  MainClass terminal_;
};

// Between two terminals the server has no client, and resets itself just as the next one connects.
TEST_F(HostOnX, OpensTheTerminalAgainAndAgain) {
  for (int i = 0; i < 30; ++i) {
    const auto host = std::make_shared<ClosingHost>();
    terminal_.InitTerminal(host);
    terminal_.OpenTerminal(1, 0);
    EXPECT_TRUE(host->had_application);
  }
  EXPECT_TRUE(terminal_.CanUnload().ToBool());
}

TEST_F(HostOnX, GetsAnErrorOnASecondThread) {
  const auto host = std::make_shared<ClosingHost>();
  terminal_.InitTerminal(host);
  std::thread([this] { EXPECT_THROW(terminal_.OpenTerminal(1, 0), std::runtime_error); }).join();
  EXPECT_FALSE(host->had_application);
  terminal_.OpenTerminal(1, 0);
  EXPECT_TRUE(host->had_application);
}

// The terminal holds its only reference and releases it during the call.
class TerminalClosingHost final : public HostObject {
 public:
  explicit TerminalClosingHost(bool& destroyed) : destroyed_(destroyed) {}
  ~TerminalClosingHost() override { destroyed_ = true; }
  void GetDeviceInfo(Variant& kind, Variant& address) override {
    kind = std::int16_t{488};
    address = std::int16_t{5};
  }
  void FlushInQ(std::int32_t&) override {
    QTimer::singleShot(0, qApp, [] { gui::TypeCommand(*gui::ShownTerminal(), "BYE"); });
  }
  void WriteCommand(const std::string&) override {
    gui::ShownTerminal()->close();
    EXPECT_FALSE(destroyed_);
  }
  Variant LastError() override { return 0; }
  void SetLastError(std::int16_t) override {}

 private:
  bool& destroyed_;
};

TEST_F(HostOnX, MayBeReleasedInItsOwnCall) {
  bool destroyed = false;
  terminal_.InitTerminal(std::make_shared<TerminalClosingHost>(destroyed));
  terminal_.OpenTerminal(1, 0);
  EXPECT_TRUE(destroyed);
  EXPECT_TRUE(terminal_.CanUnload().ToBool());
}

}  // namespace
}  // namespace kolvane
