#pragma once

#include <utility>

#include "base/random.h"

namespace norvelis {

/// Random numbers from a fixed seed for the length of a scope; behind it they go on as without it.
class FixedSeed {
  public:
    explicit FixedSeed(Random& random) : random_(random), kept_(std::exchange(random, Random(1))) {}
    ~FixedSeed() { random_ = kept_; }
    FixedSeed(const FixedSeed&) = delete;
    FixedSeed& operator=(const FixedSeed&) = delete;

  private:
    Random& random_;
    Random kept_;
};

}  // namespace norvelis
