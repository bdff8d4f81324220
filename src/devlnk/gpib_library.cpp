#include "devlnk/gpib_library.h"

#include <dlfcn.h>

#include <cstdlib>

namespace kolvane::devlnk {
namespace {

const char* LibraryName() {
  const char* name = std::getenv("KOLVANE_GPIB_LIBRARY");
  return name == nullptr || name[0] == '\0' ? "libgpib.so.0" : name;
}

template <typename Function>
bool Find(void* handle, const char* name, Function*& function) {
  function = reinterpret_cast<Function*>(dlsym(handle, name));
  return function != nullptr;
}

bool FindAll(void* handle, GpibLibrary& library) {
  return Find(handle, "ibdev", library.ibdev) && Find(handle, "ibwrt", library.ibwrt) &&
         Find(handle, "ibrd", library.ibrd) && Find(handle, "ibtmo", library.ibtmo) &&
         Find(handle, "ibclr", library.ibclr) && Find(handle, "ibonl", library.ibonl) &&
         Find(handle, "ibconfig", library.ibconfig) && Find(handle, "ThreadIberr", library.ThreadIberr) &&
         Find(handle, "ThreadIbcntl", library.ThreadIbcntl);
}

}  // namespace

std::shared_ptr<const GpibLibrary> LoadGpibLibrary() {
  struct Loaded {
    GpibLibrary functions;
    std::unique_ptr<void, int (*)(void*)> handle;
  };
  void* handle = dlopen(LibraryName(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) return nullptr;
  const auto loaded = std::make_shared<Loaded>(Loaded{{}, {handle, dlclose}});
  if (!FindAll(handle, loaded->functions)) return nullptr;
  // The only optional function.
  (void)Find(handle, "ibrsp", loaded->functions.ibrsp);
  return {loaded, &loaded->functions};
}

Status GpibAvailability() { return LoadGpibLibrary() == nullptr ? Status::kNotAvailable : Status::kOk; }

}  // namespace kolvane::devlnk
