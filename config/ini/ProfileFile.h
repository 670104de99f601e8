// A profile file (sections of Name=Value lines, 8-bit text) as the private-profile functions of the system
// read and write it, with every byte outside the written section preserved, and comments and blank lines
// inside it too. Parsed once; names and lines are bytes in the file's code page, compared without regard to
// letter case. A Ctrl-Z at the end, and lines of form feeds or non-breaking blanks alone, hold nothing and
// stay. Reading follows those functions' buffer rule: a text that needs more than the buffer is cut
// off two bytes before its end.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace pellorin {

// What a call with a buffer gives: the texts found, cut off where the buffer ends.
struct ProfileText {
  std::string buffer;   // the bytes that the function returns the number of: each text with a NUL behind it
  bool cutOff = false;  // some byte other than the last text's NUL did not fit

  // The texts, empty ones left out; the last may be cut. They live as long as the buffer.
  std::vector<std::string_view> Pieces() const&;
  std::vector<std::string_view> Pieces() const&& = delete;
};

class ProfileFile {
 public:
  explicit ProfileFile(std::string bytes);

  // In file order, spelled as in the file, duplicates included.
  ProfileText SectionNames(std::size_t bufferSize) const;

  // Hands over the lines of the first section of that name, blanks around name and value stripped, as far as
  // the buffer takes them; the last may be cut. Each view holds for the one call only. Returns whether some
  // byte but the last NUL did not fit.
  bool ForEachLine(std::string_view section, std::size_t bufferSize,
                   const std::function<void(std::string_view)>& take) const;
  // All of them at once. Empty when there is no such section.
  ProfileText SectionLines(std::string_view section, std::size_t bufferSize) const;
  bool HasSection(std::string_view section) const;

  // The file's bytes after replacing the first section of that name by these lines, or appending a new
  // section. A line that reads back as the one given stays as it is, byte for byte.
  std::string WithSection(std::string_view section, const std::vector<std::string>& lines) const;
  // The file's bytes without the first section of that name: header and entries go, comments and blank lines
  // stay.
  std::string WithoutSection(std::string_view section) const;

 private:
  struct Span {  // offsets into the bytes, which may move
    std::string name;
    std::size_t begin;  // of the header
    std::size_t body;   // behind the header's line end
    std::size_t end;
  };

  void AddSection(std::string_view header, std::size_t begin, std::size_t body);
  const Span* Find(std::string_view section) const;
  std::string WithAppendedSection(std::string_view section, const std::vector<std::string>& lines) const;

  std::string bytes_;
  std::string endMark_;        // a Ctrl-Z at the end, and what follows it: stays at the end
  std::size_t firstLine_ = 0;  // behind a UTF-8 mark
  std::vector<Span> sections_;
  std::unordered_map<std::string, std::size_t> firstOfName_;  // by name, letter case folded
};

}  // namespace pellorin
