#include "help/chm_memory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>

namespace kolvane::help {
namespace {

// More than any table of a help file needs; a damaged size must not take the machine's memory.
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
  // The room was reserved before the decoder was called: no exception goes through its C code.
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

}  // namespace kolvane::help
