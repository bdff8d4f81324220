#include "kolvane/MainClass.h"

#include "component/component_state.h"
#include "component/folder.h"
#include "component/window_library.h"

namespace kolvane {
namespace {

component::ComponentState& State() {
  static component::ComponentState state;
  return state;
}

}  // namespace

MainClass::MainClass() = default;
MainClass::~MainClass() = default;

void MainClass::InitTerminal(const std::shared_ptr<HostObject>& gObj) { State().device.gObj = gObj; }

void MainClass::OpenTerminal(std::int16_t OperMode, std::int16_t DevIdx) {
  component::OpenWindow(State(), OperMode, DevIdx);
}

bool MainClass::Wait() {
  device::Waits* waits = State().waits;
  return waits == nullptr || !waits->IsUnderWay() || waits->Attend();
}

Variant MainClass::CanUnload() const { return State().can_unload; }

void MainClass::SetOptions(const TerminalOptions& options) { State().options = options; }

std::string MainClass::OwnFolder() { return component::OwnFolder(); }

}  // namespace kolvane
