#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "device/device_state.h"
#include "headless/lines.h"
#include "kolvane/CommandRun.h"
#include "terminal/exchange.h"
#include "terminal/terminal_state.h"
#include "values/row.h"

namespace kolvane::headless {

/// Writes a record for each exchange, in CSV or JSON (docs/formats/answers.md), even with $SILENT; none for a
/// failed one if errors are not wanted.
class RecordWriter final : public terminal::ExchangeListener {
 public:
  /// All references must outlive this object.
  RecordWriter(const CommandRunOptions& options, const device::DeviceState& device,
               const terminal::LastAnswer& answer, const base::Clock& clock, LinePane& pane);

  /// Writes the header before the first record.
  void Start();
  void ExchangeEnded(std::string_view command, const terminal::ExchangeResult& result) override;

 private:
  std::string NumbersRecord(const values::Row& row);
  std::string CsvRecord(const values::Moment& moment, std::string_view command, std::int32_t status,
                        std::string_view answer);
  std::int32_t StatusOf(const terminal::ExchangeResult& result) const;

  const CommandRunOptions& options_;
  const device::DeviceState& device_;
  const terminal::LastAnswer& answer_;
  const base::Clock& clock_;
  LinePane& pane_;
  values::RowMaker maker_;
  values::CsvWriter numbers_;
  base::TimeText time_;
};

}  // namespace kolvane::headless
