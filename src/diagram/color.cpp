#include "diagram/color.h"

#include <array>

namespace norvelis {

namespace {

constexpr int kBound = 178;
constexpr int kAttempts = 1000;

template <typename Accepts>
std::string PickColor(Random& random, const Accepts& accepts) {
    std::array<int, 3> part{};
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        for (int& value : part) value = static_cast<int>(random.Rnd() * 255);
        if (accepts(part[0]) && accepts(part[1]) && accepts(part[2])) break;
    }
    return "RGB(" + std::to_string(part[0]) + "," + std::to_string(part[1]) + "," + std::to_string(part[2]) +
           ")";
}

}  // namespace

std::string PickLightColor(Random& random) {
    return PickColor(random, [](int part) { return part > kBound; });
}

std::string PickDarkColor(Random& random) {
    return PickColor(random, [](int part) { return part < kBound; });
}

}  // namespace norvelis
