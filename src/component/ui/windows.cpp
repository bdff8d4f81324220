// The entry point of libkolvane-windows.so.

#include <type_traits>

#include "component/ui/terminal_run.h"
#include "component/window_library.h"
#include "kolvane/Export.h"

namespace kolvane::component {

extern "C" KOLVANE_EXPORT void KolvaneOpenWindow(ComponentState& state, std::int16_t oper_mode,
                                                 std::int16_t dev_idx) {
  RunTerminal(state, oper_mode, dev_idx);
}

static_assert(std::is_same_v<decltype(&KolvaneOpenWindow), OpenWindowFunction>);

}  // namespace kolvane::component
