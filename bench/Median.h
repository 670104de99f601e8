// The median of measured values.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace pellorin {

inline double MedianOf(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace pellorin
