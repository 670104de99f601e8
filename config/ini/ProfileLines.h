// The lines of a profile file, as reading and writing see them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace pellorin {

struct ProfileLine {
  std::string_view text;
  std::string_view lineEnd;  // CR LF, LF or CR; empty at the end of a file that lacks it
};

// The line that begins at `position`, which moves behind it.
inline ProfileLine TakeProfileLine(std::string_view bytes, std::size_t& position) {
  const std::size_t begin = position;
  // A line feed is searched for first: single carriage returns are rare.
  std::size_t end = std::min(bytes.find('\n', begin), bytes.size());
  end = begin + std::min(bytes.substr(begin, end - begin).find('\r'), end - begin);
  position = end;
  if (position < bytes.size()) ++position;
  if (end + 1 < bytes.size() && bytes[end] == '\r' && bytes[end + 1] == '\n') ++position;
  return {bytes.substr(begin, end - begin), bytes.substr(end, position - end)};
}

inline std::string_view WithoutBlanks(std::string_view text) {
  const auto blank = [](char byte) { return byte == ' ' || byte == '\t'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

// Where the text ends: some old editors mark its end with Ctrl-Z, which may have blanks and line ends after
// it.
inline std::size_t EndOfProfileText(std::string_view bytes) {
  constexpr std::string_view kAfterText("\x1A\r\n \t\0", 6);
  const std::size_t last = bytes.find_last_not_of(kAfterText);
  const std::size_t mark = bytes.find('\x1A', last == std::string_view::npos ? 0 : last + 1);
  return std::min(mark, bytes.size());
}

// Whether a line without outer blanks is a comment, or empty to the eye: form feeds and non-breaking blanks.
inline bool HoldsNoEntry(std::string_view line) {
  if (line.empty() || line.front() == ';') return true;
  const bool mayBeEmpty = line.front() == '\f' || line.front() == '\xA0';
  return mayBeEmpty && line.find_first_not_of(" \t\f\xA0") == std::string_view::npos;
}

enum class ProfileLineKind { Header, Entry, Other };

inline ProfileLineKind KindOfProfileLine(std::string_view line) {
  const std::size_t first = line.find_first_not_of(" \t");
  if (first == std::string_view::npos || HoldsNoEntry(line.substr(first))) return ProfileLineKind::Other;
  return line[first] == '[' ? ProfileLineKind::Header : ProfileLineKind::Entry;
}

// Adds an entry line as it is read: without blanks round the line, the name and the value.
inline void AppendEntry(std::string& text, std::string_view line) {
  const std::string_view entry = WithoutBlanks(line);
  const std::size_t equals = entry.find('=');
  text += WithoutBlanks(entry.substr(0, equals));
  if (equals == std::string_view::npos) return;
  text += '=';
  text += WithoutBlanks(entry.substr(equals + 1));
}

// The same for a line without outer blanks, without a copy where the line has no blanks round its "="; else
// `stripped` holds the entry.
inline std::string_view EntryAsRead(std::string_view line, std::string& stripped) {
  const auto blank = [](char byte) { return byte == ' ' || byte == '\t'; };
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return line;
  const bool blankBefore = equals > 0 && blank(line[equals - 1]);
  const bool blankBehind = equals + 1 < line.size() && blank(line[equals + 1]);
  if (!blankBefore && !blankBehind) return line;
  stripped.clear();
  AppendEntry(stripped, line);
  return stripped;
}

}  // namespace pellorin
