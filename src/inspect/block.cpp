#include "inspect/block.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <utility>

#include "base/encoding.h"
#include "base/text.h"
#include "inspect/hex_dump.h"

namespace kolvane::inspect {
namespace {

constexpr std::size_t kPiece = 1 << 20;  // of a search
constexpr std::size_t kLine = static_cast<std::size_t>(kBytesPerLine);

// Each byte as `prefix` and two digits, sixteen per line, each line between `begin` and `end`.
struct ByteForm {
  std::string_view prefix;
  std::string_view between;  // between the bytes of a line
  std::string_view begin;
  std::string_view end;
  std::string_view last_end;
};

std::string Lines(const ByteForm& form, std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    text.append(at % kLine == 0 ? form.begin : form.between).append(form.prefix);
    const auto byte = static_cast<unsigned char>(bytes[at]);
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
    const bool last = at + 1 == bytes.size();
    if (last || at % kLine == kLine - 1) text += last ? form.last_end : form.end;
  }
  return text;
}

std::string DumpText(std::string_view bytes, std::size_t offset) {
  std::string text;
  for (std::size_t at = 0; at < bytes.size(); at += kLine) {
    if (at > 0) text += '\n';
    AppendDumpLine(offset + at, bytes.substr(at, kLine), text);
  }
  return text;
}

std::optional<std::string> HexBytes(std::string_view typed) {
  std::string bytes;
  int high = -1;
  for (const char c : typed) {
    if (c == ' ' && high < 0) continue;
    const int digit = HexDigit(c);
    if (digit < 0) return std::nullopt;
    if (high < 0) {
      high = digit;
    } else {
      bytes += static_cast<char>(high * 16 + digit);
      high = -1;
    }
  }
  if (high >= 0 || bytes.empty()) return std::nullopt;
  return bytes;
}

}  // namespace

void BlockSource::SetBytes(std::string bytes) {
  bytes_ = std::move(bytes);
  size_ = bytes_.size();
  file_ = base::Descriptor();
}

int BlockSource::Open(const std::string& file) {
  base::Descriptor opened(
      base::Uninterrupted([&] { return open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); }));
  struct stat what {};
  if (!opened || fstat(opened.get(), &what) != 0) return errno;
  if (S_ISDIR(what.st_mode)) return EISDIR;
  if (!S_ISREG(what.st_mode)) return EINVAL;
  file_ = std::move(opened);
  bytes_.clear();
  size_ = static_cast<std::uint64_t>(what.st_size);
  return 0;
}

std::string BlockSource::Read(std::uint64_t offset, std::size_t count) const {
  if (offset >= size_) return {};
  if (!file_) return bytes_.substr(static_cast<std::size_t>(offset), count);
  std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - offset)), '\0');
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t got = base::Uninterrupted([&] {
      return pread(file_.get(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
    });
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  bytes.resize(done);
  return bytes;
}

BlockSearch::BlockSearch(std::shared_ptr<const BlockSource> source, std::string bytes, std::uint64_t from)
    : source_(std::move(source)),
      bytes_(std::move(bytes)),
      from_(std::min(from, source_->size())),
      at_(from_),
      end_(source_->size()) {}

// Pieces overlap, so that an occurrence across their border is found.
double BlockSearch::Step() {
  if (at_ + bytes_.size() <= end_) {
    const auto wanted = std::min<std::uint64_t>(kPiece + bytes_.size() - 1, end_ - at_);
    const std::string piece = source_->Read(at_, static_cast<std::size_t>(wanted));
    if (const std::size_t hit = piece.find(bytes_); hit != std::string::npos) {
      found_ = at_ + hit;
      return 1;
    }
    at_ += kPiece;
  } else if (from_start_) {
    return 1;
  } else {
    from_start_ = true;
    at_ = 0;
    end_ = std::min(from_ + bytes_.size() - 1, source_->size());
  }
  const std::uint64_t reached = std::min(at_, end_);
  const std::uint64_t searched = from_start_ ? source_->size() - from_ + reached : reached - from_;
  return std::min(0.999, static_cast<double>(searched) / static_cast<double>(source_->size() + 1));
}

void CopyText::Append(std::string_view piece) {
  const bool first = done_ == 0;
  const bool last = done_ + piece.size() == size_;
  switch (form_) {
    case CopyForm::kHex:
      text_ += Lines({"", " ", "", "\n", last ? "" : "\n"}, piece);
      break;
    case CopyForm::kC:
      if (first) text_ += "const unsigned char data[" + std::to_string(size_) + "] = {\n";
      text_ += Lines({"0x", ", ", "    ", ",\n", last ? "\n" : ",\n"}, piece);
      if (last) text_ += "};";
      break;
    case CopyForm::kPython:
      if (size_ <= kLine) {
        text_ = "b\"" + Lines({"\\x", "", "", "", ""}, piece) + '"';
        break;
      }
      if (first) text_ += "(\n";
      text_ += Lines({"\\x", "", "    b\"", "\"\n", "\"\n"}, piece);
      if (last) text_ += ")";
      break;
    case CopyForm::kBase64:
      text_ += base::Base64(piece);
      break;
    case CopyForm::kDump:
      text_ += DumpText(piece, static_cast<std::size_t>(offset_ + done_)) + (last ? "" : "\n");
      break;
    case CopyForm::kText:
      text_ += base::FromWindows1252(piece);
      break;
  }
  done_ += piece.size();
}

std::optional<std::string> SearchBytes(std::string_view typed) {
  const bool quoted = typed.size() > 2 && typed.front() == '"' && typed.back() == '"';
  if (!quoted) {
    if (auto bytes = HexBytes(typed)) return bytes;
  }
  const std::string_view text = quoted ? typed.substr(1, typed.size() - 2) : typed;
  if (text.empty() || base::FirstOutsideWindows1252(text)) return std::nullopt;
  return base::ToWindows1252(text);
}

std::optional<std::int64_t> TypedOffset(std::string_view typed, std::int64_t at) {
  typed = base::TrimSpaces(typed);
  const bool relative = typed.starts_with('+') || typed.starts_with('-');
  const bool back = typed.starts_with('-');
  if (relative) typed.remove_prefix(1);
  const std::string upper = base::UpperCase(typed.substr(0, 2));
  const bool hex = upper == "&H" || upper == "0X";
  if (hex) typed.remove_prefix(2);
  std::int64_t number = 0;
  const char* end = typed.data() + typed.size();
  const auto read = std::from_chars(typed.data(), end, number, hex ? 16 : 10);
  constexpr std::int64_t kLargest = std::int64_t{1} << 60;
  if (typed.starts_with('-') || read.ec != std::errc() || read.ptr != end || number > kLargest)
    return std::nullopt;
  if (!relative) return number;
  return back ? at - number : at + number;
}

}  // namespace kolvane::inspect
