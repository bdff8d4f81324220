
#include <gtest/gtest.h>

#include "devlnk/tcp_channel.h"

namespace kolvane::devlnk {
namespace {

TEST(StatusFromLookup, DistinguishesAMissingHostFromAMissingAnswer) {
  EXPECT_EQ(StatusFromLookup(EAI_NONAME), Status::kHostNotFound);
  EXPECT_EQ(StatusFromLookup(EAI_NODATA), Status::kHostNotFound);
  EXPECT_EQ(StatusFromLookup(EAI_AGAIN), Status::kLookupFailed);
  EXPECT_EQ(StatusFromLookup(EAI_FAIL), Status::kLookupFailed);
  EXPECT_EQ(StatusFromLookup(EAI_SYSTEM), Status::kLookupFailed);
  EXPECT_EQ(StatusFromLookup(EAI_MEMORY), Status::kOutOfResources);
}

TEST(FindHost, NeedsNoTimeForNumericAddresses) {
  Deadline none(0);
  EXPECT_EQ(FindHost("127.0.0.1", 80, none).addresses->ai_family, AF_INET);
  EXPECT_EQ(FindHost("::1", 80, none).addresses->ai_family, AF_INET6);
  EXPECT_FALSE(none.started());
}

TEST(FindHost, GivesUpALookupWhenTimeIsOver) {
  for (int tries = 0; tries < 20; ++tries) {
    Deadline none(0);
    const FoundHost found = FindHost("localhost", 80, none);
    // A fast system may have the answer before the wait for it starts.
    EXPECT_EQ(found.addresses != nullptr, found.status == Status::kOk);
    EXPECT_TRUE(found.status == Status::kOk || found.status == Status::kLookupFailed);
  }
  Deadline generous(20'000);
  EXPECT_EQ(FindHost("localhost", 80, generous).status, Status::kOk);
}

TEST(IpPort, MayHaveASign) {
  EXPECT_EQ(IpPortFrom(1), 1);
  EXPECT_EQ(IpPortFrom(65'535), 65'535);
  EXPECT_EQ(IpPortFrom(-1), 65'535);
  EXPECT_EQ(IpPortFrom(-32'768), 32'768);
  EXPECT_EQ(IpPortFrom(-32'769), std::nullopt);
  EXPECT_EQ(IpPortFrom(0), std::nullopt);
  EXPECT_EQ(IpPortFrom(65'536), std::nullopt);
}

}  // namespace
}  // namespace kolvane::devlnk
