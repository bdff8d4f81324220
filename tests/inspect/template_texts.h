#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "inspect/template_run.h"

namespace kolvane::inspect {

/// The texts of the lines that a template's file yields.
inline std::vector<std::string> TemplateTexts(std::string_view file, const NumberForm& form, DumpView& view,
                                              ByteBuffer& buffer) {
  std::vector<std::string> texts;
  for (ResultLine& line : RunTemplate(ParseTemplate(file), form, view, buffer))
    texts.push_back(std::move(line.text));
  return texts;
}

}  // namespace kolvane::inspect
