#include "platform/ProfileFile.h"

#include <algorithm>
#include <utility>

#include "platform/AnsiText.h"
#include "platform/ProfileLines.h"
#include "platform/TextCase.h"

namespace pellorin {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// What compares equal for names that differ in letter case only.
std::string FoldedName(std::string_view name) {
  const bool ascii = std::all_of(name.begin(), name.end(),
                                 [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
  return ascii ? FoldCase(name) : FoldCase(AnsiToUtf8(name));
}

// `text`: every text with a NUL behind it. A buffer needs room for one NUL more; what does not fit is cut off
// so that two NULs end the buffer.
ProfileText ThroughBuffer(std::string text, std::size_t bufferSize) {
  const std::size_t room = bufferSize < 2 ? 0 : bufferSize - 2;
  const bool cutOff = text.size() > room + 1;
  if (text.size() > room) text.resize(room);
  return {std::move(text), cutOff};
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
  const std::string_view all = bytes_;
  std::size_t position = all.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0;
  firstLine_ = position;
  while (position < all.size()) {
    const std::size_t begin = position;
    const ProfileLine line = TakeProfileLine(all, position);
    if (KindOfProfileLine(line.text) != ProfileLineKind::Header) continue;
    AddSection(line.text, begin, position);
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
  std::string text;
  for (const Span& section : sections_) (text += section.name) += '\0';
  return ThroughBuffer(std::move(text), bufferSize);
}

ProfileText ProfileFile::SectionLines(std::string_view section, std::size_t bufferSize) const {
  const Span* span = Find(section);
  if (span == nullptr) return {};
  const std::string_view body = std::string_view(bytes_).substr(span->body, span->end - span->body);
  std::string text;
  text.reserve(body.size() + 1);
  for (std::size_t position = 0; position < body.size();) {
    const ProfileLine line = TakeProfileLine(body, position);
    if (KindOfProfileLine(line.text) != ProfileLineKind::Entry) continue;
    AppendEntry(text, line.text);
    text += '\0';
  }
  return ThroughBuffer(std::move(text), bufferSize);
}

bool ProfileFile::HasSection(std::string_view section) const {
  return Find(section) != nullptr;
}

}  // namespace pellorin
