#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "pane/pane_text.h"

namespace kolvane::window {

/// Called in the course of long work with how much of the whole is done; false ends the work.
using ProgressStep = std::function<bool(std::size_t done, std::size_t whole)>;

/// A progress display that comes up when work takes its time, keeps the windows alive meanwhile and lets the
/// user cancel.
class Progress {
 public:
  static constexpr int kAppearsAfterMs = 400;

  Progress(QWidget* parent, const QString& label, int appears_after_ms = kAppearsAfterMs);

  /// Cheap enough for every line of a text. False once the user has cancelled.
  bool Advance(std::size_t done, std::size_t whole);

 private:
  QProgressDialog dialog_;
  QElapsedTimer since_shown_;
};

/// Makes UTF-8 of a text file that comes in pieces: Windows-1252, or UTF-8 where the file begins with its
/// mark, which is stripped. No piece that comes out ends within a character or within a CR LF.
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

/// Reads the text file `name` into `text`, which is empty, piece by piece. Returns 0, an errno, or ECANCELED
/// where `step` ended it; `text` holds what has been read until then. Only regular files are read.
[[nodiscard]] int ReadTextFile(const std::string& name, pane::PaneText& text, const ProgressStep& step);

}  // namespace kolvane::window
