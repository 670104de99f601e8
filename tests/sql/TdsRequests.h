// The requests that carry more than a text, taken apart.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/sql/TdsProtocol.h"

namespace pellorin::tds {

struct Login {
  std::string host, user, password, program, server, database;
  bool isTrusted = false;  // by the operating system's account instead of user and password
  std::size_t packetSize = 0;
  bool operator==(const Login&) const = default;
};

// A remote call as received.
struct Call {
  std::string statement;
  std::string declarations;
  std::vector<CallValue> values;
  bool operator==(const Call&) const = default;
};

struct TransactionRequest {
  enum class Kind { kBegin = 5, kCommit = 7, kRollBack = 8 };
  Kind kind = Kind::kBegin;
  bool beginsAgain = false;
};

Login ParseLogin(std::string_view body);
std::string ParseBatch(std::string_view body);
Call ParseCall(std::string_view body);
TransactionRequest ParseTransaction(std::string_view body);

// The values by the names, in one letter case, that the declarations give to them.
std::map<std::string, std::optional<std::string>> NamedValues(const std::string& declarations,
                                                              const std::vector<CallValue>& values);

}  // namespace pellorin::tds
