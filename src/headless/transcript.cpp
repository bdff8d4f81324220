#include "headless/transcript.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <charconv>

#include "base/encoding.h"

namespace kolvane::headless {
namespace {

constexpr int kDecimals = 6;

std::string_view NameOf(Transcript::Way way) {
  switch (way) {
    case Transcript::Way::kOpen:
      return "open";
    case Transcript::Way::kOut:
      return "out";
    case Transcript::Way::kIn:
      return "in";
    case Transcript::Way::kClose:
      break;
  }
  return "close";
}

std::string SecondsText(double seconds) {
  std::array<char, 64> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed, kDecimals);
  return {text.data(), end.ptr};
}

}  // namespace

int Transcript::Open(const std::string& file, bool times) {
  name_ = file;
  times_ = times;
  file_ = base::Descriptor(base::Uninterrupted(
      [&] { return open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK | O_CLOEXEC, 0666); }));
  return file_ ? 0 : errno;
}

int Transcript::Write(Way way, std::string_view bytes, const Moment& moment, std::int32_t status) {
  if (!file_) return 0;
  std::string line = "{";
  if (times_)
    line.append("\"t\":" + SecondsText(moment.seconds) + ",\"time\":\"" + base::UtcTimeText(moment.time_ms) +
                "\",");
  line.append("\"way\":\"").append(NameOf(way)).append("\",\"bytes\":\"");
  line.append(base::Base64(bytes)).append("\"");
  if (status != 0) line.append(",\"status\":" + std::to_string(status));
  line += "}\n";
  const int error = base::AppendWhole(file_.get(), line);
  if (error != 0) file_ = base::Descriptor();
  return error;
}

}  // namespace kolvane::headless
