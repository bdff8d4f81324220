// The device contract for each path of DeviceIo and for the fake.
#include "device_contract.h"

#include <stdexcept>

#include "device_rig.h"
#include "fake_device.h"

namespace kolvane::device {
namespace {

class PathSetup final : public DeviceSetup, private DeviceRig {
 public:
  PathSetup(std::int16_t mode, std::int16_t port_code) : DeviceRig(mode) {
    parameters.port_code = port_code;
    host->script.read = [this](Variant& text, Variant& bytes) {
      text = received_ + "   ";
      bytes = Bytes(received_.begin(), received_.end());
    };
    io.Open();
    state.connected = true;
  }

  Device& device() override { return io; }
  void Receive(const std::string& bytes) override {
    received_ = bytes;
    library.replies = {{bytes}};
  }
  void BreakDown() override {
    library.mode = FakePortLibrary::Mode::kFail;
    for (const char* call : {"OpenDevice", "CloseDevice", "WriteCommand", "Read", "IO.InitializeDevice",
                             "IO.CloseDevice", "IO.WriteCommand", "IO.Read"})
      host->script.on_call[call] = [] { throw std::runtime_error("gestört"); };
  }
  void Disconnect() override { state.connected = false; }

 private:
  std::string received_;
};

DeviceCase Path(const char* name, std::int16_t mode, std::int16_t port_code, bool can_fail,
                bool has_answers) {
  return {name, [=] { return std::make_unique<PathSetup>(mode, port_code); }, can_fail, has_answers};
}

INSTANTIATE_TEST_SUITE_P(AllPaths, DeviceContract,
                         testing::Values(Path("IndexedHost", 0, 0, true, true),
                                         Path("SingleHost", 1, 0, true, true),
                                         Path("PortLibrary", 2, port_code::kCom1, true, true),
                                         Path("Offline", 2, port_code::kOffline, false, true),
                                         Path("WindowOnly", 3, 0, false, false),
                                         Path("NegativeMode", -1, 0, false, false)),
                         NameOf);

class FakeSetup final : public DeviceSetup {
 public:
  Device& device() override { return fake_; }
  void Receive(const std::string& bytes) override {
    fake_.text_answers = {bytes};
    fake_.incoming = bytes;
  }
  void BreakDown() override {
    fake_.open_result = fake_.close_result = fake_.write_result = FakeDevice::TimeOut();
  }

 private:
  FakeDevice fake_;
};

INSTANTIATE_TEST_SUITE_P(Fakes, DeviceContract,
                         testing::Values(DeviceCase{"FakeDevice",
                                                    [] { return std::make_unique<FakeSetup>(); }}),
                         NameOf);

}  // namespace
}  // namespace kolvane::device
