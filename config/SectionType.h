// What a section configures, and the prefix of its name that says so.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace pellorin {

enum class SectionType : std::int32_t { Mail = 0, Sql = 1, Admin = 2, Queue = 3 };

// "MAIL:", "SQL:" or "ADMIN:"; empty for a queue, whose name has no prefix.
constexpr std::string_view PrefixOf(SectionType type) {
  switch (type) {
    case SectionType::Mail:
      return "MAIL:";
    case SectionType::Sql:
      return "SQL:";
    case SectionType::Admin:
      return "ADMIN:";
    case SectionType::Queue:
      return "";
  }
  return "";
}

// The whole name of a section: SectionName(SectionType::Mail, "smtp1") is "MAIL:smtp1".
inline std::string SectionName(SectionType type, std::string_view name) {
  return std::string(PrefixOf(type)).append(name);
}

}  // namespace pellorin
