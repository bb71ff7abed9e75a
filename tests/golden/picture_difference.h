#pragma once

#include <string>
#include <vector>

namespace norvelis {

/// What differs between two pictures of a drawing (SVG files as our export writes them).
struct PictureDifference {
    std::vector<std::string> lines;  ///< One for each shape, in words; none when the pictures are alike.
    std::string report;              ///< An HTML page: both pictures, what differs in red, and the lines.
};

/// Lengths that are closer than a fiftieth of a point are alike, since another compiler rounds otherwise.
PictureDifference ComparePictures(const std::string& reference, const std::string& drawn);

}  // namespace norvelis
