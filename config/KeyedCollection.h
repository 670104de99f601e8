// An ordered collection that owns its elements. Elements keep the order in which they were added; positions
// are 1-based. Each element has a text key that is unique without regard to letter case. CollectionError for
// a duplicate key (457), an unknown key (5) and a position out of range (9): then nothing has changed.
//
//   KeyedCollection<int> ports;
//   ports.Add("Smtp", std::make_unique<int>(25));
//   ports.Item("SMTP") == ports.Item(1);  // 25
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/NumberedError.h"
#include "base/TextCase.h"

namespace pellorin {

class CollectionError : public NumberedError {
 public:
  using NumberedError::NumberedError;

  static CollectionError DuplicateKey(const std::string& key) {
    return {457, ErrorSource(kSource), "\"" + key + "\" is already an element of this collection"};
  }
  static CollectionError UnknownKey(const std::string& key) {
    return {5, ErrorSource(kSource), "There is no element \"" + key + "\" in this collection"};
  }
  static CollectionError OutOfRange(std::size_t position) {
    return {9, ErrorSource(kSource),
            "There is no element at position " + std::to_string(position) + " of this collection"};
  }

 private:
  static constexpr const char* kSource = "Collection";
};

template <typename Element>
class KeyedCollection {
 public:
  std::size_t Count() const { return elements_.size(); }

  void Reserve(std::size_t count) {
    elements_.reserve(count);
    keys_.reserve(count);
    hashes_.reserve(count);
  }

  Element& Add(const std::string& key, std::unique_ptr<Element> element) {
    const std::uint32_t hash = HashIgnoringCase(key);
    if (SlotOf(key, hash) < Count()) throw CollectionError::DuplicateKey(key);
    keys_.push_back(key);
    hashes_.push_back(hash);
    elements_.push_back(std::move(element));
    return *elements_.back();
  }

  Element& Item(std::size_t position) const { return *elements_[Checked(position)]; }
  Element& Item(std::string_view key) const {
    Element* element = Find(key);
    if (element == nullptr) throw CollectionError::UnknownKey(std::string(key));
    return *element;
  }
  Element* Find(std::string_view key) const {  // null for an unknown key
    const std::size_t slot = SlotOf(key, HashIgnoringCase(key));
    return slot < Count() ? elements_[slot].get() : nullptr;
  }

  void Remove(std::size_t position) {
    const auto offset = static_cast<std::ptrdiff_t>(Checked(position));
    keys_.erase(keys_.begin() + offset);
    hashes_.erase(hashes_.begin() + offset);
    elements_.erase(elements_.begin() + offset);
  }
  void Remove(std::string_view key) {
    const std::size_t slot = SlotOf(key, HashIgnoringCase(key));
    if (slot == Count()) throw CollectionError::UnknownKey(std::string(key));
    Remove(slot + 1);
  }

  auto begin() const { return elements_.begin(); }
  auto end() const { return elements_.end(); }

 private:
  std::size_t Checked(std::size_t position) const {
    if (position < 1 || position > elements_.size()) throw CollectionError::OutOfRange(position);
    return position - 1;
  }

  // Count() for an unknown key. Comparing the hashes of some thousand elements in a row takes a few
  // microseconds; for the usual few an index would cost more.
  std::size_t SlotOf(std::string_view key, std::uint32_t hash) const {
    for (std::size_t slot = 0; slot < hashes_.size(); ++slot)
      if (hashes_[slot] == hash && EqualIgnoringCase(keys_[slot], key)) return slot;
    return Count();
  }

  std::vector<std::unique_ptr<Element>> elements_;
  std::vector<std::string> keys_;  // parallel to elements_, like their hashes
  std::vector<std::uint32_t> hashes_;
};

}  // namespace pellorin
