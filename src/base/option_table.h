#pragma once

#include <getopt.h>

#include <initializer_list>
#include <span>
#include <string>
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

/// Why `word`, which getopt_long does not know, is refused if it abbreviates several options: a sentence with
/// their names; empty if it does not.
template <typename Options>
std::string AmbiguousOption(std::span<const OptionRow<Options>> rows, std::string_view word) {
  if (!word.starts_with("--") || word.starts_with("--=")) return {};
  const std::string_view typed = word.substr(2, word.find('=') - 2);
  std::string names;
  int count = 0;
  for (const OptionRow<Options>& row : rows) {
    if (!std::string_view(row.name).starts_with(typed)) continue;
    names += (count++ == 0 ? "--" : ", --") + std::string(row.name);
  }
  return count < 2 ? std::string() : "option '" + std::string(word) + "' is ambiguous: " + names;
}

}  // namespace kolvane::base
