#include "help/chm_headers.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "help/little_endian.h"

namespace kolvane::help {
namespace {

// The file's header.
constexpr std::size_t kHeaderSize = 0x60;
constexpr std::size_t kSecondIdentifier = 0x28;
constexpr std::size_t kDirectoryPlace = 0x48;
constexpr char kSecondIdentifierStart = '\x11';

// The directory's header, from its start.
constexpr std::string_view kDirectorySignature = "ITSP";
constexpr std::size_t kFirstChunk = 0x20;
constexpr std::size_t kLastChunk = 0x24;
constexpr std::size_t kChunkCount = 0x2C;

void SetNumber(std::string& bytes, std::size_t place, std::uint32_t number) {
  for (std::size_t i = 0; i < 4; ++i) bytes[place + i] = static_cast<char>(number >> 8 * i & 0xFF);
}

}  // namespace

void MendHeaders(std::string& bytes) {
  if (bytes.size() < kHeaderSize) return;
  // The two identifiers of the format differ in their first byte; the compiler writes the first one twice.
  bytes[kSecondIdentifier] = kSecondIdentifierStart;
  // It also names the last chunk of a larger directory as its first. Chunks of the index, which would be
  // passed over, may lie between those of the list.
  const std::size_t directory = NumberAt(bytes, kDirectoryPlace);
  if (directory > bytes.size() || bytes.size() - directory < kChunkCount + 4) return;
  if (bytes.compare(directory, kDirectorySignature.size(), kDirectorySignature) != 0) return;
  const std::uint32_t chunks = NumberAt(bytes, directory + kChunkCount);
  SetNumber(bytes, directory + kFirstChunk, 0);
  SetNumber(bytes, directory + kLastChunk, chunks == 0 ? 0 : chunks - 1);
}

}  // namespace kolvane::help
