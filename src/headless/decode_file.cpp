#include "headless/decode_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <nlohmann/json.hpp>
#include <system_error>
#include <utility>

#include "base/descriptor.h"
#include "base/encoding.h"
#include "base/files.h"
#include "base/number.h"
#include "headless/messages.h"
#include "inspect/hex_dump.h"
#include "inspect/template_run.h"

namespace kolvane::headless {
namespace {

constexpr std::size_t kPiece = 1 << 16;
constexpr std::size_t kLine = static_cast<std::size_t>(inspect::kBytesPerLine);

std::string Reason(int error) { return std::generic_category().message(error); }

// A terminal would act on control characters of the data or of a template.
std::string ShownAt(bool terminal, std::string_view text) {
  return terminal ? WithVisibleControls(text) : std::string(text);
}

/// Buffered standard output.
class Out {
 public:
  explicit Out(int descriptor) : descriptor_(descriptor), at_terminal_(isatty(descriptor) == 1) {}

  std::string& text() { return text_; }
  void Flush() {
    if (error_ == 0) error_ = base::WriteAllWaiting(descriptor_, ShownAt(at_terminal_, text_));
    text_.clear();
  }
  void FlushLarge() {
    if (text_.size() >= kPiece) Flush();
  }
  int error() const { return error_; }

  DecodeResult Result() {
    Flush();
    // A reader that closes the pipe early is not a failure.
    if (error_ == 0 || error_ == EPIPE) return {};
    return {1, "cannot write: " + Reason(error_)};
  }

 private:
  int descriptor_;
  bool at_terminal_;
  std::string text_;
  int error_ = 0;
};

/// A file or pipe, read in order. Flushes the output before it waits for more input.
class In {
 public:
  In(const std::string& name, Out& out) : name_(name), out_(out) {
    if (name == "-") {
      descriptor_ = STDIN_FILENO;
      return;
    }
    file_ = base::Descriptor(open(name.c_str(), O_RDONLY | O_CLOEXEC));
    descriptor_ = file_.get();
    if (!file_) error_ = errno;
  }

  /// The next `size` bytes, fewer at the end; valid until the next call.
  std::string_view Take(std::size_t size) {
    begin_ += std::exchange(taken_, 0);
    while (buffer_.size() - begin_ < size && Fill(size)) {
    }
    taken_ = std::min(size, buffer_.size() - begin_);
    return std::string_view(buffer_).substr(begin_, taken_);
  }

  /// False if the file ends before.
  bool Skip(std::uint64_t bytes) {
    if (lseek(descriptor_, 0, SEEK_CUR) == 0 && bytes <= std::numeric_limits<off_t>::max()) {
      const off_t end = lseek(descriptor_, 0, SEEK_END);
      if (end > 0)
        return lseek(descriptor_, static_cast<off_t>(bytes), SEEK_SET) >= 0 &&
               static_cast<off_t>(bytes) <= end;
    }
    return Drop(bytes);
  }

  /// Reads and discards `bytes` bytes; false if the file ends before.
  bool Drop(std::uint64_t bytes) {
    while (bytes > 0) {
      const std::size_t got = Take(static_cast<std::size_t>(std::min<std::uint64_t>(bytes, kPiece))).size();
      if (got == 0) return false;
      bytes -= got;
    }
    return true;
  }

  int error() const { return error_; }
  DecodeResult Problem() const { return {2, "cannot read '" + name_ + "': " + Reason(error_)}; }

 private:
  bool Fill(std::size_t size) {
    if (error_ != 0) return false;
    out_.Flush();
    buffer_.erase(0, std::exchange(begin_, 0));
    const std::size_t before = buffer_.size();
    buffer_.resize(before + std::max(size - before, kPiece));
    const ssize_t got = Read(buffer_.data() + before, buffer_.size() - before);
    if (got < 0) error_ = errno;
    buffer_.resize(before + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    return got > 0;
  }

  // Like read(2), but waits where the descriptor does not: a terminal or pipe is shared with programs that
  // make it non-blocking.
  ssize_t Read(char* to, std::size_t size) {
    for (;;) {
      const ssize_t got = read(descriptor_, to, size);
      if (got >= 0 || !base::IsTransient(errno)) return got;
      base::Await(descriptor_, POLLIN);
    }
  }

  std::string name_;
  Out& out_;
  base::Descriptor file_;
  int descriptor_ = -1;
  int error_ = 0;
  std::string buffer_;
  std::size_t begin_ = 0;  // of the bytes returned by the last Take and those after
  std::size_t taken_ = 0;  // size of the last Take
};

// In English, like all messages about the command line itself.
std::string Wording(inspect::TemplateProblem::Kind kind) {
  using Kind = inspect::TemplateProblem::Kind;
  switch (kind) {
    case Kind::kType:
      return "unknown type";
    case Kind::kByteCount:
      return "byte count is not a number";
    case Kind::kOffset:
      return "offset is not a number";
    case Kind::kOutside:
      return "field extends beyond the 257 bytes of a record, offset";
    case Kind::kBits:
      return "bit range without bits, starting at bit";
    case Kind::kHighBits:
      return "bits from 15 on are ignored";
    case Kind::kLength:
      return "length is not a number";
  }
  return {};
}

std::string ProblemLines(const std::string& file, const inspect::Template& parsed) {
  std::string lines;
  for (const inspect::TemplateProblem& problem : parsed.problems)
    lines += file + ':' + std::to_string(problem.line) + ": " + Wording(problem.kind) + ": '" +
             base::FromWindows1252(problem.text) + "'\n";
  return lines;
}

/// Prints the records in the requested format.
class Printer {
 public:
  Printer(const DecodeOptions& options, const inspect::Template& parsed, Out& out)
      : options_(options), parsed_(parsed), table_(parsed), out_(out) {}

  void Start() {
    if (options_.Format == AnswerFormat::kCsv) table_.AppendCsvHeader(out_.text());
  }

  void Print(std::string_view record) {
    switch (options_.Format) {
      case AnswerFormat::kText:
        PrintText(record);
        break;
      case AnswerFormat::kCsv:
        table_.AppendCsvRecord(record, options_.Motorola, out_.text());
        break;
      case AnswerFormat::kJson:
        PrintJson(record);
        break;
    }
    out_.FlushLarge();
  }

 private:
  // Records are separated by an empty line.
  void PrintText(std::string_view record) {
    if (!first_) out_.text() += '\n';
    first_ = false;
    const inspect::NumberForm form{options_.Motorola, decimal_sign_};
    for (const inspect::ResultLine& line : inspect::RecordLines(parsed_, form, record))
      out_.text().append(base::FromWindows1252(line.text)).append(1, '\n');
  }

  void PrintJson(std::string_view record) {
    nlohmann::ordered_json object = nlohmann::ordered_json::object();
    const auto values = table_.Values(record, options_.Motorola);
    for (std::size_t i = 0; i < values.size(); ++i) {
      const std::string& name = table_.names()[i];
      if (const auto* whole = std::get_if<std::int64_t>(&values[i])) object[name] = *whole;
      // NaN and infinities become null automatically.
      if (const auto* number = std::get_if<double>(&values[i])) object[name] = *number;
      if (const auto* text = std::get_if<std::string>(&values[i])) object[name] = *text;
    }
    out_.text().append(object.dump()).append(1, '\n');
  }

  const DecodeOptions& options_;
  const inspect::Template& parsed_;
  inspect::RecordTable table_;
  Out& out_;
  std::string decimal_sign_ = base::SystemDecimalSign();
  bool first_ = true;
};

// A template may be a pipe; what follows this size is not read.
int ReadTemplate(const std::string& name, std::string& bytes) {
  constexpr std::size_t kMaxTemplate = std::size_t{64} << 20;
  const auto take = [&bytes](std::string_view piece) { return bytes.append(piece).size() < kMaxTemplate; };
  return base::ReadPieces(name, take, [](int /*waited_ms*/) { return false; });
}

DecodeResult PrintRecords(const DecodeOptions& options, const inspect::Template& parsed, In& in, Out& out) {
  Printer printer(options, parsed, out);
  printer.Start();
  const std::size_t length = *parsed.RecordLength();
  std::uint64_t done = 0;
  bool more = true;
  while (more && (!options.Repeat || done < *options.Repeat)) {
    // A template evaluates at most this much of a record.
    const std::string_view record = in.Take(std::min(length, inspect::ByteBuffer{}.size()));
    if (in.error() != 0 || record.empty() || out.error() != 0) break;
    printer.Print(record);
    ++done;
    more = in.Drop(length - record.size());
  }
  const DecodeResult written = out.Result();
  if (in.error() != 0) return in.Problem();
  if (done == 0 && options.Repeat != 0u && written.Status == 0)
    return {2, "'" + options.File + "' has no bytes at offset " + std::to_string(options.Offset)};
  return written;
}

}  // namespace

DecodeResult Decode(const DecodeOptions& options, int out_descriptor, int error_descriptor) {
  std::string file;
  if (const int error = ReadTemplate(options.Template, file))
    return {2, "cannot read the template '" + options.Template + "': " + Reason(error)};
  const inspect::Template parsed = inspect::ParseTemplate(file);
  [[maybe_unused]] const int ignored = base::WriteAllWaiting(
      error_descriptor, ShownAt(isatty(error_descriptor) == 1, ProblemLines(options.Template, parsed)));
  if (parsed.Fields().empty()) return {2, "'" + options.Template + "' has no fields"};
  if (!parsed.RecordLength())
    return {2, "'" + options.Template + "' has no line BYTECOUNT= with a number above 0"};
  Out out(out_descriptor);
  In in(options.File, out);
  if (in.error() == 0 && !in.Skip(options.Offset) && in.error() == 0)
    return {2, "'" + options.File + "' has no bytes at offset " + std::to_string(options.Offset)};
  if (in.error() != 0) return in.Problem();
  return PrintRecords(options, parsed, in, out);
}

DecodeResult Dump(const std::string& file, int out_descriptor) {
  Out out(out_descriptor);
  In in(file, out);
  std::uint64_t offset = 0;
  while (in.error() == 0 && out.error() == 0) {
    const std::string_view bytes = in.Take(kLine);
    if (bytes.empty()) break;
    inspect::AppendDumpLine(offset, bytes, out.text());
    out.text() += '\n';
    out.FlushLarge();
    offset += bytes.size();
  }
  const DecodeResult written = out.Result();
  return in.error() != 0 ? in.Problem() : written;
}

}  // namespace kolvane::headless
