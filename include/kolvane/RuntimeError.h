#pragma once

#include <stdexcept>
#include <string>

#include "kolvane/Export.h"

namespace kolvane {

/// A run-time error of a conversion, an array bound or arithmetic; what() is its German description in UTF-8.
/// Reaches a host only from MainClass::OpenTerminal, before a window is shown.
class KOLVANE_EXPORT RuntimeError : public std::runtime_error {
 public:
  enum class Kind {
    kOverflow,         ///< a value does not fit its type
    kSubscript,        ///< an index outside an array, or a missing argument
    kTypeMismatch,     ///< a value cannot be converted
    kDivisionByZero,   ///< division by 0
    kInvalidArgument,  ///< a value that the operation does not accept
    kNoObject,         ///< an operation on an object that was never given
    kNoMember,         ///< an object that lacks the operation
    kOther             ///< described only by its text
  };

  explicit RuntimeError(Kind kind) : std::runtime_error(Description(kind)), kind_(kind) {}
  RuntimeError(Kind kind, const std::string& description) : std::runtime_error(description), kind_(kind) {}

  Kind kind() const { return kind_; }

  /// The German description of each kind.
  static const char* Description(Kind kind) {
    switch (kind) {
      case Kind::kOverflow:
        return "Überlauf";
      case Kind::kSubscript:
        return "Index außerhalb des gültigen Bereichs";
      case Kind::kTypeMismatch:
        return "Typen unverträglich";
      case Kind::kDivisionByZero:
        return "Division durch Null";
      case Kind::kInvalidArgument:
        return "Ungültiges Argument";
      case Kind::kNoObject:
        return "Kein Geräteobjekt übergeben";
      case Kind::kNoMember:
        return "Das Geräteobjekt unterstützt diese Operation nicht";
      case Kind::kOther:
        break;
    }
    return "Laufzeitfehler";
  }

 private:
  Kind kind_;
};

}  // namespace kolvane
