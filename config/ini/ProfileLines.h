// The lines of a profile file, as reading and writing see them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/Text.h"

namespace pellorin {

inline constexpr std::string_view kUsualLineEnd = "\r\n";

struct ProfileLine {
  std::string_view text;
  std::string_view lineEnd;  // CR LF, LF or CR; empty when the file ends without one
};

// The line that begins at `position`. Moves `position` to the line after it.
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

// The line end that the bytes end with; empty when they end with none.
inline std::string_view FinalLineEnd(std::string_view bytes) {
  if (bytes.ends_with(kUsualLineEnd)) return bytes.substr(bytes.size() - kUsualLineEnd.size());
  if (bytes.ends_with('\n') || bytes.ends_with('\r')) return bytes.substr(bytes.size() - 1);
  return {};
}

// Where the text ends: some old editors mark its end with Ctrl-Z. Blanks and line ends may follow the mark.
inline std::size_t EndOfProfileText(std::string_view bytes) {
  constexpr std::string_view kAfterText("\x1A\r\n \t\0", 6);
  const std::size_t last = bytes.find_last_not_of(kAfterText);
  const std::size_t mark = bytes.find('\x1A', last == std::string_view::npos ? 0 : last + 1);
  return std::min(mark, bytes.size());
}

// Whether a line without outer blanks is a comment, or looks empty: form feeds and non-breaking blanks.
inline bool HoldsNoEntry(std::string_view line) {
  if (line.empty() || line.front() == ';') return true;
  const bool mayBeEmpty = line.front() == '\f' || line.front() == '\xA0';
  return mayBeEmpty && line.find_first_not_of(" \t\f\xA0") == std::string_view::npos;
}

enum class ProfileLineKind { Header, Entry, Other };

inline ProfileLineKind KindOfProfileLine(std::string_view line) {
  line = WithoutOuterBlanks(line);
  if (HoldsNoEntry(line)) return ProfileLineKind::Other;
  return line.front() == '[' ? ProfileLineKind::Header : ProfileLineKind::Entry;
}

// Appends an entry line as it is read: without blanks around the line, the name and the value.
inline void AppendEntry(std::string& text, std::string_view line) {
  const std::string_view entry = WithoutOuterBlanks(line);
  const std::size_t equals = entry.find('=');
  text += WithoutOuterBlanks(entry.substr(0, equals));
  if (equals == std::string_view::npos) return;
  text += '=';
  text += WithoutOuterBlanks(entry.substr(equals + 1));
}

// The same for a line without outer blanks. Uses `stripped` only if there are blanks around the "=".
inline std::string_view EntryAsRead(std::string_view line, std::string& stripped) {
  const auto isBlank = [line](std::size_t position) {
    return position < line.size() && (line[position] == ' ' || line[position] == '\t');
  };
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos || !(isBlank(equals - 1) || isBlank(equals + 1))) return line;
  stripped.clear();
  AppendEntry(stripped, line);
  return stripped;
}

}  // namespace pellorin
