#include "diagram/meaning.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <set>

// Looks are told apart by people who see few colors, and on prints in grey.
namespace norvelis {
namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

constexpr Matrix kAllColors{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
// Severe lack of one kind of cones over linear RGB (Machado, Oliveira, Fernandes 2009), and luminance.
constexpr Matrix kNoRed{
    {{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}};
constexpr Matrix kNoGreen{
    {{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}};
constexpr Matrix kGrey{{{0.2126, 0.7152, 0.0722}, {0.2126, 0.7152, 0.0722}, {0.2126, 0.7152, 0.0722}}};

Triple Times(const Matrix& matrix, const Triple& values) {
    Triple result{};
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) result[i] += matrix[i][j] * values[j];
    }
    return result;
}

/// CIELAB of a color as it is seen.
Triple LabOf(const std::string& formula, const Matrix& seen) {
    std::array<int, 3> bytes{};
    EXPECT_EQ(std::sscanf(formula.c_str(), "RGB(%d,%d,%d)", &bytes[0], &bytes[1], &bytes[2]), 3);
    Triple linear{};
    for (std::size_t i = 0; i < 3; ++i) linear[i] = std::pow((bytes[i] / 255.0 + 0.055) / 1.055, 2.4);
    constexpr Matrix kToXyz{
        {{0.4339, 0.3763, 0.1899}, {0.2126, 0.7152, 0.0722}, {0.0178, 0.1095, 0.8728}}};  // Over the white.
    Triple xyz = Times(kToXyz, Times(seen, linear));
    for (double& value : xyz)
        value = value > 0.008856 ? std::cbrt(value) : 7.787 * std::max(value, 0.0) + 16.0 / 116;
    return {116 * xyz[1] - 16, 500 * (xyz[0] - xyz[1]), 200 * (xyz[1] - xyz[2])};
}

double Distance(const Look& a, const Look& b, const Matrix& seen) {
    const Triple one = LabOf(a.color, seen), other = LabOf(b.color, seen);
    return std::hypot(one[0] - other[0], one[1] - other[1], one[2] - other[2]);
}

TEST(Looks, StayApartForTheColorBlindAndInGrey) {
    const struct {
        Look (*of)(std::size_t);
        double colors, greys;  ///< Least distances; 2.3 is just noticed.
    } kinds[] = {{BoxLook, 15, 8}, {LineLook, 30, 8}};
    for (const auto& kind : kinds) {
        std::set<std::pair<std::string, std::size_t>> looks;
        for (std::size_t n = 0; n < 24; ++n) looks.emplace(kind.of(n).color, kind.of(n).pattern);
        EXPECT_EQ(looks.size(), 24u);
        for (std::size_t n = 1; n < 6; ++n) {
            for (std::size_t m = 0; m < n; ++m) {
                const Look a = kind.of(m), b = kind.of(n);
                for (const Matrix& seen : {kAllColors, kNoRed, kNoGreen})
                    EXPECT_GE(Distance(a, b, seen), kind.colors) << a.color << b.color;
                if (a.pattern == b.pattern) {
                    EXPECT_GE(Distance(a, b, kGrey), kind.greys) << a.color << b.color;
                }
            }
        }
    }
}

}  // namespace
}  // namespace norvelis
