// What the page of SQL Server instances tells of the shown one: a connection type that is missing, unknown or
// misspelt, and names that were stored although no list offers them any more.
#pragma once

#include <map>
#include <string>

#include "config/Section.h"

namespace pellorin {

class InstanceNotices {
 public:
  // Remembers a name that showing the instance has replaced by the empty text. `content` is what the name is
  // of: "primary mail server".
  void NoteLost(const Section& instance, const std::string& key, const std::string& content,
                const std::string& name);
  void ForgetLost(const Section& instance, const std::string& key);
  void Clear() { lost_.clear(); }

  // One sentence a line; empty when there is nothing to tell.
  std::string Text(const Section& instance) const;

 private:
  using SentenceByKey = std::map<std::string, std::string>;

  std::map<std::string, SentenceByKey> lost_;  // by the key of the section
};

}  // namespace pellorin
