#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "inspect/byte_reader.h"

namespace kolvane::inspect {

/// How numbers are read and shown.
struct NumberForm {
  bool network_order = false;
  std::string_view decimal_sign = ".";
};

/// Runs a format template, the bytes of its file, at the caret and returns a line for each field. Nothing
/// fails: a step that cannot be done is left out, and what it would have set stays as the lines before left
/// it (docs/formats/template.md). Template and lines are Windows-1252; a template in UTF-8 begins with its
/// mark.
std::vector<std::string> RunTemplate(std::string_view file, const NumberForm& form, DumpView& view,
                                     ByteBuffer& buffer);

}  // namespace kolvane::inspect
