#include "help/chm_archive.h"

#include <mspack.h>

#include <unordered_map>
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
      if (paths.size() == kMaxObjects) return false;
      if (file->filename == nullptr || *file->filename != '/' || file->offset < 0 || file->length < 0)
        continue;
      paths.emplace_back(file->filename);
      // Of two whose paths differ in letter case alone the first one is meant.
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
  std::unordered_map<std::string, mschmd_file*> files;  ///< by their paths in capitals
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
