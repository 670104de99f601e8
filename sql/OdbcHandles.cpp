#include "sql/OdbcHandles.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

#include "base/Utf16.h"

namespace pellorin {
namespace {

// FreeTDS's driver gives no reason when it takes a question mark for a parameter.
constexpr const char* kNoReason =
    "The driver gave no reason. Is there a question mark outside the strings, as after an unpaired quote?";
constexpr std::size_t kLongestRecord = 4096;  // units; servers cut their texts at about half of that

// The server says these after it has switched the database or the language. They are not failures.
bool IsNotice(const OdbcRecord& record) {
  return record.number == 5701 || record.number == 5703;
}

// Each text once, in the driver's order. The first generic text only if there is no other.
std::vector<OdbcRecord> Informative(const std::vector<OdbcRecord>& records) {
  std::vector<OdbcRecord> informative;
  std::optional<OdbcRecord> generic;
  for (const OdbcRecord& record : records) {
    const bool isKnown = std::ranges::find(informative, record.text, &OdbcRecord::text) != informative.end();
    if (record.text.empty() || isKnown || IsNotice(record)) continue;
    if (!IsGeneric(record.text))
      informative.push_back(record);
    else if (!generic)
      generic = record;
  }
  if (informative.empty() && generic) informative.push_back(*generic);
  return informative;
}

SqlError ErrorOf(const std::vector<OdbcRecord>& records, const char* operation) {
  std::string text;
  for (const OdbcRecord& record : records) text += (text.empty() ? "" : "\r\n") + record.text;
  return SqlError(records.empty() ? 0 : records.front().number,
                  ErrorSource(std::string("OdbcConnection, ") + operation), text.empty() ? kNoReason : text);
}

}  // namespace

OdbcHandle::OdbcHandle(SQLSMALLINT kind, SQLHANDLE parent) : kind_(kind) {
  if (!SQL_SUCCEEDED(SQLAllocHandle(kind, parent, &handle_)))
    throw SqlError(0, ErrorSource("OdbcConnection"), "ODBC gave no handle.");
}

OdbcHandle::~OdbcHandle() {
  SQLFreeHandle(kind_, handle_);
}

void OdbcHandle::Check(SQLRETURN result, const char* operation) const {
  if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) throw ErrorOf(Informative(Records()), operation);
}

std::vector<OdbcRecord> OdbcHandle::Records() const {
  constexpr SQLSMALLINT kMost = 20;
  std::vector<OdbcRecord> records;
  for (SQLSMALLINT index = 1; index <= kMost; ++index) {
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, kLongestRecord> text{};
    SQLINTEGER number = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN result = SQLGetDiagRecW(kind_, handle_, index, state.data(), &number, text.data(),
                                            static_cast<SQLSMALLINT>(text.size()), &length);
    if (!SQL_SUCCEEDED(result)) break;
    const auto count = std::min(static_cast<std::size_t>(std::max(length, SQLSMALLINT{0})), text.size() - 1);
    records.push_back(
        {Narrow(state.data(), state.size() - 1), number, WithoutOrigin(Narrow(text.data(), count))});
  }
  return records;
}

bool IsGeneric(std::string_view text) {
  static constexpr std::string_view kTexts[] = {"Unable to connect to data source",
                                                "Adaptive Server connection failed",
                                                "Could not change transaction status"};
  return std::ranges::find(kTexts, text) != std::end(kTexts);
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
