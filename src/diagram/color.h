#pragma once

#include <string>

#include "base/random.h"

namespace norvelis {

/// Fill formulas such as "RGB(204,255,153)": all three parts above 178 for a box, all below for a line.
std::string PickLightColor(Random& random);
std::string PickDarkColor(Random& random);

}  // namespace norvelis
