#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "component/ini_store.h"

namespace kolvane::component {

/// A settings store in memory that records which keys are read and written, in order.
class MemoryStore final : public SettingsStore {
 public:
  std::string File() const override { return file; }

  std::optional<std::string> Find(const std::string& section, const std::string& key) const override {
    reads.push_back(section + "/" + key);
    const auto found = values.find(section + "/" + key);
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }

  void Write(const std::string& section, const std::string& key, const std::string& value) override {
    writes.push_back(section + "/" + key);
    values[section + "/" + key] = value;
  }

  std::optional<SaveFailure> Flush() override {
    ++flushes;
    on_flush();
    return failure;
  }

  std::string file;
  int flushes = 0;
  std::optional<SaveFailure> failure;
  std::function<void()> on_flush = [] {};
  mutable std::vector<std::string> reads;
  std::vector<std::string> writes;
  std::map<std::string, std::string> values;
};

}  // namespace kolvane::component
