// The tag of a control: the section kind (page) that the control is part of, and the enable groups that it
// belongs to or switches.
//
//   tag = groups "@" sections      groups = onPart [":" offPart]      each part = a list separated by ","
//
// An item that ends in "Member" makes the control a member of the group named before it. Any other item is a
// group that the control switches on (onPart) or off (offPart). Names are compared exactly. Groups or tags of
// any other form are ignored.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pellorin {

class QTag {
 public:
  QTag() = default;
  explicit QTag(std::string_view tag) { Init(tag); }

  void Init(std::string_view tag);
  // Adds the items to the lists; `mode` is "on" or "off". Any other mode adds only the members.
  void InitMembers(std::string_view items, std::string_view mode);

  bool IsInGroup(std::string_view name) const;
  bool IsInSection(std::string_view name) const;
  bool IsOnGroup(std::string_view name) const;
  bool IsOffGroup(std::string_view name) const;
  const std::vector<std::string>& OnGroups() const { return onGroups_; }
  const std::vector<std::string>& OffGroups() const { return offGroups_; }

 private:
  std::vector<std::string> onGroups_;
  std::vector<std::string> offGroups_;
  std::vector<std::string> memberGroups_;
  std::vector<std::string> sections_;
};

}  // namespace pellorin
