#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

namespace kolvane::base {

/// While it lives, the process lacks root's right to write any file.
class UnprivilegedUser {
 public:
  UnprivilegedUser() : user_(geteuid()) {
    if (user_ == 0) {
      EXPECT_EQ(seteuid(65534), 0);
    }
  }
  ~UnprivilegedUser() { EXPECT_EQ(seteuid(user_), 0); }
  UnprivilegedUser(const UnprivilegedUser&) = delete;
  UnprivilegedUser& operator=(const UnprivilegedUser&) = delete;

 private:
  uid_t user_;
};

}  // namespace kolvane::base
