#pragma once

#include <cmath>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "base/paths.h"

namespace norvelis {

/// A page of a PDF file as poppler paints it.
struct GrayPicture {
    int width = 0, height = 0;
    std::string pixels;  ///< 0 black to 255 white, row by row.

    unsigned char At(int x, int y) const {
        return static_cast<unsigned char>(pixels[static_cast<std::size_t>(y * width + x)]);
    }

    /// `size` are the words of pdftoppm that choose it, such as "-r 100".
    static GrayPicture OfPage(const std::string& pdf, int page, const std::string& size) {
        const std::string out = pdf + ".page";
        const std::string number = std::to_string(page);
        const std::string command = "pdftoppm -gray -singlefile -f " + number + " -l " + number + " " + size +
                                    " '" + pdf + "' '" + out + "'";
        GrayPicture picture;
        if (std::system(command.c_str()) != 0) return picture;
        const std::string bytes = ReadFile(out + ".pgm");
        std::istringstream header(bytes.substr(0, 40));
        std::string form;
        int most = 0;
        header >> form >> picture.width >> picture.height >> most;
        picture.pixels = bytes.substr(static_cast<std::size_t>(header.tellg()) + 1);
        return picture;
    }

    /// The middles of the dark stretches along one row or column.
    std::vector<int> DarkInRow(int y) const {
        return Dark(width, [&](int x) { return At(x, y); });
    }
    std::vector<int> DarkInColumn(int x) const {
        return Dark(height, [&](int y) { return At(x, y); });
    }

    /// The part of the pixels that differ and match none of the other's within `reach` pixels.
    double DifferenceTo(const GrayPicture& other, int reach) const {
        int different = 0;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) different += !IsNear(other, x, y, reach);
        }
        return static_cast<double>(different) / (width * height);
    }

  private:
    bool IsNear(const GrayPicture& other, int x, int y, int reach) const {
        for (int dy = -reach; dy <= reach; ++dy) {
            for (int dx = -reach; dx <= reach; ++dx) {
                const int ox = x + dx, oy = y + dy;
                if (ox < 0 || oy < 0 || ox >= other.width || oy >= other.height) continue;
                if (std::abs(At(x, y) - other.At(ox, oy)) < 100) return true;
            }
        }
        return false;
    }
    template <typename Value>
    static std::vector<int> Dark(int count, Value value) {
        std::vector<int> middles;
        for (int i = 0, begin = -1; i <= count; ++i) {
            const bool dark = i < count && value(i) < 200;
            if (dark && begin < 0) begin = i;
            if (!dark && begin >= 0) {
                middles.push_back((begin + i - 1) / 2);
                begin = -1;
            }
        }
        return middles;
    }
};

}  // namespace norvelis
