#pragma once

#include <string>
#include <string_view>

namespace kolvane::window {

/// Makes UTF-8 of a text file that comes in pieces: Windows-1252, or UTF-8 where the file begins with its
/// mark, which is taken off. No piece that comes out ends within a character or within a CR LF.
class TextDecoder {
 public:
  /// The first piece holds the mark whole or does not hold it at all.
  std::string Decode(std::string_view bytes);
  /// What was held back, after the last piece.
  std::string Finish();

 private:
  std::size_t Complete() const;

  std::string pending_;
  bool begun_ = false;
  bool utf8_ = false;
};

}  // namespace kolvane::window
