// The lines below a header of a profile file, with other entries. Comments and blank lines stay.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pellorin {

// Appends the body to `out`, which ends with the header, and replaces the body's entries by these. The k-th
// entry line becomes the k-th entry and keeps its line end; a line that reads as the entry keeps every byte.
// Further entries follow the last one.
//
//   "; relay\r\nPort = 25\r\n\r\n" with {"Port=25", "Width=80"} gives
//   "; relay\r\nPort = 25\r\nWidth=80\r\n\r\n"
void AppendBody(std::string& out, std::string_view body, const std::vector<std::string>& entries);

// Appends the body without its entry lines.
void AppendBodyWithoutEntries(std::string& out, std::string_view body);

}  // namespace pellorin
