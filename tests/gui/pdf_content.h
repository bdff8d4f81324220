#pragma once

#include <QByteArray>
#include <string>

namespace kolvane::gui {

/// The drawing operators of the first page of a PDF file that Qt has written; numbers come before their
/// operator.
inline QByteArray PdfContent(const std::string& pdf) {
  const std::size_t start = pdf.find("stream\n") + 7;
  const std::string packed = pdf.substr(start, pdf.find("endstream", start) - start);
  // Before the packed bytes Qt expects their unpacked size, from which it starts.
  return qUncompress(QByteArray("\0\1\0\0", 4) + QByteArray::fromStdString(packed));
}

}  // namespace kolvane::gui
