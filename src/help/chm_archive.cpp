#include "help/chm_archive.h"

#include <mspack.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>

#include "base/text.h"

namespace kolvane::help {
namespace {

// The file's header.
constexpr std::size_t kHeaderSize = 0x60;
constexpr std::size_t kSecondIdentifier = 0x28;
constexpr std::size_t kDirectoryOffset = 0x48;
constexpr char kSecondIdentifierStart = '\x11';

// The directory's header, from its start.
constexpr std::string_view kDirectorySignature = "ITSP";
constexpr std::size_t kFirstChunk = 0x20;
constexpr std::size_t kLastChunk = 0x24;
constexpr std::size_t kChunkCount = 0x2C;

void SetNumber(std::string& bytes, std::size_t offset, std::uint32_t number) {
  for (std::size_t i = 0; i < 4; ++i) bytes[offset + i] = static_cast<char>(number >> 8 * i & 0xFF);
}

}  // namespace

void RepairHeaders(std::string& bytes) {
  if (bytes.size() < kHeaderSize) return;
  // The two identifiers of the format differ in their first byte; the compiler writes the first one twice.
  bytes[kSecondIdentifier] = kSecondIdentifierStart;
  // It also gives the last chunk of a larger directory as the first one. All chunks are named instead; those
  // of the index among them are skipped.
  const std::size_t directory = NumberAt(bytes, kDirectoryOffset);
  if (directory > bytes.size() || bytes.size() - directory < kChunkCount + 4) return;
  if (bytes.compare(directory, kDirectorySignature.size(), kDirectorySignature) != 0) return;
  const std::uint32_t chunks = NumberAt(bytes, directory + kChunkCount);
  SetNumber(bytes, directory + kFirstChunk, 0);
  SetNumber(bytes, directory + kLastChunk, chunks == 0 ? 0 : chunks - 1);
}

namespace {

// More than any table of a help file needs, so that a damaged size cannot exhaust the memory.
constexpr std::size_t kMaxAllocation = std::size_t{64} << 20;

struct OpenFile {
  ChmMemory* memory;
  bool writing;
  off_t position = 0;
};

OpenFile& File(mspack_file* file) { return *reinterpret_cast<OpenFile*>(file); }

mspack_file* Open(mspack_system* self, const char* name, int mode) {
  auto* memory = reinterpret_cast<ChmMemory*>(self);
  const bool writing = mode == MSPACK_SYS_OPEN_WRITE;
  if (writing != (*name == '\0')) return nullptr;
  return reinterpret_cast<mspack_file*>(new (std::nothrow) OpenFile{memory, writing});
}

void Close(mspack_file* file) { delete &File(file); }

int Read(mspack_file* handle, void* buffer, int bytes) {
  OpenFile& file = File(handle);
  const std::string& input = file.memory->input;
  if (file.writing || bytes < 0) return -1;
  const auto position = static_cast<std::size_t>(file.position);
  if (position >= input.size()) return 0;
  const std::size_t count = std::min(static_cast<std::size_t>(bytes), input.size() - position);
  std::memcpy(buffer, input.data() + position, count);
  file.position += static_cast<off_t>(count);
  return static_cast<int>(count);
}

int Write(mspack_file* handle, void* buffer, int bytes) {
  OpenFile& file = File(handle);
  if (!file.writing || bytes < 0) return -1;
  std::string& output = file.memory->output;
  const auto count = static_cast<std::size_t>(bytes);
  if (count > file.memory->output_limit - output.size()) return -1;
  // The capacity was reserved before the decoder was called, so no exception passes through its C code.
  output.append(static_cast<const char*>(buffer), count);
  return bytes;
}

int Seek(mspack_file* handle, off_t offset, int mode) {
  OpenFile& file = File(handle);
  const auto size = static_cast<off_t>(file.memory->input.size());
  const off_t base = mode == MSPACK_SYS_SEEK_START ? 0 : mode == MSPACK_SYS_SEEK_CUR ? file.position : size;
  if (file.writing || offset < -base || offset > size - base) return -1;
  file.position = base + offset;
  return 0;
}

off_t Tell(mspack_file* file) { return File(file).position; }

void Message(mspack_file*, const char*, ...) {}

void* Allocate(mspack_system*, std::size_t bytes) {
  return bytes > kMaxAllocation ? nullptr : std::calloc(std::max<std::size_t>(bytes, 1), 1);
}

void Free(void* block) { std::free(block); }

void Copy(void* from, void* to, std::size_t bytes) { std::memmove(to, from, bytes); }

}  // namespace

ChmMemory::ChmMemory()
    : system{Open, Close, Read, Write, Seek, Tell, Message, Allocate, Free, Copy, nullptr} {}

static_assert(std::is_standard_layout_v<ChmMemory>);

namespace {

constexpr char kSignature[] = "ITSF";
constexpr std::size_t kMaxObjects = 20'000;

}  // namespace

struct ChmArchive::Decoder {
  ~Decoder() {
    if (header != nullptr) chm->close(chm, header);
    if (chm != nullptr) mspack_destroy_chm_decompressor(chm);
  }

  bool Open(std::string bytes) {
    int ready = MSPACK_ERR_OK;
    MSPACK_SYS_SELFTEST(ready);
    if (ready != MSPACK_ERR_OK || !bytes.starts_with(kSignature)) return false;
    memory.input = std::move(bytes);
    RepairHeaders(memory.input);
    chm = mspack_create_chm_decompressor(&memory.system);
    header = chm == nullptr ? nullptr : chm->open(chm, "help");
    return header != nullptr && ListObjects();
  }

  bool ListObjects() {
    for (mschmd_file* file = header->files; file != nullptr; file = file->next) {
      if (paths.size() == kMaxObjects) return false;
      if (file->filename == nullptr || *file->filename != '/' || file->offset < 0 || file->length < 0)
        continue;
      paths.emplace_back(file->filename);
      // Of two paths that differ only in case the first one counts.
      files.emplace(base::UpperCase(paths.back()), file);
    }
    return true;
  }

  mschmd_file* Find(std::string_view path) const {
    const auto found = files.find(base::UpperCase(path));
    return found == files.end() ? nullptr : found->second;
  }

  std::string Extract(mschmd_file* file) {
    const auto size = static_cast<std::size_t>(file->length);
    if (size == 0 || size > kMaxObject) return {};
    memory.output.clear();
    memory.output.reserve(size);
    memory.output_limit = size;
    const int result = chm->extract(chm, file, "");
    if (result != MSPACK_ERR_OK || memory.output.size() != size) return {};
    return std::exchange(memory.output, {});
  }

  ChmMemory memory;
  mschm_decompressor* chm = nullptr;
  mschmd_header* header = nullptr;
  std::vector<std::string> paths;
  std::unordered_map<std::string, mschmd_file*> files;  ///< by path in upper case
};

ChmArchive::ChmArchive(std::unique_ptr<Decoder> decoder) : decoder_(std::move(decoder)) {}
ChmArchive::~ChmArchive() = default;

std::unique_ptr<ChmArchive> ChmArchive::Open(std::string bytes) {
  auto decoder = std::make_unique<Decoder>();
  if (!decoder->Open(std::move(bytes))) return nullptr;
  return std::unique_ptr<ChmArchive>(new ChmArchive(std::move(decoder)));
}

const std::vector<std::string>& ChmArchive::paths() const { return decoder_->paths; }

std::string ChmArchive::Read(std::string_view path) const {
  mschmd_file* const file = decoder_->Find(path);
  return file == nullptr ? std::string() : decoder_->Extract(file);
}

bool ChmArchive::Has(std::string_view path) const { return decoder_->Find(path) != nullptr; }

}  // namespace kolvane::help
