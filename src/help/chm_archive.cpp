#include "help/chm_archive.h"

#include <mspack.h>

#include <algorithm>
#include <utility>

#include "base/folding.h"
#include "help/chm_headers.h"
#include "help/chm_memory.h"

namespace kolvane::help {
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
    MendHeaders(memory.input);
    chm = mspack_create_chm_decompressor(&memory.system);
    header = chm == nullptr ? nullptr : chm->open(chm, "help");
    return header != nullptr && ListObjects();
  }

  bool ListObjects() {
    for (mschmd_file* file = header->files; file != nullptr; file = file->next) {
      if (objects.size() == kMaxObjects) return false;
      if (file->filename == nullptr || *file->filename != '/' || file->offset < 0 || file->length < 0)
        continue;
      objects.push_back({file->filename, static_cast<std::uint64_t>(file->offset),
                         static_cast<std::uint64_t>(file->length)});
      files.push_back(file);
    }
    return true;
  }

  mschmd_file* Find(std::string_view path) const {
    const auto found = std::ranges::find_if(
        objects, [path](const Object& object) { return base::EqualsNoCase(object.path, path); });
    return found == objects.end() ? nullptr : files[static_cast<std::size_t>(found - objects.begin())];
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
  std::vector<Object> objects;
  std::vector<mschmd_file*> files;  ///< one for each of `objects`
};

ChmArchive::ChmArchive(std::unique_ptr<Decoder> decoder) : decoder_(std::move(decoder)) {}
ChmArchive::~ChmArchive() = default;

std::unique_ptr<ChmArchive> ChmArchive::Open(std::string bytes) {
  auto decoder = std::make_unique<Decoder>();
  if (!decoder->Open(std::move(bytes))) return nullptr;
  return std::unique_ptr<ChmArchive>(new ChmArchive(std::move(decoder)));
}

const std::vector<ChmArchive::Object>& ChmArchive::objects() const { return decoder_->objects; }

std::string ChmArchive::Read(std::string_view path) const {
  mschmd_file* const file = decoder_->Find(path);
  return file == nullptr ? std::string() : decoder_->Extract(file);
}

bool ChmArchive::Has(std::string_view path) const { return decoder_->Find(path) != nullptr; }

}  // namespace kolvane::help
