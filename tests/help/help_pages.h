#pragma once

#include "base/pattern.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::help {

/// One line of topics.txt.
struct TopicLine {
  int number = 0;
  int level = 0;
  std::string page;
  std::string title;
};

/// The help's sources as a folder holds them: `topics.txt` and `pages/`.
class HelpPages {
 public:
  explicit HelpPages(const std::filesystem::path& folder) : folder_(folder) {
    for (const auto& entry : std::filesystem::directory_iterator(folder / "pages")) {
      if (entry.path().extension() != ".html") continue;
      const std::string html = Bytes(entry.path());
      pages_[entry.path().filename()] = html;
      texts_.push_back(Text(html));
    }
  }

  static std::string Bytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  std::filesystem::path folder() const { return folder_ / "pages"; }
  /// Name of each page and its text.
  const std::map<std::string, std::string>& pages() const { return pages_; }

  /// The list of topics without its remarks; a line of another form has the number 0.
  std::vector<TopicLine> Topics() const {
    std::vector<TopicLine> topics;
    std::istringstream lines(Bytes(folder_ / "topics.txt"));
    for (std::string line; std::getline(lines, line);) {
      if (!line.starts_with('#')) topics.push_back(TopicOf(line));
    }
    return topics;
  }

  /// The values of an attribute, "href" for example, in the order of a page.
  static std::vector<std::string> Values(const std::string& html, const std::string& attribute) {
    return Matches(html, " " + attribute + "=\"([^\"]*)\"");
  }

  /// Whether the page has an anchor of that name.
  static bool HasAnchor(const std::string& html, const std::string& name) {
    return html.find("<a name=\"" + name + "\">") != std::string::npos;
  }

  /// Whether one of the pages contains exactly this text.
  bool Quotes(std::string_view text) const {
    return std::ranges::any_of(
        texts_, [text](const std::string& page) { return page.find(text) != std::string::npos; });
  }

  /// The text of a page, without tags and with its entities resolved.
  static std::string Text(const std::string& html) {
    std::string text;
    bool in_tag = false;
    for (const char c : html) {
      if (c == '<') in_tag = true;
      if (!in_tag) text += c == '\n' ? ' ' : c;
      if (c == '>') in_tag = false;
    }
    for (const auto& [entity, character] :
         std::map<std::string, std::string>{{"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}})
      text = base::Pattern(entity).Replaced(text, character);
    return text;
  }

  static std::vector<std::string> Matches(const std::string& text, const std::string& pattern) {
    std::vector<std::string> found;
    for (const std::vector<std::string>& match : base::Pattern(pattern).FindAll(text))
      found.push_back(match[1]);
    return found;
  }

 private:
  static TopicLine TopicOf(const std::string& line) {
    const base::Pattern form("^([1-9][0-9]*)\t([1-3])\t([a-z0-9][a-z0-9-]*\\.html)\t([^\t]+)$");
    const auto found = form.FindAll(line);
    if (found.size() != 1) return {0, 0, {}, line};
    const std::vector<std::string>& parts = found[0];
    return {std::stoi(parts[1]), std::stoi(parts[2]), parts[3], parts[4]};
  }

  std::filesystem::path folder_;
  std::map<std::string, std::string> pages_;
  std::vector<std::string> texts_;
};

}  // namespace kolvane::help
