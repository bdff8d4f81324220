#include "component/host_parameters.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "base/runtime_error.h"
#include "device/recording_host.h"

namespace kolvane::component {
namespace {

class HostParametersTest : public testing::Test {
 protected:
  HostParametersTest() {
    state_.gObj = host_;
    state_.DevIdx = 3;
    host_->script.properties = {{2, std::int16_t{1}}, {3, 19200},           {4, std::int16_t{2}},
                                {5, std::int16_t{7}}, {6, std::int16_t{1}}, {8, std::int16_t{12}},
                                {9, "10.0.0.9"}};
  }

  void Read(std::int16_t oper_mode) {
    state_.OperMode = oper_mode;
    ReadHostParameters(state_, parameters_);
  }

  std::shared_ptr<device::RecordingHost> host_ = std::make_shared<device::RecordingHost>();
  device::DeviceState state_;
  device::ConnectionParameters parameters_;
};

TEST_F(HostParametersTest, AsksTheIndexedDevicePropertyByProperty) {
  Read(0);
  EXPECT_EQ(host_->script.calls,
            (std::vector<std::string>{"IO.GetDeviceProperty(3, 2)", "IO.GetDeviceProperty(3, 3)",
                                      "IO.GetDeviceProperty(3, 4)", "IO.GetDeviceProperty(3, 5)",
                                      "IO.GetDeviceProperty(3, 6)", "IO.GetDeviceProperty(3, 8)"}));
  EXPECT_EQ(parameters_.port_code, 1);
  EXPECT_EQ(parameters_.baud, 19200);
  EXPECT_EQ(parameters_.parity, 2);
  EXPECT_EQ(parameters_.data_bits, 7);
  EXPECT_EQ(parameters_.stop_bits, 1);
  EXPECT_EQ(parameters_.address, 12);
  EXPECT_EQ(parameters_.lpt_mode, 0);
}

// Its IO object lives until the next one is requested.
class HostWithFreshIo final : public HostObject {
 public:
  explicit HostWithFreshIo(device::HostScript& script) : script_(script) {}

  IoObject& IO() override {
    script_.Call("IO");
    io_ = std::make_unique<device::RecordingIo>(script_);
    return *io_;
  }

 private:
  device::HostScript& script_;
  std::unique_ptr<device::RecordingIo> io_;
};

TEST_F(HostParametersTest, AsksForTheIoObjectAgainBeforeEachProperty) {
  state_.gObj = std::make_shared<HostWithFreshIo>(host_->script);
  Read(0);
  const std::vector<std::string>& calls = host_->script.calls;
  ASSERT_EQ(calls.size(), 12u);
  for (std::size_t i = 0; i < calls.size(); i += 2) EXPECT_EQ(calls[i], "IO()");
  EXPECT_EQ(calls.back(), "IO.GetDeviceProperty(3, 8)");
}

TEST_F(HostParametersTest, TheHostMayChangeTheIndex) {
  host_->script.change_index = [](std::int16_t& index) { ++index; };
  Read(0);
  EXPECT_EQ(host_->script.calls.front(), "IO.GetDeviceProperty(3, 2)");
  EXPECT_EQ(host_->script.calls.back(), "IO.GetDeviceProperty(8, 8)");
  EXPECT_EQ(state_.DevIdx, 9) << "all later calls go to that device";
}

TEST_F(HostParametersTest, MapsDataBitsToTheIpPort) {
  host_->script.properties[2] = std::int16_t{100};
  host_->script.properties[5] = std::int16_t{8};
  Read(0);
  EXPECT_EQ(parameters_.ip_port, 7);
  EXPECT_EQ(parameters_.ip_address, "10.0.0.9");
  EXPECT_EQ(host_->script.calls.back(), "IO.GetDeviceProperty(3, 9)");
  host_->script.properties[5] = std::int16_t{5};
  Read(0);
  EXPECT_EQ(parameters_.ip_port, 5);
}

TEST_F(HostParametersTest, TakesTheUsbAddress) {
  host_->script.properties[2] = std::int16_t{200};
  Read(0);
  EXPECT_EQ(parameters_.usb_address, "10.0.0.9");
  EXPECT_EQ(parameters_.address, 4);
}

TEST_F(HostParametersTest, TakesParityAsModeForParallelPortsOnly) {
  for (const std::int16_t kind : {std::int16_t{90}, std::int16_t{91}}) {
    parameters_ = {};
    host_->script.properties[2] = kind;
    Read(0);
    EXPECT_EQ(parameters_.lpt_mode, 2);
    EXPECT_EQ(parameters_.parity, 2);
  }
}

TEST_F(HostParametersTest, AsksTheSingleDeviceOnce) {
  host_->kind = std::int16_t{100};
  host_->address = "messplatz";
  Read(1);
  EXPECT_EQ(host_->script.calls, std::vector<std::string>{"GetDeviceInfo()"});
  EXPECT_EQ(parameters_.ip_address, "messplatz");
  EXPECT_EQ(parameters_.ip_port, 7);
}

TEST_F(HostParametersTest, ConvertsTheSingleDevicesAddress) {
  host_->kind = std::int16_t{488};
  host_->address = "9";
  Read(1);
  EXPECT_EQ(parameters_.port_code, 488);
  EXPECT_EQ(parameters_.address, 9);
  host_->kind = std::int16_t{200};
  host_->address = 4711;
  Read(1);
  EXPECT_EQ(parameters_.usb_address, "4711");
}

TEST_F(HostParametersTest, ReportsWhichValuesTheHostGives) {
  const auto parts_read = [this](std::int16_t oper_mode, std::int16_t kind) {
    state_.OperMode = oper_mode;
    host_->script.properties[2] = host_->kind = kind;
    host_->address = "5";
    const HostParts parts = ReadHostParameters(state_, parameters_);
    return std::string(parts.kind ? "kind " : "") + (parts.baud ? "baud " : "") +
           (parts.parity ? "parity " : "") + (parts.address ? "address" : "") +
           (parts.ip_address ? "ip" : "") + (parts.usb_address ? "usb" : "");
  };
  EXPECT_EQ(parts_read(0, 1), "kind baud parity address");
  EXPECT_EQ(parameters_.port_option, 0);
  EXPECT_EQ(parts_read(0, 100), "kind baud parity ip");
  EXPECT_EQ(parameters_.port_option, 8);
  EXPECT_EQ(parts_read(1, 200), "kind usb");
  EXPECT_EQ(parameters_.port_option, 9);
  EXPECT_EQ(parts_read(1, 77), "address");
  EXPECT_EQ(parameters_.port_option, 9);
  host_->script.properties[3] = 115200;
  EXPECT_EQ(parts_read(0, 488), "kind parity address");
  EXPECT_EQ(parts_read(2, 488), "");
}

TEST_F(HostParametersTest, AsksNothingInOtherModes) {
  for (const std::int16_t oper_mode : {std::int16_t{2}, std::int16_t{3}, std::int16_t{-1}}) Read(oper_mode);
  EXPECT_TRUE(host_->script.calls.empty());
  state_.gObj.reset();
  EXPECT_NO_THROW(Read(2));
}

TEST_F(HostParametersTest, RefusesAPropertyThatTheHostLeavesAsNothing) {
  const auto given = host_->script.properties;
  for (const auto& [number, value] : given) {
    // A port kind for which this property is read.
    host_->script.properties[2] = std::int16_t(number == 9 ? 100 : 1);
    host_->script.properties[number] = Variant();
    EXPECT_THROW(Read(0), base::RuntimeError) << number;
    host_->script.properties = given;
  }
}

TEST_F(HostParametersTest, RefusesDeviceInfoThatTheHostLeavesAsNothing) {
  EXPECT_THROW(Read(1), base::RuntimeError);
  for (const std::int16_t kind : {std::int16_t{1}, std::int16_t{100}, std::int16_t{200}}) {
    host_->kind = kind;
    EXPECT_THROW(Read(1), base::RuntimeError) << kind;
  }
}

TEST_F(HostParametersTest, NamesThePropertyThatDidNotConvert) {
  const auto error = [this](std::int16_t oper_mode) -> std::string {
    try {
      Read(oper_mode);
    } catch (const base::RuntimeError& thrown) {
      return thrown.what();
    }
    return "";
  };
  host_->script.properties[3] = "sch\nnell";
  EXPECT_EQ(error(0), "Typen unverträglich (GetDeviceProperty, Eigenschaft 3: „sch\\nnell“)");
  host_->script.properties[3] = 19200;
  host_->script.properties[8] = 40000;
  EXPECT_EQ(error(0), "Überlauf (GetDeviceProperty, Eigenschaft 8: „40000“)");
  host_->kind = "seltsam";
  EXPECT_EQ(error(1), "Typen unverträglich (GetDeviceInfo, Schnittstelle: „seltsam“)");
  host_->kind = 488;
  host_->address = "1 oder 2";
  EXPECT_EQ(error(1), "Typen unverträglich (GetDeviceInfo, Adresse: „1 oder 2“)");
  state_.gObj.reset();
  EXPECT_EQ(error(1), "Kein Geräteobjekt übergeben");
}

TEST_F(HostParametersTest, LetsErrorsThrough) {
  host_->script.properties[3] = "schnell";
  EXPECT_THROW(Read(0), base::RuntimeError);
  host_->script.properties[3] = 19200;
  host_->script.properties[8] = 40000;
  EXPECT_THROW(Read(0), base::RuntimeError);
  host_->script.on_call["GetDeviceInfo"] = [] { throw std::logic_error("Gerät belegt"); };
  EXPECT_THROW(Read(1), std::logic_error);
  state_.gObj.reset();
  EXPECT_THROW(Read(0), base::RuntimeError);
  EXPECT_THROW(Read(1), base::RuntimeError);
}

}  // namespace
}  // namespace kolvane::component
