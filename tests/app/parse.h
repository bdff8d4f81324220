#pragma once

#include <string>
#include <vector>

#include "app/options.h"

namespace kolvane::app {

inline Options Parse(std::vector<std::string> words) {
  words.insert(words.begin(), "kolvane");
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  return ParseOptions(static_cast<int>(words.size()), arguments.data());
}

}  // namespace kolvane::app
