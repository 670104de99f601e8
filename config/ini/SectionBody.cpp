#include "config/ini/SectionBody.h"

#include <cstddef>

#include "config/ini/ProfileLines.h"

namespace pellorin {
namespace {

bool ReadsAs(std::string_view line, const std::string& wanted) {
  std::string entry;
  AppendEntry(entry, line);
  return entry == wanted;
}

// Builds the body line by line.
class Body {
 public:
  Body(std::string& out, const std::vector<std::string>& entries)
      : out_(out), entries_(entries), afterLastEntry_(out.size()) {}

  void Append(const ProfileLine& old) {
    if (KindOfProfileLine(old.text) == ProfileLineKind::Entry) {
      if (next_ == entries_.size()) return;
      const std::string& wanted = entries_[next_++];
      out_ += ReadsAs(old.text, wanted) ? old.text : std::string_view(wanted);
      out_ += old.lineEnd;
      afterLastEntry_ = out_.size();
    } else {
      (out_ += old.text) += old.lineEnd;
    }
  }

  void InsertFurtherEntries() {
    if (next_ == entries_.size()) return;
    const std::string_view existing = FinalLineEnd(std::string_view(out_).substr(0, afterLastEntry_));
    const std::string lineEnd(existing.empty() ? kUsualLineEnd : existing);
    std::string further(existing.empty() ? kUsualLineEnd : std::string_view{});
    while (next_ < entries_.size()) (further += entries_[next_++]) += lineEnd;
    out_.insert(afterLastEntry_, further);
  }

 private:
  std::string& out_;
  const std::vector<std::string>& entries_;
  std::size_t afterLastEntry_;  // in out_
  std::size_t next_ = 0;
};

}  // namespace

void AppendBody(std::string& out, std::string_view body, const std::vector<std::string>& entries) {
  Body rebuilt(out, entries);
  for (std::size_t position = 0; position < body.size();) rebuilt.Append(TakeProfileLine(body, position));
  rebuilt.InsertFurtherEntries();
}

void AppendBodyWithoutEntries(std::string& out, std::string_view body) {
  for (std::size_t position = 0; position < body.size();) {
    const ProfileLine line = TakeProfileLine(body, position);
    if (KindOfProfileLine(line.text) == ProfileLineKind::Other) (out += line.text) += line.lineEnd;
  }
}

}  // namespace pellorin
