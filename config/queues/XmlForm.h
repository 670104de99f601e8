// The outer form of an XML file: its encoding, byte order, byte-order mark, declaration and line ends. A file
// that is written again keeps the form that it was read in.
#pragma once

#include <string>
#include <string_view>

namespace pellorin {

struct XmlForm {
  std::string encoding;            // as the declaration names it; else UTF-16 or UTF-8
  std::string_view byteOrderMark;  // empty without one
  bool isUtf16 = false;
  bool isBigEndian = false;
  bool hasDeclaration = false;
  bool hasWindowsLineEnds = false;  // only such line ends, and at least one
};

// `declaredEncoding`: what the declaration says; empty without one.
XmlForm FormOf(std::string_view bytes, std::string_view declaredEncoding);

// Brings a document, written in the form's encoding with LF as line ends, into the whole form. UTF-16 may
// come in either byte order, with a mark or without.
std::string InForm(const XmlForm& form, std::string bytes);

}  // namespace pellorin
