#include "terminal/received_text.h"

#include "base/codepage.h"
#include "base/folding.h"
#include "terminal/terminators.h"

namespace kolvane::terminal {
namespace {

std::string_view WithoutTerminator(std::string_view text, std::string_view terminator) {
  if (text.ends_with(kCrLf)) return text.substr(0, text.size() - kCrLf.size());
  // A CR LF is received up to its LF, so a device may have sent no CR, and a host taken off only the LF.
  if (terminator == kCrLf && !text.empty() && kCrLf.find(text.back()) != std::string_view::npos)
    return text.substr(0, text.size() - 1);
  return text.ends_with(terminator) ? text.substr(0, text.size() - terminator.size()) : text;
}

}  // namespace

void TrimAnswer(std::string& answer, std::string_view receive_terminator) {
  std::string_view kept = base::TrimBlanks(answer);
  if (kept.ends_with('\0')) kept.remove_suffix(1);
  kept = WithoutTerminator(kept, receive_terminator);
  const auto start = static_cast<std::size_t>(kept.data() - answer.data());
  answer.resize(start + kept.size());
  answer.erase(0, start);
}

void AppendDisplayForm(std::string_view bytes, bool binary, std::string& text) {
  if (!binary) {
    text += base::FromWindows1252(bytes);
    return;
  }
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  text.reserve(text.size() + 4 * bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const char form[] = {'<', kDigits[byte >> 4], kDigits[byte & 15], '>'};
    text.append(form, sizeof form);
  }
}

}  // namespace kolvane::terminal
