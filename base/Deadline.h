// The end of the time that a conversation may take.
#pragma once

#include <algorithm>
#include <chrono>

namespace pellorin {

class Deadline {
 public:
  explicit Deadline(std::chrono::milliseconds patience) : end_(std::chrono::steady_clock::now() + patience) {}

  std::chrono::milliseconds Left() const {  // never negative
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - std::chrono::steady_clock::now());
    return std::max(left, std::chrono::milliseconds(0));
  }

 private:
  std::chrono::steady_clock::time_point end_;
};

}  // namespace pellorin
