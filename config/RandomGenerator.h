// The pseudo-random generator of the runtime that the service was written for, equal bit for bit (measured
// against that runtime): 24 bits of state, one linear congruential step, values in single precision.
#pragma once

#include <cstdint>

namespace pellorin {

class RandomGenerator {
 public:
  float Next();  // in [0, 1)
  // Reseeds from a number below zero and gives the first value of the new sequence.
  float NextFrom(float negative);
  void Randomize(double seed);  // replaces the upper 16 of the 24 bits
  std::uint8_t NextByte();      // floor(Next() * 256)

 private:
  void Step();
  float Value() const;

  std::uint32_t state_ = 0x50000;  // as in a fresh process
};

}  // namespace pellorin
