#include "config/ini/ProfileFile.h"

#include <algorithm>
#include <utility>

#include "base/AnsiText.h"
#include "base/TextCase.h"
#include "config/ini/ProfileLines.h"

namespace pellorin {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// What compares equal for names that differ in letter case only.
std::string FoldedName(std::string_view name) {
  const bool ascii = std::all_of(name.begin(), name.end(),
                                 [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
  return ascii ? FoldCase(name) : FoldCase(AnsiToUtf8(name));
}

// What of a buffer the texts may take, each with a NUL behind it: two NULs end the buffer.
std::size_t RoomOf(std::size_t bufferSize) {
  return bufferSize < 2 ? 0 : bufferSize - 2;
}

// Where the line of this bracket begins when only blanks stand between: then it is a header.
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
  name = WithoutBlanks(name.substr(0, name.find(']')));
  if (!sections_.empty()) sections_.back().end = begin;
  sections_.push_back({std::string(name), begin, body, body});
  firstOfName_.try_emplace(FoldedName(name), sections_.size() - 1);
}

const ProfileFile::Span* ProfileFile::Find(std::string_view section) const {
  const auto found = firstOfName_.find(FoldedName(section));
  return found == firstOfName_.end() ? nullptr : &sections_[found->second];
}

ProfileText ProfileFile::SectionNames(std::size_t bufferSize) const {
  const std::size_t room = RoomOf(bufferSize);
  ProfileText names;
  for (const Span& section : sections_) (names.buffer += section.name) += '\0';
  names.cutOff = names.buffer.size() > room && names.buffer.size() - room > 1;
  if (names.buffer.size() > room) names.buffer.resize(room);
  return names;
}

bool ProfileFile::ForEachLine(std::string_view section, std::size_t bufferSize,
                              const std::function<void(std::string_view)>& take) const {
  const Span* span = Find(section);
  if (span == nullptr) return false;
  const std::string_view body = std::string_view(bytes_).substr(span->body, span->end - span->body);
  std::size_t room = RoomOf(bufferSize);
  std::string stripped;
  for (std::size_t position = 0; position < body.size();) {
    const std::string_view line = WithoutBlanks(TakeProfileLine(body, position).text);
    if (HoldsNoEntry(line)) continue;
    if (room == 0) return true;
    const std::string_view entry = EntryAsRead(line, stripped);
    take(entry.substr(0, room));
    if (entry.size() > room) return true;
    room -= std::min(room, entry.size() + 1);
  }
  return false;
}

ProfileText ProfileFile::SectionLines(std::string_view section, std::size_t bufferSize) const {
  ProfileText lines;
  lines.cutOff =
      ForEachLine(section, bufferSize, [&lines](std::string_view line) { (lines.buffer += line) += '\0'; });
  lines.buffer.resize(std::min(lines.buffer.size(), RoomOf(bufferSize)));
  return lines;
}

bool ProfileFile::HasSection(std::string_view section) const {
  return Find(section) != nullptr;
}

}  // namespace pellorin
