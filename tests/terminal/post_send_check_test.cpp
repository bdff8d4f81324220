#include "terminal/session.h"

#include <gtest/gtest.h>

namespace kolvane::terminal {
namespace {

constexpr std::string_view kLocal = "GO TO LOCAL ausgeführt - die Verbindung wurde getrennt";
constexpr std::string_view kRestart = "Geräte Restart ausgeführt - die Verbindung wurde getrennt";
constexpr std::string_view kStopped = "Die laufende Meßwerterfassung wurde beendet";

TEST(PostSendCheck, LocalAndRestartDisconnect) {
  for (const char* command : {"DCL", "dcl", "xdClx", "1;DCL;2"}) {
    const PostSendRule rule = RuleFor(command);
    EXPECT_TRUE(rule.disconnects) << command;
    EXPECT_FALSE(rule.continues) << command;
    EXPECT_EQ(rule.message, kLocal) << command;
  }
  for (const char* command : {"RES", "res", "*RST", "*rst;*CLS", "*CLS;*RST", "PRES?", "Adresse?"}) {
    const PostSendRule rule = RuleFor(command);
    EXPECT_TRUE(rule.disconnects) << command;
    EXPECT_FALSE(rule.continues) << command;
    EXPECT_EQ(rule.message, kRestart) << command;
  }
}

TEST(PostSendCheck, StopStaysConnected) {
  for (const char* command : {"STP", "stp", "MSTP1"}) {
    const PostSendRule rule = RuleFor(command);
    EXPECT_FALSE(rule.disconnects) << command;
    EXPECT_FALSE(rule.continues) << command;
    EXPECT_EQ(rule.message, kStopped) << command;
  }
}

TEST(PostSendCheck, FirstHitWins) {
  EXPECT_EQ(RuleFor("STP;RES;DCL").message, kLocal);
  EXPECT_EQ(RuleFor("STP;RES").message, kRestart);
  EXPECT_EQ(RuleFor("STP;*RST").message, kRestart);
}

TEST(PostSendCheck, OtherCommandsContinue) {
  for (const char* command : {"MSV?1,1", "RST", "ST P", "D CL", "RE", "", "Größe?"}) {
    const PostSendRule rule = RuleFor(command);
    EXPECT_FALSE(rule.disconnects) << command;
    EXPECT_TRUE(rule.continues) << command;
    EXPECT_EQ(rule.message, "") << command;
  }
}

}  // namespace
}  // namespace kolvane::terminal
