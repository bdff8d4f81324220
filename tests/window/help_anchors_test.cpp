// The help must contain what the windows show: each control under its name, each text to the letter.
#include <QMenu>
#include <cerrno>

#include "base/fake_prompt.h"
#include "base/system.h"
#include "device/ui/connection_dialog.h"
#include "help/rtf_reader.h"
#include "kolvane/RuntimeError.h"
#include "script/texts.h"
#include "terminal/texts.h"
#include "window/help_source.h"
#include "window/texts.h"
#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

bool HasAnchor(const std::string& name) {
  return std::ranges::any_of(Pages().pages(),
                             [&](const auto& page) { return help::HelpPages::HasAnchor(page.second, name); });
}

bool IsQuoted(std::string_view text) { return Pages().Quotes(text); }

// Qt's own parts have names, too.
bool IsPartOfQt(const QObject* each) { return each->objectName().startsWith(QLatin1String("qt_")); }

void ExpectAnchors(const QWidget& window) {
  for (const QObject* each : window.findChildren<QObject*>()) {
    const bool shown = each->isWidgetType() || qobject_cast<const QAction*>(each) != nullptr;
    if (!shown || each->objectName().isEmpty() || IsPartOfQt(each) || IsPartOfQt(each->parent())) continue;
    EXPECT_TRUE(HasAnchor(each->objectName().toStdString())) << each->objectName().toStdString();
  }
}

class HelpAnchors : public WindowFixture {};

TEST_F(HelpAnchors, EachControlOfTheMainWindowHasOne) {
  EXPECT_TRUE(HasAnchor(window_.objectName().toStdString()));
  ExpectAnchors(window_);
}

TEST_F(HelpAnchors, EachControlOfTheConnectionDialogHasOne) {
  base::FakePrompt prompt;
  const device::ConnectionDialog dialog({connection_, device_, source_, prompt, ""});
  EXPECT_TRUE(HasAnchor(dialog.objectName().toStdString()));
  ExpectAnchors(dialog);
}

TEST(HelpTexts, EveryChoiceIsQuoted) {
  for (const std::string_view text : terminal::texts::kReceiveModes) EXPECT_TRUE(IsQuoted(text)) << text;
  for (const std::string_view text : terminal::texts::kReceiveFormats) EXPECT_TRUE(IsQuoted(text)) << text;
}

TEST_F(HelpAnchors, EachCaptionIsQuoted) {
  for (const QAction* action : window_.findChildren<QAction*>()) {
    if (action->objectName().isEmpty()) continue;
    EXPECT_TRUE(IsQuoted(action->text().remove(u'&').toStdString())) << action->objectName().toStdString();
  }
}

TEST(HelpTexts, EveryMessageIsQuoted) {
  namespace list = script::texts;
  namespace session = terminal::texts;
  for (const std::string_view text :
       {list::kUnknownCommand, list::kNoJumpTarget, list::kLogAlreadyOpen, list::kNoLogOpen,
        list::kNoSuchParameter, list::kListFull, list::kNoRoomForARow, session::kLocalDone,
        session::kRestartDone, session::kMeasuringStopped, session::kConnectFailed,
        session::kDisconnectFailed, session::kNotConnected, texts::kLoading, texts::kPrinting,
        texts::kNotPrinted, help::FaultText(help::RtfFault::kNotRichText),
        std::string_view(device::kInvalidAddress)})
    EXPECT_TRUE(IsQuoted(text.substr(0, text.find_last_not_of(' ') + 1))) << text;
}

TEST(HelpTexts, EveryMessageAboutAFileIsQuoted) {
  using Problem = script::FileResult::Problem;
  for (const Problem problem :
       {Problem::kCannotRead, Problem::kLineTooLong, Problem::kListRunning, Problem::kCannotWrite}) {
    const std::string text = script::texts::FileFailure({problem, "…", ENOENT});
    EXPECT_TRUE(IsQuoted(text.substr(0, text.find(base::SystemErrorText(ENOENT))))) << text;
  }
  const std::string not_pasted = script::texts::NotPasted(0);
  EXPECT_TRUE(IsQuoted(not_pasted.substr(0, not_pasted.rfind(':') + 1)));
  for (const std::string& text :
       {terminal::texts::LogNotOpened("…", 0), terminal::texts::LogNotWritten("…", 0),
        texts::NotWritten("…", 0), texts::NotRead("…", 0)})
    EXPECT_TRUE(IsQuoted(text.substr(0, text.rfind(':') + 1))) << text;
}

TEST(HelpTexts, EveryReasonOfTheSystemIsQuoted) {
  for (int error = 1; error < 134; ++error) {
    const std::string text = base::SystemErrorText(error);
    EXPECT_TRUE(text.starts_with("Systemfehler ") || IsQuoted(text)) << text;
  }
}

TEST(HelpTexts, EveryRunTimeErrorIsQuoted) {
  using Kind = RuntimeError::Kind;
  for (const Kind kind : {Kind::kOverflow, Kind::kSubscript, Kind::kTypeMismatch, Kind::kDivisionByZero,
                          Kind::kInvalidArgument, Kind::kNoObject, Kind::kNoMember, Kind::kOther})
    EXPECT_TRUE(IsQuoted(RuntimeError::Description(kind))) << RuntimeError::Description(kind);
}

}  // namespace
}  // namespace kolvane::window
