#pragma once

#include <getopt.h>

#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

namespace kolvane::base {

/// One long option of a program: how `Options` takes its value, and which values are valid.
template <typename Options>
struct OptionRow {
  const char* name;
  const char* expected;                                    ///< null: an option without a value
  bool (*take)(Options& options, std::string_view value);  ///< false for a wrong value
};

/// Builds getopt_long's table: each row with `first` plus its index as code, then `others`, then the end.
template <typename Options>
std::vector<option> LongOptions(std::span<const OptionRow<Options>> rows, int first,
                                std::initializer_list<option> others) {
  std::vector<option> all;
  for (const OptionRow<Options>& row : rows)
    all.push_back({row.name, row.expected == nullptr ? no_argument : required_argument, nullptr, first++});
  all.insert(all.end(), others);
  all.push_back({});
  return all;
}

}  // namespace kolvane::base
