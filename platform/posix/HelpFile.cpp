#include "platform/HelpFile.h"

#include <chm_lib.h>

#include "platform/FileOperations.h"

namespace pellorin {
namespace {

constexpr LONGUINT64 kLargestPart = 16 << 20;  // bytes; a damaged file may claim any size

struct CloseChm {
  void operator()(chmFile* file) const { chm_close(file); }
};

class ChmFile : public HelpFile {
 public:
  explicit ChmFile(chmFile* file) : file_(file) {}

  std::optional<std::string> Read(const std::string& name) const override {
    const std::string path = "/" + name;
    chmUnitInfo part;
    if (path.size() > CHM_MAX_PATHLEN ||
        chm_resolve_object(file_.get(), path.c_str(), &part) != CHM_RESOLVE_SUCCESS ||
        part.length > kLargestPart)
      return std::nullopt;
    std::string bytes(static_cast<std::size_t>(part.length), '\0');
    const LONGINT64 wanted = static_cast<LONGINT64>(bytes.size());
    if (chm_retrieve_object(file_.get(), &part, reinterpret_cast<unsigned char*>(bytes.data()), 0, wanted) !=
        wanted)
      return std::nullopt;
    return bytes;
  }

  std::vector<std::string> Names() const override {
    std::vector<std::string> names;
    const auto append = [](chmFile* /*file*/, chmUnitInfo* part, void* list) -> int {
      static_cast<std::vector<std::string>*>(list)->push_back(part->path + 1);
      return CHM_ENUMERATOR_CONTINUE;
    };
    chm_enumerate(file_.get(), CHM_ENUMERATE_NORMAL | CHM_ENUMERATE_FILES, append, &names);
    return names;
  }

 private:
  std::unique_ptr<chmFile, CloseChm> file_;
};

}  // namespace

std::unique_ptr<HelpFile> OpenHelpFile(const std::string& path) {
  // libchm would wait for the writer of a pipe.
  if (SystemFiles().Status(path).kind != FileKind::File) return nullptr;
  chmFile* file = chm_open(path.c_str());
  return file == nullptr ? nullptr : std::make_unique<ChmFile>(file);
}

}  // namespace pellorin
