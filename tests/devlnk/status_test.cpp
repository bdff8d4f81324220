#include "devlnk/status.h"
#include "base/pattern.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace kolvane::devlnk {
namespace {

std::string FileText(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

/// Code to name, as the pattern's two groups find them (name first).
std::map<int, std::string> Pairs(const std::string& text, const std::string& pattern, bool name_first) {
  std::map<int, std::string> pairs;
  for (const std::vector<std::string>& row : base::Pattern(pattern).FindAll(text)) {
    const std::string& name = row[name_first ? 1 : 2];
    const int code = std::stoi(row[name_first ? 2 : 1]);
    EXPECT_TRUE(pairs.emplace(code, name).second) << code << " has two meanings";
  }
  return pairs;
}

TEST(StatusCodes, AreEachListedOnceInTheUsersTable) {
  const auto codes = Pairs(FileText(DEVLNK_STATUS_HEADER), R"(\bk(\w+) = (-\d+),)", true);
  const auto table = Pairs(FileText(DEVLNK_STATUS_TABLE), R"(\n\| (-\d+) \| `(\w+)` \|)", false);
  EXPECT_FALSE(codes.empty());
  EXPECT_EQ(codes, table);
}

TEST(StatusCodes, LeaveMinusOneFreeAndFit16Bits) {
  for (const auto& [code, name] : Pairs(FileText(DEVLNK_STATUS_HEADER), R"(\bk(\w+) = (-\d+),)", true)) {
    EXPECT_LE(code, -2) << name;
    EXPECT_GE(code, INT16_MIN) << name;
  }
}

TEST(StatusFromErrno, IsDifferentForEachFailure) {
  EXPECT_EQ(StatusFromErrno(ENOENT), Status::kNoSuchNode);
  EXPECT_EQ(StatusFromErrno(ENODEV), Status::kNoSuchNode);
  EXPECT_EQ(StatusFromErrno(ENOTTY), Status::kWrongNode);
  EXPECT_EQ(StatusFromErrno(EACCES), Status::kPermissionDenied);
  EXPECT_EQ(StatusFromErrno(EBUSY), Status::kBusy);
  EXPECT_EQ(StatusFromErrno(ECONNREFUSED), Status::kRefused);
  EXPECT_EQ(StatusFromErrno(EHOSTUNREACH), Status::kUnreachable);
  EXPECT_EQ(StatusFromErrno(ECONNRESET), Status::kConnectionLost);
  EXPECT_EQ(StatusFromErrno(ECONNABORTED), Status::kConnectionLost);
  EXPECT_EQ(StatusFromErrno(EPIPE), Status::kConnectionLost);
  EXPECT_EQ(StatusFromErrno(ETIMEDOUT), Status::kConnectionLost);
  EXPECT_EQ(StatusFromErrno(EMFILE), Status::kOutOfResources);
  EXPECT_EQ(StatusFromErrno(EIO), Status::kIoError);
  EXPECT_EQ(StatusFromErrno(0), Status::kIoError);
}

TEST(EndsConnection, OnlyIfNothingCanFollow) {
  EXPECT_TRUE(EndsConnection(Status::kClosedByPeer));
  EXPECT_TRUE(EndsConnection(Status::kConnectionLost));
  EXPECT_TRUE(EndsConnection(Status::kUnreachable));
  EXPECT_FALSE(EndsConnection(Status::kOk));
  EXPECT_FALSE(EndsConnection(Status::kReadTimeout));
  EXPECT_FALSE(EndsConnection(Status::kIoError));
}

}  // namespace
}  // namespace kolvane::devlnk
