#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/look.h"
#include "pane/pane.h"
#include "pane/pane_text.h"

namespace kolvane::pane {

/// Keeps the pane's text with its line breaks, and each line with its kind.
class FakePane final : public Pane {
 public:
  void AppendLine(LineKind kind, std::string_view line) override {
    text += "\r\n" + std::string(line);
    lines.emplace_back(line);
    kinds.push_back(kind);
    caret_back = 0;
  }
  void AppendText(LineKind kind, std::string_view appended, int back) override {
    text += appended;
    text_kinds.push_back(kind);
    caret_back = back;
  }
  void Clear() override { text.clear(); }
  void Remark(LineKind /*kind*/, std::string_view remark) override { remarks.emplace_back(remark); }
  void Refresh() override { ++refreshed; }

  std::string text;
  std::vector<std::string> lines;
  std::vector<std::string> remarks;
  std::vector<LineKind> kinds;
  std::vector<LineKind> text_kinds;
  int caret_back = 0;
  int refreshed = 0;
};

/// The real pane's text without a window; commands are shown in their colour.
class TextPane final : public Pane {
 public:
  void AppendLine(LineKind kind, std::string_view line) override {
    text.AppendLine(line, kind == LineKind::kCommand ? base::kCommandColor : base::kNoColor);
  }
  void AppendText(LineKind /*kind*/, std::string_view added, int back) override {
    text.AppendText(added, back);
  }
  void Clear() override { text.SetText(""); }
  void Refresh() override { ++refreshes; }

  PaneText text;
  int refreshes = 0;
};

}  // namespace kolvane::pane
