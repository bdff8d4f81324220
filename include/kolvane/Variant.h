#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "kolvane/Export.h"
#include "kolvane/RuntimeError.h"

namespace kolvane {

using Bytes = std::vector<std::uint8_t>;

/// A value passed between host and terminal: nothing, a Boolean, a number, a UTF-8 text or bytes. Conversions
/// throw RuntimeError (kTypeMismatch, kOverflow) if their rule does not apply.
class KOLVANE_EXPORT Variant {
 public:
  Variant() = default;
  Variant(bool value) : value_(value) {}                        // NOLINT(google-explicit-constructor)
  Variant(std::int16_t value) : value_(std::int32_t{value}) {}  // NOLINT(google-explicit-constructor)
  Variant(std::int32_t value) : value_(value) {}                // NOLINT(google-explicit-constructor)
  Variant(double value) : value_(value) {}                      // NOLINT(google-explicit-constructor)
  Variant(std::string value) : value_(std::move(value)) {}      // NOLINT(google-explicit-constructor)
  Variant(const char* value) : value_(std::string(value)) {}    // NOLINT(google-explicit-constructor)
  Variant(Bytes value) : value_(std::move(value)) {}            // NOLINT(google-explicit-constructor)

  bool empty() const { return std::holds_alternative<std::monostate>(value_); }

  /// Numbers are rounded half to even; true is -1; a text must be a number as a whole ("7", " 12.5 ");
  /// nothing and bytes are a type mismatch.
  std::int16_t ToInt16() const;
  std::int32_t ToInt32() const;
  /// Numbers in plain decimal, Booleans as "-1" and "0", bytes decoded as Windows-1252, nothing as the empty
  /// text.
  std::string ToText() const;
  /// Bytes as they are, a text in Windows-1252, nothing as no bytes; numbers and Booleans are a type
  /// mismatch.
  Bytes ToBytes() const;
  bool ToBool() const;

  bool operator==(const Variant&) const = default;

 private:
  std::variant<std::monostate, bool, std::int32_t, double, std::string, Bytes> value_;
};

}  // namespace kolvane
