// F1 in a message box leads to what explains that message.

#include "help/topics.h"

#include <cerrno>

#include "device/connection_form.h"
#include "device/resource_name.h"
#include "help/rtf_reader.h"
#include "inspect/texts.h"
#include "kolvane/RuntimeError.h"
#include "script/texts.h"
#include "terminal/texts.h"
#include "values/texts.h"
#include "window/help_source.h"
#include "window/texts.h"
#include "window/window_fixture.h"

namespace kolvane::window {
namespace {

using help::HelpTarget;
using help::MessageTarget;

std::string PageOf(std::uint32_t number) {
  static const std::vector<help::TopicLine> topics = Pages().Topics();
  for (const help::TopicLine& topic : topics) {
    if (topic.number == static_cast<int>(number)) return Pages().pages().at(topic.page);
  }
  return {};
}

// The message's place in the help, which must exist.
HelpTarget Target(std::string_view text) {
  const auto target = MessageTarget(text);
  if (!target) {
    ADD_FAILURE() << "not explained in the help: " << text;
    return {};
  }
  EXPECT_TRUE(help::HelpPages::HasAnchor(PageOf(target->topic), target->anchor))
      << text << ": " << target->anchor;
  return *target;
}

std::string Connecting(const std::string& description, int code) {
  return terminal::texts::Failure(terminal::texts::kConnectFailed,
                                  {static_cast<std::int16_t>(code), description});
}

TEST(MessageTopics, AStatusLeadsToItsRow) {
  for (const int status : help::ExplainedStatuses()) {
    const std::string code = std::to_string(-status);
    EXPECT_EQ(Target(Connecting(code, -status)), (HelpTarget{602, "s" + std::to_string(status)}));
  }
  EXPECT_EQ(Target(terminal::texts::Failure(terminal::texts::kDisconnectFailed, {-13, "-13"})),
            (HelpTarget{602, "s13"}));
  EXPECT_EQ(Target(Connecting("Gerät belegt", -7)), (HelpTarget{601, "aufbau"})) << "a host's own text";
}

TEST(MessageTopics, EveryStatusOfThePageIsKnown) {
  std::set<std::string> known;
  for (const int status : help::ExplainedStatuses()) known.insert("s" + std::to_string(status));
  std::set<std::string> on_page;
  for (const std::string& anchor : help::HelpPages::Matches(PageOf(602), "<a name=\"(s[0-9]+)\">"))
    on_page.insert(anchor);
  EXPECT_EQ(known, on_page);
}

TEST(MessageTopics, OfTheConnection) {
  EXPECT_EQ(
      Target(Connecting("Die Portbibliothek „x“ kann nicht benutzt werden: Datei nicht gefunden.", -902)),
      (HelpTarget{601, "bibliothek"}));
  EXPECT_EQ(Target(device::kInvalidAddress), (HelpTarget{601, "adresse"}));
  EXPECT_EQ(Target(RuntimeError::Description(RuntimeError::Kind::kNoObject)), (HelpTarget{601, "host"}));
}

TEST(MessageTopics, OfARunningList) {
  namespace list = script::texts;
  const auto in_row = [](std::string_view error) { return Target(list::ErrorInRow(3, error)); };
  const std::pair<std::string_view, const char*> errors[] = {
      {list::kUnknownCommand, "m1"},    {list::kNoJumpTarget, "m2"},
      {list::kLogAlreadyOpen, "m3"},    {list::kNoLogOpen, "m4"},
      {list::kNoSuchParameter, "m5"},   {"Index außerhalb des gültigen Bereichs", "m6"},
      {"Timeout (ms): Überlauf", "m7"}, {"Typen unverträglich", "m8"}};
  for (const auto& [error, anchor] : errors) EXPECT_EQ(in_row(error), (HelpTarget{603, anchor})) << error;
  EXPECT_EQ(in_row(terminal::texts::NotSendable("Ω")), (HelpTarget{603, "m9"}));
  EXPECT_EQ(MessageTarget(list::ErrorInRow(3, "etwas anderes")), (HelpTarget{603, ""}));
  for (const std::string& text :
       {std::string(list::kListFull), std::string(list::kNoRoomForARow), list::NotPasted(2)})
    EXPECT_EQ(Target(text), (HelpTarget{603, "voll"}));
}

TEST(MessageTopics, OfFiles) {
  using Problem = script::FileResult::Problem;
  const std::pair<Problem, const char*> problems[] = {{Problem::kCannotRead, "d1"},
                                                      {Problem::kLineTooLong, "d2"},
                                                      {Problem::kListRunning, "d3"},
                                                      {Problem::kCannotWrite, "d4"}};
  for (const auto& [problem, anchor] : problems)
    EXPECT_EQ(Target(script::texts::FileFailure({problem, "/x/a.CMD", ENOENT})), (HelpTarget{604, anchor}));
  EXPECT_EQ(Target(texts::NotWritten("/x/a", ENOSPC)), (HelpTarget{604, "d5"}));
  EXPECT_EQ(Target(texts::NotRead("/x/a", ENOENT)), (HelpTarget{604, "d6"}));
  EXPECT_EQ(Target(texts::NotRead("/x/TermCmdHelp.rtf", ENOENT)), (HelpTarget{604, "d7"}));
  for (const auto fault :
       {help::RtfFault::kNotRichText, help::RtfFault::kTruncated, help::RtfFault::kTooLarge})
    EXPECT_EQ(Target("/x/TermCmdHelp.rtf: " + std::string(help::FaultText(fault))), (HelpTarget{604, "d8"}));
  EXPECT_EQ(Target(texts::kNotPrinted), (HelpTarget{604, "d9"}));
  EXPECT_EQ(Target(texts::kNoMemory), (HelpTarget{604, "d10"}));
  EXPECT_EQ(Target(terminal::texts::LogNotOpened("/x/a.LOG", EACCES)), (HelpTarget{605, "l1"}));
  EXPECT_EQ(Target(terminal::texts::LogNotWritten("/x/a.LOG", ENOSPC)), (HelpTarget{605, "l2"}));
}

TEST(MessageTopics, OfInputsAndTheStart) {
  using Kind = RuntimeError::Kind;
  const std::pair<Kind, const char*> kinds[] = {{Kind::kTypeMismatch, "e1"},
                                                {Kind::kOverflow, "e2"},
                                                {Kind::kSubscript, "e3"},
                                                {Kind::kInvalidArgument, "e4"}};
  for (const auto& [kind, anchor] : kinds)
    EXPECT_EQ(Target(terminal::texts::InField("Anzahl", RuntimeError::Description(kind))),
              (HelpTarget{606, anchor}));
  EXPECT_EQ(Target(terminal::texts::NotSendable("Ω")), (HelpTarget{606, "e6"}));
  EXPECT_EQ(
      Target("Fenstergrößen und Ordner können nicht in der Datei „/x/state.ini“ gespeichert werden: voll"),
      (HelpTarget{607, "speichern"}));
  EXPECT_EQ(
      Target("Die gespeicherte Einstellung [PORT] PORT=x kann nicht gelesen werden: Typen unverträglich"),
      (HelpTarget{607, "einstellung"}));
}

TEST(MessageTopics, OfTheInspector) {
  EXPECT_EQ(Target(inspect::texts::kNothingSelected), (HelpTarget{610, "markieren"}));
  EXPECT_EQ(Target(RuntimeError::Description(RuntimeError::Kind::kOverflow)), (HelpTarget{610, "ueberlauf"}));
  EXPECT_EQ(Target(inspect::texts::kNothingToSave), (HelpTarget{610, "felder"}));
  EXPECT_EQ(Target(inspect::texts::kTooLongToCopy), (HelpTarget{610, "kopieren"}));
  EXPECT_EQ(Target(inspect::texts::NotCopied(EIO)), (HelpTarget{610, "kopieren"}));
}

TEST(MessageTopics, OfValuesAndPorts) {
  EXPECT_EQ(Target(values::texts::kTooManyRows), (HelpTarget{130, "zuviel"}));
  EXPECT_EQ(Target("„abc“ ist keine Baudrate"), (HelpTarget{308, "meldungen"}));
  EXPECT_EQ(Target("„abc“ ist keine Nummer einer GPIB-Karte (0 bis 15)"), (HelpTarget{308, "meldungen"}));
}

TEST(MessageTopics, ThePageOfTheCommandLineQuotesWhatIsWrongWithAResource) {
  const std::string page = PageOf(609);
  for (const char* name : {"LPT3", "TCPIP::h", "TCPIP::::5::SOCKET", "h:0", "ASRL3::INSTR", "ASRL1",
                           "ASRL1::RS485::44", "USB::x", "USB::::INSTR", "GPIB0::44::INSTR", "h\n:5"}) {
    const auto parsed = device::ParseResourceName(name);
    const auto* problem = std::get_if<device::ResourceProblem>(&parsed);
    ASSERT_NE(problem, nullptr) << name;
    const std::string reason = problem->text.substr(problem->text.find("': ") + 3);
    EXPECT_NE(page.find(reason), std::string::npos) << reason;
  }
}

TEST(MessageTopics, OtherTextsHaveNoTopic) {
  for (const char* text : {"", "x", "a.CMD existiert bereits.\nMöchten Sie sie ersetzen?"})
    EXPECT_EQ(MessageTarget(text), std::nullopt) << text;
}

}  // namespace
}  // namespace kolvane::window
