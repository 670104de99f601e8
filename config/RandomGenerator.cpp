#include "config/RandomGenerator.h"

#include <bit>

namespace pellorin {
namespace {

constexpr std::uint32_t kMultiplier = 0x43FD43FD;
constexpr std::uint32_t kIncrement = 0xC39EC3;
constexpr std::uint32_t kStateMask = 0xFFFFFF;

}  // namespace

void RandomGenerator::Step() {
  state_ = (state_ * kMultiplier + kIncrement) & kStateMask;
}

float RandomGenerator::Value() const {
  // 24 bits fit the significand of a float, so nothing is rounded here.
  return static_cast<float>(state_) / static_cast<float>(kStateMask + 1);
}

float RandomGenerator::Next() {
  Step();
  return Value();
}

float RandomGenerator::NextFrom(float negative) {
  if (negative == 0.0F) return Value();  // zero of either sign repeats the last value
  const auto bits = std::bit_cast<std::uint32_t>(negative);
  state_ = (bits + (bits >> 24)) & kStateMask;
  return Next();
}

void RandomGenerator::Randomize(double seed) {
  const auto high = static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(seed) >> 32);
  const std::uint32_t mixed = (high & 0xFFFF) ^ (high >> 16);
  state_ = (state_ & 0xFF) | (mixed << 8);
}

std::uint8_t RandomGenerator::NextByte() {
  Step();
  return static_cast<std::uint8_t>(state_ >> 16);
}

}  // namespace pellorin
