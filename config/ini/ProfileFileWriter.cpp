// The two ways in which a profile file is changed.
#include "config/ini/ProfileFile.h"
#include "config/ini/ProfileLines.h"

namespace pellorin {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

std::string_view FinalLineEnd(std::string_view bytes) {
  if (bytes.ends_with(kLineEnd)) return bytes.substr(bytes.size() - kLineEnd.size());
  if (bytes.ends_with('\n') || bytes.ends_with('\r')) return bytes.substr(bytes.size() - 1);
  return {};
}

bool ReadsAs(std::string_view line, const std::string& wanted) {
  std::string entry;
  AppendEntry(entry, line);
  return entry == wanted;
}

// Rebuilds a section behind its header: the k-th old entry line becomes the k-th new one, what is no entry
// stays.
class SectionBody {
 public:
  SectionBody(std::string& out, const std::vector<std::string>& lines)
      : out_(out), lines_(lines), behindLastEntry_(out.size()) {}

  void TakeOver(const ProfileLine& old) {
    if (KindOfProfileLine(old.text) == ProfileLineKind::Entry) {
      if (next_ == lines_.size()) return;
      const std::string& wanted = lines_[next_++];
      out_ += ReadsAs(old.text, wanted) ? old.text : std::string_view(wanted);
      out_ += old.lineEnd;
      behindLastEntry_ = out_.size();
    } else {
      (out_ += old.text) += old.lineEnd;
    }
  }

  void AddFurtherLines() {
    if (next_ == lines_.size()) return;
    const std::string_view existing = FinalLineEnd(std::string_view(out_).substr(0, behindLastEntry_));
    const std::string lineEnd(existing.empty() ? kLineEnd : existing);
    std::string further(existing.empty() ? kLineEnd : std::string_view{});
    while (next_ < lines_.size()) (further += lines_[next_++]) += lineEnd;
    out_.insert(behindLastEntry_, further);
  }

 private:
  std::string& out_;
  const std::vector<std::string>& lines_;
  std::size_t behindLastEntry_;
  std::size_t next_ = 0;
};

}  // namespace

std::string ProfileFile::WithSection(std::string_view section, const std::vector<std::string>& lines) const {
  const Span* span = Find(section);
  if (span == nullptr) return WithAppendedSection(section, lines);
  const std::string_view all = bytes_;
  std::string out(all.substr(0, span->body));
  SectionBody body(out, lines);
  for (std::size_t position = span->body; position < span->end;) {
    body.TakeOver(TakeProfileLine(all, position));
  }
  body.AddFurtherLines();
  return (out += all.substr(span->end)) += endMark_;
}

std::string ProfileFile::WithAppendedSection(std::string_view section,
                                             const std::vector<std::string>& lines) const {
  std::string out = bytes_;
  if (out.size() > firstLine_ && FinalLineEnd(out).empty()) out += kLineEnd;
  ((out += '[') += section) += ']';
  out += kLineEnd;
  for (const std::string& line : lines) (out += line) += kLineEnd;
  return out += endMark_;
}

std::string ProfileFile::WithoutSection(std::string_view section) const {
  const Span* span = Find(section);
  if (span == nullptr) return bytes_ + endMark_;
  const std::string_view all = bytes_;
  std::string out(all.substr(0, span->begin));
  for (std::size_t position = span->body; position < span->end;) {
    const ProfileLine line = TakeProfileLine(all, position);
    if (KindOfProfileLine(line.text) == ProfileLineKind::Other) (out += line.text) += line.lineEnd;
  }
  return (out += all.substr(span->end)) += endMark_;
}

}  // namespace pellorin
