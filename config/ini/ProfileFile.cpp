#include "config/ini/ProfileFile.h"

#include <algorithm>
#include <utility>

#include "base/AnsiText.h"
#include "base/Text.h"
#include "base/TextCase.h"
#include "config/ini/ProfileLines.h"
#include "config/ini/SectionBody.h"

namespace pellorin {
namespace {

// Equal for names that differ in letter case only.
std::string FoldedName(std::string_view name) {
  return IsAscii(name) ? FoldCase(name) : FoldCase(AnsiToUtf8(name));
}

// The bytes that texts may fill: the last two are reserved for the closing NULs.
std::size_t UsableSize(std::size_t bufferSize) {
  return bufferSize < 2 ? 0 : bufferSize - 2;
}

// Where this bracket's line begins, if only blanks precede the bracket: then the line is a header. Else npos.
std::size_t BeginOfHeader(std::string_view all, std::size_t first, std::size_t bracket) {
  std::size_t begin = bracket;
  while (begin > first && (all[begin - 1] == ' ' || all[begin - 1] == '\t')) --begin;
  const bool atLineBegin = begin == first || all[begin - 1] == '\n' || all[begin - 1] == '\r';
  return atLineBegin ? begin : std::string_view::npos;
}

}  // namespace

std::vector<std::string_view> ProfileText::Pieces() const& {
  std::vector<std::string_view> pieces;
  for (std::string_view rest = buffer; !rest.empty();) {
    const std::size_t length = std::min(rest.find('\0'), rest.size());
    if (length > 0) pieces.push_back(rest.substr(0, length));
    rest.remove_prefix(std::min(length + 1, rest.size()));
  }
  return pieces;
}

ProfileFile::ProfileFile(std::string bytes) : bytes_(std::move(bytes)) {
  if (const std::size_t end = EndOfProfileText(bytes_); end < bytes_.size()) {
    endMark_ = bytes_.substr(end);
    bytes_.resize(end);
  }
  const std::string_view all = bytes_;
  firstLine_ = all.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0;
  for (std::size_t bracket = all.find('[', firstLine_); bracket != std::string_view::npos;) {
    const std::size_t begin = BeginOfHeader(all, firstLine_, bracket);
    std::size_t next = bracket + 1;
    if (begin != std::string_view::npos) {
      next = begin;
      const ProfileLine line = TakeProfileLine(all, next);
      AddSection(line.text, begin, next);
    }
    bracket = all.find('[', next);
  }
  if (!sections_.empty()) sections_.back().end = all.size();
}

void ProfileFile::AddSection(std::string_view header, std::size_t begin, std::size_t body) {
  std::string_view name = header.substr(header.find('[') + 1);
  name = WithoutOuterBlanks(name.substr(0, name.find(']')));
  if (!sections_.empty()) sections_.back().end = begin;
  sections_.push_back({std::string(name), begin, body, body});
  firstOfName_.try_emplace(FoldedName(name), sections_.size() - 1);
}

const ProfileFile::Span* ProfileFile::Find(std::string_view section) const {
  const auto found = firstOfName_.find(FoldedName(section));
  return found == firstOfName_.end() ? nullptr : &sections_[found->second];
}

std::string_view ProfileFile::BodyOf(const Span& span) const {
  return std::string_view(bytes_).substr(span.body, span.end - span.body);
}

ProfileText ProfileFile::SectionNames(std::size_t bufferSize) const {
  const std::size_t room = UsableSize(bufferSize);
  ProfileText names;
  for (const Span& section : sections_) (names.buffer += section.name) += '\0';
  if (names.buffer.size() > room) names.buffer.resize(room);
  return names;
}

bool ProfileFile::ForEachLine(std::string_view section, std::size_t bufferSize,
                              const std::function<void(std::string_view)>& take) const {
  const Span* span = Find(section);
  if (span == nullptr) return false;
  const std::string_view body = BodyOf(*span);
  std::size_t room = UsableSize(bufferSize);
  std::string stripped;
  for (std::size_t position = 0; position < body.size();) {
    const std::string_view line = WithoutOuterBlanks(TakeProfileLine(body, position).text);
    if (HoldsNoEntry(line)) continue;
    if (room == 0) return true;
    const std::string_view entry = EntryAsRead(line, stripped);
    take(entry.substr(0, room));
    if (entry.size() > room) return true;
    room -= std::min(room, entry.size() + 1);
  }
  return false;
}

bool ProfileFile::HasSection(std::string_view section) const {
  return Find(section) != nullptr;
}

std::string ProfileFile::WithSection(std::string_view section, const std::vector<std::string>& lines) const {
  const Span* span = Find(section);
  if (span == nullptr) return WithAppendedSection(section, lines);
  std::string out = bytes_.substr(0, span->body);
  AppendBody(out, BodyOf(*span), lines);
  return out.append(bytes_, span->end) += endMark_;
}

std::string ProfileFile::WithAppendedSection(std::string_view section,
                                             const std::vector<std::string>& lines) const {
  std::string out = bytes_;
  if (out.size() > firstLine_ && FinalLineEnd(out).empty()) out += kUsualLineEnd;
  ((out += '[') += section) += ']';
  out += kUsualLineEnd;
  for (const std::string& line : lines) (out += line) += kUsualLineEnd;
  return out += endMark_;
}

std::string ProfileFile::WithoutSection(std::string_view section) const {
  const Span* span = Find(section);
  if (span == nullptr) return bytes_ + endMark_;
  std::string out = bytes_.substr(0, span->begin);
  AppendBodyWithoutEntries(out, BodyOf(*span));
  return out.append(bytes_, span->end) += endMark_;
}

}  // namespace pellorin
