#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace norvelis {

/// The program's one source of random numbers: colours, drop positions, node keys. Equal seeds give equal
/// drawings.
class Random {
  public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}
    static Random FromDevice() { return Random(std::random_device{}()); }

    /// A number in 0 to below 1.
    double Rnd() { return static_cast<double>(engine_() >> 11) * 0x1.0p-53; }
    std::uint64_t Bits() { return engine_(); }

  private:
    std::mt19937_64 engine_;
};

}  // namespace norvelis
