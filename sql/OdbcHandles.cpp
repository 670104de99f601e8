#include "sql/OdbcHandles.h"

#include <algorithm>
#include <array>

#include "platform/Utf16.h"

namespace pellorin {
namespace {

// FreeTDS's driver says nothing of a question mark that it takes for a parameter.
constexpr const char* kNoReason =
    "The driver gave no reason. Does a question mark stand outside the strings, as behind an unpaired quote?";
constexpr std::size_t kLongestRecord = 4096;  // units; servers cut theirs at about half of that

SqlError ErrorOf(SQLSMALLINT kind, SQLHANDLE handle, const char* operation) {
  std::array<SQLWCHAR, 6> state{};
  std::array<SQLWCHAR, kLongestRecord> text{};
  SQLINTEGER number = 0;
  SQLSMALLINT length = 0;
  const SQLRETURN result = SQLGetDiagRecW(kind, handle, 1, state.data(), &number, text.data(),
                                          static_cast<SQLSMALLINT>(text.size()), &length);
  const bool hasText = SQL_SUCCEEDED(result) && length > 0;
  const auto count = std::min(static_cast<std::size_t>(hasText ? length : 0), text.size() - 1);
  const std::string sentence = hasText ? WithoutOrigin(Narrow(text.data(), count)) : "";
  return SqlError(number, std::string("PellorinConfig.exe, OdbcConnection, ") + operation,
                  sentence.empty() ? kNoReason : sentence);
}

}  // namespace

OdbcHandle::OdbcHandle(SQLSMALLINT kind, SQLHANDLE parent) : kind_(kind) {
  if (!SQL_SUCCEEDED(SQLAllocHandle(kind, parent, &handle_)))
    throw SqlError(0, "PellorinConfig.exe, OdbcConnection", "ODBC gave no handle.");
}

OdbcHandle::~OdbcHandle() {
  SQLFreeHandle(kind_, handle_);
}

void OdbcHandle::Check(SQLRETURN result, const char* operation) const {
  if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) throw ErrorOf(kind_, handle_, operation);
}

std::string WithoutOrigin(std::string_view text) {
  static constexpr std::string_view kOrigins[] = {"[unixODBC]", "[Driver Manager]", "[FreeTDS]",
                                                  "[Microsoft]", "[SQL Server]"};
  for (bool isCut = true; isCut && !text.empty();) {
    isCut = false;
    for (const std::string_view origin : kOrigins)
      if (text.starts_with(origin)) {
        text.remove_prefix(origin.size());
        isCut = true;
      }
    if (text.starts_with("[ODBC Driver ") && text.find(']') != std::string_view::npos) {
      text.remove_prefix(text.find(']') + 1);
      isCut = true;
    }
  }
  return std::string(text);
}

std::basic_string<SQLWCHAR> Wide(std::string_view utf8) {
  const std::u16string units = ToUtf16(utf8);
  return {units.begin(), units.end()};
}

std::string Narrow(const SQLWCHAR* units, std::size_t count) {
  return ToUtf8(std::u16string(units, units + count));
}

}  // namespace pellorin
