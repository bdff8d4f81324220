#pragma once

namespace kolvane::window {

/// A control that the popup menu acts on.
class EditTarget {
 public:
  virtual ~EditTarget() = default;
  virtual void Copy() = 0;
  virtual void Cut() = 0;
  virtual void Paste() = 0;
  virtual void Delete() = 0;
  virtual void SelectAll() = 0;
  virtual void ClearAll() = 0;
  virtual void Open() = 0;
  virtual void Print() = 0;
  virtual void ChooseFont() = 0;
  virtual void ChooseBackColor() = 0;
};

/// Values of the edit-target flag.
namespace edit_target {
inline constexpr int kPane = 0;
inline constexpr int kGrid = 1;
}  // namespace edit_target

}  // namespace kolvane::window
