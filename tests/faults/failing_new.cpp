#include "faults/failing_new.h"

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <new>

namespace {

// Only the window's thread counts allocations: in other threads this stays 0.
thread_local long left = 0;

// Qt does not survive a failed allocation in its own code.
bool IsQt(const void* code) {
  Dl_info info{};
  return dladdr(code, &info) != 0 && info.dli_fname != nullptr &&
         std::strstr(info.dli_fname, "libQt6") != nullptr;
}

}  // namespace

void* operator new(std::size_t size) {
  if (left > 0 && !IsQt(__builtin_return_address(0)) && --left == 0) throw std::bad_alloc();
  if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  if (left > 0 && !IsQt(__builtin_return_address(0)) && --left == 0) return nullptr;
  return std::malloc(size > 0 ? size : 1);
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace kolvane::faults {

FailingNew::FailingNew(long nth) { left = nth; }
FailingNew::~FailingNew() { left = 0; }
bool FailingNew::hit() const { return left == 0; }

}  // namespace kolvane::faults
