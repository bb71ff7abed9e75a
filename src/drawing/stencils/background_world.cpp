#include <cmath>
#include <numbers>
#include <utility>

#include "drawing/stencils/backgrounds.h"

// The globe, seen from above the Sahara.
namespace norvelis::drawing::stencils {

namespace {

constexpr double kPi = std::numbers::pi;

/// Longitude and latitude on a globe seen from above `middle`; nothing when the point lies behind.
bool OnGlobe(Point longitudeLatitude, Point middle, Point& seen) {
    const double rad = kPi / 180;
    const double lambda = (longitudeLatitude.x - middle.x) * rad, phi = longitudeLatitude.y * rad,
                 phi0 = middle.y * rad;
    const double depth = std::sin(phi0) * std::sin(phi) + std::cos(phi0) * std::cos(phi) * std::cos(lambda);
    seen = {0.5 + 0.5 * std::cos(phi) * std::sin(lambda),
            0.5 + 0.5 * (std::cos(phi0) * std::sin(phi) - std::sin(phi0) * std::cos(phi) * std::cos(lambda))};
    return depth >= 0;
}

/// A line of the globe, broken where it goes behind.
void AddGlobeLine(Path& path, const std::vector<Point>& line, Point middle) {
    std::vector<Point> visible;
    for (const Point& point : line) {
        Point seen;
        if (OnGlobe(point, middle, seen)) {
            visible.push_back(seen);
        } else if (!visible.empty()) {
            path.Smooth(visible);
            visible.clear();
        }
    }
    if (visible.size() > 1) path.Smooth(visible);
}

/// Land on the globe. Points behind are drawn in to the edge, so that a coast may run around it.
void AddLand(Path& path, const std::vector<Point>& coast, Point middle) {
    std::vector<Point> outline;
    bool any = false;
    for (const Point& point : coast) {
        Point seen;
        const bool front = OnGlobe(point, middle, seen);
        any = any || front;
        if (!front) {
            const double x = seen.x - 0.5, y = seen.y - 0.5, distance = std::hypot(x, y);
            if (distance > 0) seen = {0.5 + 0.5 * x / distance, 0.5 + 0.5 * y / distance};
        }
        outline.push_back(seen);
    }
    if (any) path.Polygon(outline);
}

}  // namespace

Background World() {
    const Point middle{8, 28};
    Path sea, net, land;
    sea.Ellipse(0.5, 0.5, 0.5, 0.5);
    for (int longitude = -180; longitude < 180; longitude += 20) {
        std::vector<Point> meridian;
        for (int latitude = -80; latitude <= 80; latitude += 10)
            meridian.push_back({double(longitude), double(latitude)});
        AddGlobeLine(net, meridian, middle);
    }
    for (int latitude = -60; latitude <= 80; latitude += 20) {
        std::vector<Point> parallel;
        for (int longitude = -172; longitude <= 188; longitude += 10)
            parallel.push_back({double(longitude), double(latitude)});
        AddGlobeLine(net, parallel, middle);
    }
    const std::vector<std::vector<Point>> coasts = {
        // Africa
        {{-6, 35},    {3, 37},     {10, 37},      {11, 33.5},   {19, 30.5},  {22, 33},   {29, 31},
         {32.5, 31},  {34, 27.5},  {37, 21.5},    {39.5, 15.5}, {43, 11.7},  {51, 11.8}, {48, 5},
         {42, -1},    {39.5, -6},  {40.5, -14.5}, {35, -21},    {32.5, -28}, {26, -34},  {18.5, -34.2},
         {14.5, -23}, {12, -15.5}, {13.5, -8},    {9, -1},      {9.5, 4},    {4, 6.3},   {-3, 5},
         {-8, 4.5},   {-13, 8.5},  {-17, 14.5},   {-16.5, 21},  {-12, 28},   {-9.5, 31}},
        // Europe and Asia
        {{-9, 37},    {-9, 43},     {-2, 43.5},   {-1.5, 46},  {-4.5, 48.3}, {2, 51},    {8, 53.7},
         {8.2, 57},   {10.6, 57.5}, {11, 54},     {19, 54.4},  {21, 57},     {24, 59.2}, {30, 60},
         {22, 60.5},  {21.5, 63},   {25, 65.3},   {22, 65.7},  {17.5, 61.5}, {18, 59.5}, {14, 55.5},
         {11, 59},    {5.5, 59},    {5.5, 62},    {13, 66},    {20, 70},     {29, 71},   {41, 67},
         {34, 66.5},  {38, 64.3},   {44, 66.5},   {54, 68.5},  {68, 69},     {73, 73},   {86, 74},
         {104, 77.5}, {113, 74},    {131, 71.5},  {140, 73},   {160, 70},    {179, 69},  {178, 62.5},
         {163, 59},   {156, 51},    {156, 61},    {135, 54.5}, {140, 48},    {128, 40},  {129, 35.5},
         {126, 37},   {121, 40},    {122, 30.5},  {114, 22},   {106, 20},    {109, 12},  {103, 9},
         {104, 1.5},  {98, 9},      {97, 17},     {91, 22.5},  {80, 15},     {77.5, 8},  {73, 19},
         {67, 25},    {57, 25.8},   {50, 30},     {56, 26},    {59.5, 22.5}, {52, 16},   {43.5, 12.7},
         {35, 28},    {36, 36.5},   {27, 37},     {27, 40.5},  {41, 41.3},   {38, 47},   {31, 46.5},
         {28, 43},    {24, 40.5},   {22.5, 36.7}, {19.5, 41},  {13.5, 45.5}, {18.5, 40}, {16, 38},
         {10, 44},    {3, 42.5},    {-1, 37.5}},
        // The British Isles, Iceland
        {{-5.5, 50},
         {1.3, 51.2},
         {0.3, 53.3},
         {-2, 56},
         {-2, 57.6},
         {-5, 58.6},
         {-5.7, 56},
         {-3, 54.5},
         {-4.5, 52.5}},
        {{-10, 51.7}, {-6.3, 52.2}, {-5.8, 54.7}, {-8, 55.2}, {-9.8, 53.5}},
        {{-22, 64}, {-18.5, 63.4}, {-13.7, 65}, {-16, 66.4}, {-22.5, 66.2}},
        // Greenland
        {{-44, 60},
         {-41, 63},
         {-32, 68},
         {-22, 71},
         {-19, 77},
         {-20, 81.5},
         {-35, 83.5},
         {-60, 81.5},
         {-70, 77.5},
         {-58, 75},
         {-53, 69},
         {-52, 64}},
        // South America, North America's east
        {{-35, -6},
         {-39, -13},
         {-41, -22},
         {-48, -26},
         {-53, -33.5},
         {-58, -38},
         {-65, -42},
         {-68, -50},
         {-72, -52},
         {-73, -40},
         {-70, -18},
         {-81, -5},
         {-78, 2},
         {-77, 8},
         {-71, 12},
         {-60, 9},
         {-51, 4},
         {-44, -2.5}},
        {{-81, 25.5},
         {-80, 32},
         {-75, 36},
         {-70, 42},
         {-64, 45},
         {-66, 50},
         {-56, 52},
         {-62, 58},
         {-70, 61},
         {-78, 62},
         {-77, 56},
         {-82, 52},
         {-93, 58},
         {-87, 68},
         {-120, 70},
         {-125, 60},
         {-110, 45},
         {-97, 27},
         {-90, 30}},
        // Madagascar
        {{44, -25}, {47, -25}, {50, -15.5}, {49, -12.2}, {44.5, -17}}};
    for (const auto& coast : coasts) AddLand(land, coast, middle);
    const Frame frame = Frame::Square(0.84, 1, 0.5, 0.06);
    return {"Background world",
            {Wash("#FCFDFE", "#F3F7FA"), Filled(frame, std::move(sea), "#F0F5F9"),
             Filled(frame, std::move(land), "#E1E9E6"), Drawn(frame, std::move(net), "#DFE8EF", 0.7),
             Drawn(frame, Path().Ellipse(0.5, 0.5, 0.5, 0.5), "#D3DFE8", 1.2)}};
}

}  // namespace norvelis::drawing::stencils
