#pragma once

#include <string>

namespace kolvane::soak {

#ifdef KOLVANE_SANITIZED
inline constexpr bool kMemoryIsMeasurable = false;  // the sanitizer keeps freed memory
#else
inline constexpr bool kMemoryIsMeasurable = true;
#endif

/// What the process uses at the moment.
struct ResourceUse {
  double heap;      ///< bytes in use
  double resident;  ///< bytes
  int descriptors;
  int threads;
};

ResourceUse CurrentResourceUse();

/// "12.34 MB"
std::string Megabytes(double bytes);

/// Prints each expectation and whether it holds.
class Expectations {
 public:
  void Expect(bool holds, const std::string& what);
  bool all_hold() const { return all_hold_; }

 private:
  bool all_hold_ = true;
};

}  // namespace kolvane::soak
