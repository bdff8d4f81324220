#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "values/store.h"

namespace kolvane::values {

/// Names and looks of a store's series. What the user has chosen for a field of a command survives clearing
/// the store.
class CurveList {
 public:
  /// This many are shown by default: those of queries first, since other answers often only confirm.
  static constexpr std::size_t kFirstShown = 8;

  explicit CurveList(const Store& store) : store_(store) {}

  /// Brings the list up to date with the store.
  void Refresh();
  std::size_t size() const { return curves_.size(); }

  bool IsShown(std::size_t number) const { return curves_[number].shown; }
  void Show(std::size_t number, bool shown);

  /// The name that the user gave, otherwise the command, followed by the field's number if it has several:
  /// "MSV? 1,2 [2]".
  std::string Name(std::size_t number) const;
  /// An empty name restores the default.
  void SetName(std::size_t number, const std::string& name);

  /// The colour that the user chose, 0xRRGGBB; no value if it is the default of the curve's number.
  std::optional<std::uint32_t> Color(std::size_t number) const { return curves_[number].color; }
  void SetColor(std::size_t number, std::optional<std::uint32_t> color);

 private:
  struct Curve {
    bool shown = false;
    std::string name;
    std::optional<std::uint32_t> color;
  };
  using Field = std::pair<std::string, std::size_t>;

  Field FieldOf(std::size_t number) const;
  bool IsQuery(std::size_t number) const;
  void ShowUnasked(std::size_t number);
  void Remember(std::size_t number) { chosen_[FieldOf(number)] = curves_[number]; }

  const Store& store_;
  std::uint64_t generation_ = 0;
  std::vector<Curve> curves_;
  std::vector<std::size_t> unasked_;  ///< at most kFirstShown numbers
  std::map<Field, Curve> chosen_;
};

}  // namespace kolvane::values
