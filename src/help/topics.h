#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::help {

/// The topic of help/topics.txt that F1 opens if no more specific one is known.
inline constexpr std::uint32_t kStartTopic = 1;

/// The topic that F1 opens for the widget, action or menu of that objectName; no value if the table has none.
/// A name that ends in an index ("Port_3") stands for its array ("Port") unless it has a topic itself.
std::optional<std::uint32_t> WidgetTopic(std::string_view object_name);

/// Every topic that WidgetTopic may return.
std::vector<std::uint32_t> AllWidgetTopics();

/// Where the help explains something: an anchor on a topic's page, which need not exist.
struct HelpTarget {
  std::uint32_t topic = kStartTopic;
  std::string anchor;

  bool operator==(const HelpTarget&) const = default;
};

/// The topic of the first name that has one, and that name as the anchor; kStartTopic if none has. `names`
/// are those of a widget and its parents, from inside out.
HelpTarget TargetOfNames(std::span<const std::string> names);

/// The number, without its sign, in the brackets at the end of a failure, "… (-22)"; 0 if there is none.
int StatusIn(std::string_view text);

/// Where the help explains the message of a box; no value for a text that is not one of the terminal's. A
/// failed connect or disconnect that ends in a status of the port library leads to that status.
std::optional<HelpTarget> MessageTarget(std::string_view text);

/// The statuses, without their sign, that have an anchor on the page of statuses: "s22" for 22.
std::span<const int> ExplainedStatuses();

}  // namespace kolvane::help
