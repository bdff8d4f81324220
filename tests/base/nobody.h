#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

namespace kolvane::base {

/// While it lives, the process lacks root's right to write any file.
class Nobody {
 public:
  Nobody() : user_(geteuid()) {
    if (user_ == 0) {
      EXPECT_EQ(seteuid(65534), 0);
    }
  }
  ~Nobody() { EXPECT_EQ(seteuid(user_), 0); }
  Nobody(const Nobody&) = delete;
  Nobody& operator=(const Nobody&) = delete;

 private:
  uid_t user_;
};

}  // namespace kolvane::base
