// A profile file: sections of Name=Value lines in 8-bit text. Read and written as the private-profile
// functions of the system do it, with every byte kept outside the lines that change. Names and lines are
// bytes in the file's code page; names are compared without regard to letter case.
//
//   const ProfileFile file("; mine\n[A]\nx = 1\n");
//   file.ForEachLine("a", 100, Print);  // x=1
//   file.WithSection("A", {"x=2"});     // "; mine\n[A]\nx=2\n"
//
// Those functions fill the caller's buffer. Its last two bytes are reserved for the closing NULs, and a text
// that needs more is cut off there.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace pellorin {

// The texts that a buffer was filled with, each with a NUL after it.
struct ProfileText {
  std::string buffer;

  // Without empty ones; the last may be cut. They live as long as the buffer.
  std::vector<std::string_view> Pieces() const&;
  std::vector<std::string_view> Pieces() const&& = delete;
};

class ProfileFile {
 public:
  // A Ctrl-Z at the end, and lines of form feeds or non-breaking blanks alone, are kept but not read.
  explicit ProfileFile(std::string bytes);

  // In file order, spelled as in the file, duplicates included.
  ProfileText SectionNames(std::size_t bufferSize) const;

  // Hands over the lines of the first section of that name, without blanks around name and value; the last
  // may be cut. Each view is valid during its call only. Returns whether something was cut off.
  bool ForEachLine(std::string_view section, std::size_t bufferSize,
                   const std::function<void(std::string_view)>& take) const;
  bool HasSection(std::string_view section) const;

  // The file's bytes with these lines in the first section of that name, or in a new section at the end. An
  // old line that reads as the new one stays as it is.
  std::string WithSection(std::string_view section, const std::vector<std::string>& lines) const;
  // The file's bytes without the header and the entries of the first section of that name. Its comments
  // and blank lines stay.
  std::string WithoutSection(std::string_view section) const;

 private:
  struct Span {  // offsets into the bytes, which may move
    std::string name;
    std::size_t begin;  // of the header
    std::size_t body;   // after the header's line end
    std::size_t end;
  };

  void AddSection(std::string_view header, std::size_t begin, std::size_t body);
  const Span* Find(std::string_view section) const;
  std::string_view BodyOf(const Span& span) const;
  std::string WithAppendedSection(std::string_view section, const std::vector<std::string>& lines) const;

  std::string bytes_;
  std::string endMark_;        // the Ctrl-Z and what follows it; stays at the end
  std::size_t firstLine_ = 0;  // after a UTF-8 mark
  std::vector<Span> sections_;
  std::unordered_map<std::string, std::size_t> firstOfName_;  // by name, letter case folded
};

}  // namespace pellorin
