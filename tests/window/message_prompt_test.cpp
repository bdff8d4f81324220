#include "window/message_prompt.h"

#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

class MessagePromptTest : public WindowFixture {};

TEST_F(MessagePromptTest, ShowsNoBoxOnceTheWindowIsToClose) {
  library_.mode = device::FakePortLibrary::Mode::kFail;
  EXPECT_EQ(MessageDuring([this] { Press("TB_CONNECT"); }), "Fehler beim Verbindungsaufbau: -7 (-7)");
  close_.made = true;
  Press("TB_CONNECT");
  EXPECT_EQ(close_.messages.errors, std::vector<std::string>{"Fehler beim Verbindungsaufbau: -7 (-7)"});
}

TEST_F(MessagePromptTest, DoesNotCountAsAWindowThatKeepsAHostUp) {
  MessagePrompt prompt(nullptr);
  OnDialog<QMessageBox>([](QMessageBox& box) {
    EXPECT_FALSE(box.testAttribute(Qt::WA_QuitOnClose));
    box.accept();
  });
  prompt.ShowMessage("x");
}

}  // namespace
}  // namespace kolvane::window
