#include "component/window_library.h"

#include <dlfcn.h>

#include <stdexcept>

#include "component/folder.h"

namespace kolvane::component {
namespace {

// Never unloaded; loading it again returns the same library.
OpenWindowFunction Load() {
  void* library = dlopen((OwnFolder() + "/libkolvane-windows.so").c_str(), RTLD_NOW | RTLD_LOCAL);
  void* function = library == nullptr ? nullptr : dlsym(library, kOpenWindowName);
  if (function == nullptr) throw std::runtime_error(dlerror());
  return reinterpret_cast<OpenWindowFunction>(function);
}

}  // namespace

void OpenWindow(ComponentState& state, std::int16_t oper_mode, std::int16_t dev_idx) {
  Load()(state, oper_mode, dev_idx);
}

}  // namespace kolvane::component
