#include "help/rtf_reader.h"

#include <algorithm>
#include <utility>

#include "base/encoding.h"
#include "help/rtf_tokens.h"

namespace kolvane::help {

std::string RtfDocument::PlainText() const {
  std::string text;
  for (const RtfParagraph& paragraph : paragraphs) {
    for (const RtfRun& run : paragraph.runs) text += run.text;
    text += '\n';
  }
  return text;
}

std::string_view FaultText(RtfFault fault) {
  switch (fault) {
    case RtfFault::kNone:
      break;
    case RtfFault::kNotRichText:
      return "Die Datei ist keine RTF-Datei";
    case RtfFault::kTruncated:
      return "Die Datei ist unvollständig";
    case RtfFault::kBadByte:
      return "Die Datei enthält ein beschädigtes Zeichen";
    case RtfFault::kTextAfterEnd:
      return "Hinter dem Ende des Textes steht noch etwas";
    case RtfFault::kTooDeep:
      return "Die Gruppen der Datei sind zu tief geschachtelt";
    case RtfFault::kTooLarge:
      return "Die Datei enthält zu viele Absätze";
  }
  return {};
}

namespace {

enum class Destination { kText, kColors, kSkipped };

// What an opening brace saves and its closing brace restores.
struct Group {
  Destination destination = Destination::kText;
  RtfFormat format = {};
  std::size_t fallback_length = 1;
};

std::optional<Destination> DestinationOf(RtfMeaning meaning) {
  switch (meaning) {
    case RtfMeaning::kSkip:
      return Destination::kSkipped;
    case RtfMeaning::kColorTable:
      return Destination::kColors;
    default:
      return std::nullopt;
  }
}

class RtfReader {
 public:
  explicit RtfReader(std::string_view bytes) : tokens_(bytes) {}

  RtfResult Run();

 private:
  using Kind = RtfToken::Kind;

  Group& Current() { return groups_.back(); }
  bool StartsWithRtf();
  void Handle(const RtfToken& token);
  void Open();
  void Close();
  void Stop(RtfFault fault);
  void Note(RtfFault fault);
  bool SkipFallbackCharacter();
  void HandleText(std::string_view bytes);
  void HandleByte(const RtfToken& token);
  void HandleWord(const RtfWord& word, const RtfToken& token);
  void Apply(RtfMeaning meaning, std::int32_t parameter, bool on);
  void ApplyToText(RtfMeaning meaning, std::int32_t parameter, bool on);
  void AddUnicode(std::int32_t number);
  void AddText(std::string_view text);
  void Deliver(std::string_view text);
  void AddToRun(std::string_view text);
  void FinishParagraph();
  bool CountPiece();

  RtfTokens tokens_;
  RtfResult result_;
  std::vector<Group> groups_;
  RtfParagraph paragraph_;
  RtfColorTable colors_;
  RtfUnicode unicode_;
  std::size_t pieces_ = 0;
  std::size_t fallback_left_ = 0;  // characters after a \u that stand for the same one
  bool stopped_ = false;
};

RtfResult RtfReader::Run() {
  if (!StartsWithRtf()) return {.document = {}, .fault = RtfFault::kNotRichText};
  while (!stopped_) Handle(tokens_.Next());
  AddText({});
  if (!paragraph_.runs.empty()) result_.document.paragraphs.push_back(std::move(paragraph_));
  return std::move(result_);
}

bool RtfReader::StartsWithRtf() {
  if (tokens_.Next().kind != Kind::kOpen) return false;
  groups_.emplace_back();
  const RtfToken word = tokens_.Next();
  return word.kind == Kind::kWord && word.text == "rtf";
}

void RtfReader::Handle(const RtfToken& token) {
  switch (token.kind) {
    case Kind::kOpen:
      return Open();
    case Kind::kClose:
      return Close();
    case Kind::kText:
      return HandleText(token.text);
    case Kind::kWord:
      return HandleWord(FindRtfWord(token.text), token);
    case Kind::kSymbol:
      return HandleWord(FindRtfSymbol(token.text), token);
    case Kind::kByte:
      return HandleByte(token);
    case Kind::kBadByte:
      return Note(RtfFault::kBadByte);
    case Kind::kBinary:
      SkipFallbackCharacter();
      return;
    case Kind::kEnd:
    case Kind::kTruncated:
      return Stop(RtfFault::kTruncated);
  }
}

void RtfReader::Open() {
  fallback_left_ = 0;
  if (groups_.size() == kRtfMaxDepth) return Stop(RtfFault::kTooDeep);
  groups_.push_back(groups_.back());
}

// Some writers leave spaces, line ends and NUL bytes after the last brace.
void RtfReader::Close() {
  fallback_left_ = 0;
  groups_.pop_back();
  if (!groups_.empty()) return;
  groups_.emplace_back();
  RtfToken rest = tokens_.Next();
  if (rest.kind == Kind::kText && rest.text.find_first_not_of(" \t") == std::string_view::npos)
    rest = tokens_.Next();
  Stop(rest.kind == Kind::kEnd ? RtfFault::kNone : RtfFault::kTextAfterEnd);
}

void RtfReader::Stop(RtfFault fault) {
  Note(fault);
  stopped_ = true;
}

void RtfReader::Note(RtfFault fault) {
  if (result_.fault == RtfFault::kNone) result_.fault = fault;
}

bool RtfReader::SkipFallbackCharacter() {
  if (fallback_left_ == 0) return false;
  --fallback_left_;
  return true;
}

void RtfReader::HandleText(std::string_view bytes) {
  const std::size_t passed = std::min(fallback_left_, bytes.size());
  fallback_left_ -= passed;
  bytes.remove_prefix(passed);
  if (!bytes.empty()) AddText(base::FromWindows1252(bytes));
}

void RtfReader::HandleByte(const RtfToken& token) {
  const char byte = static_cast<char>(token.parameter.value_or(0));
  const bool control = static_cast<unsigned char>(byte) < 0x20 && byte != '\t';
  if (!SkipFallbackCharacter() && !control) AddText(base::FromWindows1252({&byte, 1}));
}

void RtfReader::HandleWord(const RtfWord& word, const RtfToken& token) {
  if (SkipFallbackCharacter() || Current().destination == Destination::kSkipped) return;
  if (const auto destination = DestinationOf(word.meaning)) {
    Current().destination = *destination;
    return;
  }
  const std::int32_t parameter = token.parameter.value_or(0);
  switch (word.meaning) {
    case RtfMeaning::kInsert:
      return AddText(word.text);
    case RtfMeaning::kUnicode:
      return AddUnicode(parameter);
    case RtfMeaning::kFallbackLength:
      Current().fallback_length = static_cast<std::size_t>(std::max(parameter, 0));
      return;
    default:
      return Apply(word.meaning, parameter, !token.parameter || parameter != 0);
  }
}

void RtfReader::Apply(RtfMeaning meaning, std::int32_t parameter, bool on) {
  switch (Current().destination) {
    case Destination::kText:
      return ApplyToText(meaning, parameter, on);
    case Destination::kColors:
      return colors_.Apply(meaning, parameter);
    case Destination::kSkipped:
      return;
  }
}

void RtfReader::ApplyToText(RtfMeaning meaning, std::int32_t parameter, bool on) {
  RtfFormat& format = Current().format;
  switch (meaning) {
    case RtfMeaning::kParagraph:
      return FinishParagraph();
    case RtfMeaning::kPlain:
      format = RtfFormat();
      return;
    case RtfMeaning::kBold:
      format.bold = on;
      return;
    case RtfMeaning::kColor:
      format.color = colors_.At(parameter);
      return;
    default:
      return;
  }
}

void RtfReader::AddUnicode(std::int32_t number) {
  Deliver(unicode_.Add(number));
  fallback_left_ = Current().fallback_length;
}

void RtfReader::AddText(std::string_view text) {
  Deliver(unicode_.Flush());
  Deliver(text);
}

void RtfReader::Deliver(std::string_view text) {
  if (text.empty()) return;
  switch (Current().destination) {
    case Destination::kText:
      return AddToRun(text);
    case Destination::kColors:
      return colors_.AddText(text);
    case Destination::kSkipped:
      return;
  }
}

void RtfReader::AddToRun(std::string_view text) {
  const RtfFormat& format = Current().format;
  if (paragraph_.runs.empty() || paragraph_.runs.back().format != format) {
    if (!CountPiece()) return;
    paragraph_.runs.push_back({.format = format, .text = {}});
  }
  paragraph_.runs.back().text += text;
}

void RtfReader::FinishParagraph() {
  AddText({});
  if (CountPiece()) result_.document.paragraphs.push_back(std::exchange(paragraph_, {}));
}

// Counts one more run or paragraph; returns false if the limit is reached.
bool RtfReader::CountPiece() {
  if (pieces_ == kRtfMaxPieces) {
    Stop(RtfFault::kTooLarge);
    return false;
  }
  ++pieces_;
  return true;
}

}  // namespace

RtfResult ReadRtf(std::string_view bytes) { return RtfReader(bytes).Run(); }

}  // namespace kolvane::help
