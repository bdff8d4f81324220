#pragma once

#include <kolvane/MainClass.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "instrument.h"

namespace host {

/// The host's two instruments and the last error; each call writes a line to `trace`.
struct Bench {
  std::FILE* trace;
  std::vector<Instrument> instruments;
  int error = 0;
  std::string description;

  void Line(const std::string& call) const;
  void Fail(int code, const std::string& why);
  /// Answers a Read of either mode.
  void Read(Instrument& instrument, bool binary, int terminator, std::int32_t count, kolvane::Variant& answer,
            kolvane::Variant& buffer);
};

/// Operating mode 0: the instruments by their index.
class Io final : public kolvane::IoObject {
 public:
  explicit Io(Bench& bench) : bench_(bench) {}

  void InitializeDevice(std::int16_t& DevIdx) override;
  void CloseDevice(std::int16_t& DevIdx) override;
  void WriteCommand(std::int16_t& DevIdx, std::string& Command, std::int16_t& Terminator,
                    std::int16_t& Extra) override;
  void Read(std::int16_t& DevIdx, std::int16_t& Binary, std::int16_t& Zero, std::int16_t& Terminator,
            std::int32_t& Count, kolvane::Variant& Answer, kolvane::Variant& Buffer) override;
  void SetIOTimeout(std::int16_t& DevIdx, std::int32_t& Milliseconds) override;
  void FlushInQ(std::int16_t& DevIdx) override;
  void GetDeviceProperty(std::int16_t& DevIdx, std::int16_t& Number, kolvane::Variant& Value) override;

 private:
  Bench& bench_;
};

/// The device object. Operating mode 1: the first instrument.
class HostDevice final : public kolvane::HostObject {
 public:
  /// `bye` is called when an instrument receives `BYE`.
  HostDevice(std::FILE* trace, const std::function<void()>& bye);

  kolvane::IoObject& IO() override { return io_; }
  void OpenDevice() override;
  void CloseDevice() override;
  void WriteCommand(const std::string& Command) override;
  void Read(std::int16_t& Binary, std::int16_t& Terminator, std::int32_t& Count, kolvane::Variant& Answer,
            kolvane::Variant& Buffer) override;
  void FlushInQ(std::int32_t& Count) override;
  void GetDeviceInfo(kolvane::Variant& Kind, kolvane::Variant& Address) override;
  kolvane::Variant LastError() override;
  void SetLastError(std::int16_t Code) override;
  std::string LastErrorDescription() override;

 private:
  Bench bench_;
  Io io_{bench_};
};

}  // namespace host
