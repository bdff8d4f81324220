#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "help/widget_topics.h"

namespace kolvane::help {

/// The help file that stands beside the component.
inline constexpr char kHelpFileName[] = "Terminal.chm";

/// Shows pages of help files; the window implements it. Where the file is missing or damaged it does nothing.
class HelpViewer {
 public:
  virtual ~HelpViewer() = default;
  virtual void ShowPlace(const std::string& path, const HelpPlace& place) = 0;
};

/// Help at a numeric topic, for toolbar button and F1. Nothing is reported.
class HelpAccess {
 public:
  /// `default_file` names the file that an empty path stands for, anew at each call.
  HelpAccess(HelpViewer& viewer, std::function<std::string()> default_file);

  /// Topic `number` of the help file `path`; of the default file where it is empty.
  void ShowHelp(std::int32_t number, const std::string& path = {});
  /// A place in the default file.
  void ShowHelpAt(const HelpPlace& place) { viewer_.ShowPlace(default_file_(), place); }

 private:
  HelpViewer& viewer_;
  std::function<std::string()> default_file_;
};

}  // namespace kolvane::help
