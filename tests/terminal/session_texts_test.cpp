#include <gtest/gtest.h>

#include "terminal/texts.h"

namespace kolvane::terminal::texts {
namespace {

TEST(Texts, Lists) {
  const std::array<std::string_view, 3> modes = {"Endezeichen", "Auto", "Anzahl Zeichen"};
  const std::array<std::string_view, 2> formats = {"ASCII", "Binär"};
  EXPECT_EQ(kReceiveModes, modes);
  EXPECT_EQ(kReceiveFormats, formats);
}

TEST(Texts, ConnectionLooks) {
  EXPECT_EQ(kConnectTip, "Verbindung aufbauen");
  EXPECT_EQ(kDisconnectTip, "Verbindung trennen");
  EXPECT_EQ(kNotConnected, "Nicht verbunden");
}

TEST(Texts, Failures) {
  EXPECT_EQ(Failure(kConnectFailed, {-3, "abgelehnt"}), "Fehler beim Verbindungsaufbau: abgelehnt (-3)");
  EXPECT_EQ(Failure(kDisconnectFailed, {-32768, ""}), "Fehler beim Verbindungsabbau:  (-32768)");
  EXPECT_EQ(WriteError("Leitung tot"), "\r\nWrite error: Leitung tot");
}

TEST(Texts, TheStepsOfDialling) {
  EXPECT_EQ(Dialling({.command = "ATDT 0815", .reply = "OK"}),
            "Modem wählt: „ATDT 0815“ gesendet, warte auf Antwort");
  EXPECT_EQ(Dialling({.reply = "RINGING", .seconds_left = 55}),
            "Modem wählt: Antwort „RINGING“, warte auf CONNECT (noch 55 s)");
  EXPECT_EQ(Dialling({.seconds_left = 0}), "Modem wählt: keine Antwort, warte auf CONNECT (noch 0 s)");
}

TEST(Texts, CountsAndTimes) {
  EXPECT_EQ(InputFlushed(0), "Empfangspuffer gelöscht (0 Bytes)");
  EXPECT_EQ(InputFlushed(-7), "Empfangspuffer gelöscht (-7 Bytes)");
  EXPECT_EQ(ResponseTime("3,5"), "(dt = 3,5 ms)\r\n");
}

TEST(SessionTexts, SayWhatHappenedToACommand) {
  EXPECT_EQ(
      texts::AnswerToCome("Anzahl: Überlauf"),
      "Anzahl: Überlauf. Die Antwort auf den Befehl steht noch aus, „Eingangspuffer flushen“ verwirft sie.");
  EXPECT_EQ(texts::NotSendable("Ω"), "Das Zeichen „Ω“ kann nicht gesendet werden");
}

}  // namespace
}  // namespace kolvane::terminal::texts
