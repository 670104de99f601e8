#include "config/queues/XmlForm.h"

#include <cstddef>
#include <utility>

#include "base/Text.h"
#include "base/TextCase.h"

namespace pellorin {
namespace {

// UTF-16 in the other byte order.
std::string Swapped(std::string bytes) {
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) std::swap(bytes[at], bytes[at + 1]);
  return bytes;
}

// UTF-16 with "?" for each character outside ASCII.
std::string AsciiOf(std::string_view bytes, bool isBigEndian) {
  std::string ascii;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    const bool isAscii = bytes[isBigEndian ? at : at + 1] == '\0';
    ascii += isAscii ? bytes[isBigEndian ? at + 1 : at] : '?';
  }
  return ascii;
}

// `width`: bytes of a character, 1 or 2. Two are in little-endian order.
std::string WithWindowsLineEnds(std::string_view bytes, std::size_t width) {
  const std::string_view lineFeed = std::string_view("\n\0", 2).substr(0, width);
  const std::string_view carriageReturn = std::string_view("\r\0", 2).substr(0, width);
  std::string result;
  for (std::size_t at = 0; at < bytes.size(); at += width) {
    const std::string_view character = bytes.substr(at, width);
    if (character == lineFeed) result += carriageReturn;
    result += character;
  }
  return result;
}

bool HasOnlyWindowsLineEnds(std::string_view bytes) {
  std::size_t found = 0;
  for (std::size_t line = 0; (line = bytes.find('\n', line)) != std::string_view::npos; ++line, ++found)
    if (line == 0 || bytes[line - 1] != '\r') return false;
  return found > 0;
}

}  // namespace

XmlForm FormOf(std::string_view bytes, std::string_view declaredEncoding) {
  XmlForm form;
  for (const std::string_view mark : {kUtf8Mark, kUtf16LittleMark, kUtf16BigMark})
    if (bytes.starts_with(mark)) form.byteOrderMark = mark;
  const bool hasMark = !form.byteOrderMark.empty();
  bytes.remove_prefix(form.byteOrderMark.size());
  form.isBigEndian = hasMark ? form.byteOrderMark == kUtf16BigMark : bytes.starts_with('\0');
  form.isUtf16 =
      form.isBigEndian || form.byteOrderMark == kUtf16LittleMark || bytes.substr(0, 2).ends_with('\0');
  form.encoding = declaredEncoding.empty() ? "UTF-8" : declaredEncoding;
  if (form.isUtf16 && !StartsWithIgnoringCase(form.encoding, "UTF-16")) form.encoding = "UTF-16";
  const std::string ascii = form.isUtf16 ? AsciiOf(bytes, form.isBigEndian) : std::string();
  const std::string_view text = form.isUtf16 ? std::string_view(ascii) : bytes;
  form.hasDeclaration = text.starts_with("<?xml") || (form.isUtf16 && !hasMark);
  form.hasWindowsLineEnds = HasOnlyWindowsLineEnds(text);
  return form;
}

std::string InForm(const XmlForm& form, std::string bytes) {
  if (form.isUtf16) {
    if (bytes.starts_with(kUtf16BigMark) || bytes.starts_with('\0')) bytes = Swapped(std::move(bytes));
    if (bytes.starts_with(kUtf16LittleMark)) bytes.erase(0, kUtf16LittleMark.size());
  }
  if (form.hasWindowsLineEnds) bytes = WithWindowsLineEnds(bytes, form.isUtf16 ? 2 : 1);
  if (form.isBigEndian) bytes = Swapped(std::move(bytes));
  return std::string(form.byteOrderMark) + bytes;
}

}  // namespace pellorin
