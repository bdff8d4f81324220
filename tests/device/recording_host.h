#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "kolvane/HostObject.h"

namespace kolvane::device {

/// What both objects of a RecordingHost write to and read from. `on_call` runs a test's own code within the
/// call of that name, to throw for instance.
struct HostScript {
  std::vector<std::string> calls;
  std::map<std::string, std::function<void()>> on_call;
  std::map<std::int16_t, Variant> properties;  ///< by number, for GetDeviceProperty
  std::function<void(Variant& answer, Variant& buffer)> read = [](Variant&, Variant&) {};
  std::function<void(std::int16_t& index)> change_index = [](std::int16_t&) {};

  void Call(const std::string& name, const std::string& arguments = "") {
    calls.push_back(name + "(" + arguments + ")");
    if (const auto action = on_call.find(name); action != on_call.end()) action->second();
  }

  template <typename... Numbers>
  static std::string List(Numbers... numbers) {
    std::string list;
    ((list += (list.empty() ? "" : ", ") + std::to_string(numbers)), ...);
    return list;
  }

  /// "16000 spaces", "4 bytes" or the quoted text.
  static std::string Shape(const Variant& value) {
    const std::string text = value.ToText();
    if (value == Variant(value.ToBytes())) return std::to_string(value.ToBytes().size()) + " bytes";
    if (!text.empty() && text.find_first_not_of(' ') == std::string::npos)
      return std::to_string(text.size()) + " spaces";
    return '"' + text + '"';
  }
};

class RecordingIo final : public IoObject {
 public:
  explicit RecordingIo(HostScript& script) : script_(script) {}

  void InitializeDevice(std::int16_t& DevIdx) override {
    script_.Call("IO.InitializeDevice", script_.List(DevIdx));
    script_.change_index(DevIdx);
  }
  void CloseDevice(std::int16_t& DevIdx) override { script_.Call("IO.CloseDevice", script_.List(DevIdx)); }
  void WriteCommand(std::int16_t& DevIdx, std::string& Command, std::int16_t& Terminator,
                    std::int16_t& Extra) override {
    script_.Call("IO.WriteCommand",
                 script_.List(DevIdx) + ", \"" + Command + "\", " + script_.List(Terminator, Extra));
  }
  void Read(std::int16_t& DevIdx, std::int16_t& Binary, std::int16_t& Zero, std::int16_t& Terminator,
            std::int32_t& Count, Variant& Answer, Variant& Buffer) override {
    script_.Call("IO.Read", script_.List(DevIdx, Binary, Zero, Terminator, Count) + ", " +
                                script_.Shape(Answer) + ", " + script_.Shape(Buffer));
    script_.read(Answer, Buffer);
  }
  void SetIOTimeout(std::int16_t& DevIdx, std::int32_t& Milliseconds) override {
    script_.Call("IO.SetIOTimeout", script_.List(DevIdx, Milliseconds));
  }
  void FlushInQ(std::int16_t& DevIdx) override { script_.Call("IO.FlushInQ", script_.List(DevIdx)); }
  void GetDeviceProperty(std::int16_t& DevIdx, std::int16_t& Number, Variant& Value) override {
    script_.Call("IO.GetDeviceProperty", script_.List(DevIdx, Number));
    script_.change_index(DevIdx);
    Value = script_.properties[Number];
  }

 private:
  HostScript& script_;
};

/// A host's device object that records each call with its arguments, "IO.WriteCommand(3, "*IDN?", 10, 0)",
/// and does what `script` says.
class RecordingHost final : public HostObject {
 public:
  HostScript script;
  Variant last_error = 0;
  std::string description;
  std::int32_t flushed = 0;
  Variant kind;
  Variant address;

  IoObject& IO() override { return io_; }
  void OpenDevice() override { script.Call("OpenDevice"); }
  void CloseDevice() override { script.Call("CloseDevice"); }
  void WriteCommand(const std::string& Command) override { script.Call("WriteCommand", '"' + Command + '"'); }
  void Read(std::int16_t& Binary, std::int16_t& Terminator, std::int32_t& Count, Variant& Answer,
            Variant& Buffer) override {
    script.Call("Read", script.List(Binary, Terminator, Count) + ", " + script.Shape(Answer) + ", " +
                            script.Shape(Buffer));
    script.read(Answer, Buffer);
  }
  void FlushInQ(std::int32_t& Count) override {
    script.Call("FlushInQ", script.List(Count));
    Count = flushed;
  }
  void GetDeviceInfo(Variant& Kind, Variant& Address) override {
    script.Call("GetDeviceInfo");
    Kind = kind;
    Address = address;
  }
  Variant LastError() override {
    script.Call("LastError");
    return last_error;
  }
  void SetLastError(std::int16_t Code) override { script.Call("SetLastError", script.List(Code)); }
  std::string LastErrorDescription() override {
    script.Call("LastErrorDescription");
    return description;
  }

 private:
  RecordingIo io_{script};
};

}  // namespace kolvane::device
