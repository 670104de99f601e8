// What the SQL Servers page says about the shown instance: that its connection type is missing, unknown or
// misspelt, that all its mail is redirected, and which stored names were lost because their lists do not
// offer them.
#pragma once

#include <map>
#include <string>

#include "config/Section.h"

namespace pellorin {

class InstanceNotices {
 public:
  // Remembers a name that showing the instance has replaced by the empty text. `content` says what kind of
  // name it is: "primary mail server".
  void NoteLost(const Section& instance, const std::string& key, const std::string& content,
                const std::string& name);
  void ForgetLost(const Section& instance, const std::string& key);
  void Clear() { lost_.clear(); }

  // One sentence per line; empty when there is nothing to say.
  std::string Text(const Section& instance) const;

 private:
  using SentenceByKey = std::map<std::string, std::string>;

  std::map<std::string, SentenceByKey> lost_;  // by the key of the section
};

}  // namespace pellorin
