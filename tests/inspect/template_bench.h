#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "inspect/marked_bytes.h"
#include "inspect/template_texts.h"

namespace kolvane::inspect {

using Lines = std::vector<std::string>;

/// A template run on the first byte of a dump.
class TemplateBench : public testing::Test {
 protected:
  void Show(std::string_view bytes) {
    dump_ = DumpOf(bytes);
    view_ = {dump_, 5, 0};
  }

  /// The lines of the template whose lines are separated by "|" here.
  Lines Run(std::string text) {
    for (std::size_t at = 0; (at = text.find('|', at)) != std::string::npos;) text.replace(at, 1, "\r\n");
    return TemplateTexts(text, form_, view_, buffer_);
  }

  std::string dump_ = DumpOf("");
  DumpView view_{dump_};
  ByteBuffer buffer_{};
  NumberForm form_{.network_order = false, .decimal_sign = ","};
};

}  // namespace kolvane::inspect
