#include "amplifier/whole_file.h"

#include <string_view>
#include <system_error>

#include "base/descriptor.h"
#include "base/files.h"

namespace kolvane::amplifier {

std::string ReadWholeFile(const std::string& path, int stop) {
  std::string bytes;
  bool stopped = false;
  const auto take = [&bytes](std::string_view piece) { return bytes.append(piece), true; };
  const auto give_up = [&](int /*waited_ms*/) { return stopped = base::IsReadable(stop); };
  const int error = base::ReadPieces(path, take, give_up);
  if (stopped) throw ReadingStopped{};
  if (error != 0) throw std::system_error(error, std::generic_category(), "cannot read " + path);
  return bytes;
}

}  // namespace kolvane::amplifier
