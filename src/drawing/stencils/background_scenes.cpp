#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>
#include <utility>

#include "drawing/stencils/backgrounds.h"

// Backgrounds drawn by hand: weather, land and water, mostly along the foot of the page, where they carry the
// drawing rather than stand behind it.
namespace norvelis::drawing::stencils {

namespace {

constexpr double kPi = std::numbers::pi;

/// Everything below a smooth line from edge to edge.
Path Below(const std::vector<Point>& ridge) {
    Path path;
    path.Move(0, 0).Smooth(ridge, true).Line(1, 0).Close();
    return path;
}

/// Everything below a broken line from edge to edge.
Path BelowPeaks(const std::vector<Point>& peaks) {
    std::vector<Point> corners = {{0, 0}};
    corners.insert(corners.end(), peaks.begin(), peaks.end());
    corners.push_back({1, 0});
    return Path().Polygon(corners);
}

/// A swell of `waves` waves from edge to edge.
std::vector<Point> Swell(double level, double height, double waves, double phase) {
    std::vector<Point> points;
    for (int i = 0; i <= 32; ++i) {
        const double x = i / 32.0;
        points.push_back({x, level + height * std::sin(2 * kPi * waves * x + phase)});
    }
    return points;
}

/// A cloud's outline: a flat foot and round heaps, in the frame from (x, y) on.
Path Cloud(double x, double y, double width, double height) {
    const auto at = [&](double u, double v) { return Point{x + u * width, y + v * height}; };
    const auto curve = [&](Path& path, double u1, double v1, double u2, double v2, double u, double v) {
        path.Curve(at(u1, v1).x, at(u1, v1).y, at(u2, v2).x, at(u2, v2).y, at(u, v).x, at(u, v).y);
    };
    Path path;
    path.Move(at(0.10, 0).x, at(0.10, 0).y).Line(at(0.90, 0).x, at(0.90, 0).y);
    curve(path, 1.03, 0.00, 1.03, 0.38, 0.89, 0.38);
    curve(path, 0.90, 0.66, 0.74, 0.74, 0.67, 0.62);
    curve(path, 0.63, 1.06, 0.36, 1.08, 0.32, 0.68);
    curve(path, 0.26, 0.80, 0.13, 0.70, 0.16, 0.45);
    curve(path, -0.04, 0.48, -0.04, 0.00, 0.10, 0);
    return path;
}

/// A blade with a midrib from `foot` towards `tip`; `width` is its greatest half width.
void AddLeaf(Path& blade, Path& veins, Point foot, Point tip, double width) {
    const double dx = tip.x - foot.x, dy = tip.y - foot.y, length = std::hypot(dx, dy);
    const Point along{dx / length, dy / length}, across{-along.y, along.x};
    const auto at = [&](double u, double v) {
        return Point{foot.x + along.x * u * length + across.x * v * width,
                     foot.y + along.y * u * length + across.y * v * width};
    };
    const auto side = [&](double sign, Point to, double u1, double v1, double u2, double v2) {
        const Point a = at(u1, sign * v1), b = at(u2, sign * v2);
        blade.Curve(a.x, a.y, b.x, b.y, to.x, to.y);
    };
    blade.Move(foot.x, foot.y);
    side(1, tip, 0.10, 1.25, 0.62, 1.35);
    side(-1, foot, 0.62, 1.35, 0.10, 1.25);
    veins.Move(foot.x, foot.y).Line(at(0.97, 0).x, at(0.97, 0).y);
    for (int i = 1; i <= 6; ++i) {
        const double u = 0.08 + 0.125 * i, reach = 0.80 * std::sin(kPi * std::pow(u, 0.85));
        const Point start = at(u, 0);
        for (const double sign : {1.0, -1.0}) {
            const Point bend = at(u + 0.05, sign * reach * 0.55), end = at(u + 0.14, sign * reach);
            veins.Move(start.x, start.y).Curve(bend.x, bend.y, bend.x, bend.y, end.x, end.y);
        }
    }
}

}  // namespace

Background Rain() {
    Path far, near, rings;
    for (int i = 1; i < 70; ++i) {
        const double x = 0.04 + 0.95 * std::fmod(i * 0.6180339887, 1.0),
                     y = 0.16 + 0.72 * std::fmod(i * 0.7548776662, 1.0);
        const double length = i % 3 == 0 ? 0.085 : 0.05;
        (i % 3 == 0 ? near : far).Move(x, y).Line(x - length * 0.22, y - length);
    }
    for (const auto& [x, y, size] : {std::tuple{0.16, 0.055, 0.060},
                                     {0.36, 0.030, 0.035},
                                     {0.56, 0.065, 0.050},
                                     {0.76, 0.035, 0.040},
                                     {0.91, 0.070, 0.055}}) {
        rings.Ellipse(x, y, size, size * 0.30);
        rings.Ellipse(x, y, size * 0.55, size * 0.165);
    }
    return {"Background rain",
            {Wash("#F0F4F8", "#FBFCFD"), Drawn(Frame::Page(), std::move(far), "#E1E9F0", 1.0),
             Drawn(Frame::Page(), std::move(near), "#D0DCE7", 1.5),
             Drawn(Frame::Page(), std::move(rings), "#D6E1EA", 1.1)}};
}

Background Leaf() {
    Path back, backVeins, front, frontVeins, small, smallVeins;
    AddLeaf(back, backVeins, {0.85, 0.07}, {0.74, 0.94}, 0.15);
    AddLeaf(front, frontVeins, {0.85, 0.07}, {0.04, 0.36}, 0.16);
    AddLeaf(small, smallVeins, {0.85, 0.07}, {0.30, 0.76}, 0.16);
    Path stem;
    stem.Move(0.85, 0.07).Curve(0.88, 0.05, 0.93, 0.03, 0.98, 0.02);
    const Frame frame = Frame::Square(0.86, 1, 0);
    return {
        "Background leaf",
        {Wash("#FBFDFA", "#F4F9F2"), Filled(frame, std::move(back), "#EBF3E8"),
         Drawn(frame, std::move(backVeins), "#F8FBF7", 1.2), Filled(frame, std::move(front), "#E8F1E4"),
         Drawn(frame, std::move(frontVeins), "#F8FBF7", 1.2), Filled(frame, std::move(small), "#E0ECDB"),
         Drawn(frame, std::move(smallVeins), "#F4F9F2", 1.2), Drawn(frame, std::move(stem), "#D6E5D0", 4)}};
}

Background Horizon() {
    Path sun, reflections;
    sun.Move(0, 0)
        .Curve(0, 0.5523 * 0.5 * 2, 0.5 - 0.2761, 1, 0.5, 1)
        .Curve(0.5 + 0.2761, 1, 1, 0.5523 * 0.5 * 2, 1, 0)
        .Close();
    const double widths[] = {0.42, 0.30, 0.36, 0.22, 0.27, 0.15};
    for (int i = 0; i < 6; ++i) {
        const double y = 0.92 - 0.15 * i, half = widths[i] / 2, shift = i % 2 == 0 ? 0.01 : -0.015;
        reflections.Rectangle(0.72 + shift - half / 2, y - 0.025, 0.72 + shift + half / 2, y);
    }
    return {
        "Background horizon",
        {Filled(Frame::Band(0.22, 1), Path().Rectangle(0, 0, 1, 1), "#F4F8FC", Fill::TopToBottom, "#FDF7EF"),
         Filled({false, 0.61, 0.22, 0.83, 0.385, 0, 0, 0, 0}, std::move(sun), "#FAEFDB", Fill::TopToBottom,
                "#FBE8CC"),
         Filled(Frame::Band(0, 0.22), Path().Rectangle(0, 0, 1, 1), "#E6EEF4", Fill::TopToBottom, "#F3F7FA"),
         Filled(Frame::Band(0, 0.22), std::move(reflections), "#F6EBD8"),
         Filled(Frame::Band(0.2185, 0.2215), Path().Rectangle(0, 0, 1, 1), "#DDE5EB")}};
}

Background Clouds() {
    return {"Background clouds",
            {Wash("#EAF2F9", "#FBFDFE"),
             Filled({false, 0.60, 0.74, 0.96, 0.93, 0, 0, 0, 0}, Cloud(0, 0, 1, 0.96), "#F9FCFE"),
             Filled({false, 0.36, 0.60, 0.56, 0.70, 0, 0, 0, 0}, Cloud(0, 0, 1, 0.96), "#F7FAFD"),
             Filled({false, 0.04, 0.28, 0.34, 0.43, 0, 0, 0, 0}, Cloud(0, 0, 1, 0.96), "#F0F5FA"),
             Filled({false, 0.66, 0.30, 0.90, 0.42, 0, 0, 0, 0}, Cloud(0, 0, 1, 0.96), "#F0F5FA"),
             Filled({false, 0.02, 0, 0.60, 0.22, 0, 0, 0, 0}, Cloud(0, 0, 1, 0.96), "#EBF2F8"),
             Filled({false, 0.40, 0, 1.0, 0.17, 0, 0, 0, 0}, Cloud(0, 0, 0.985, 0.96), "#F3F8FB")}};
}

Background City() {
    const auto skyline = [](const std::vector<std::pair<double, double>>& houses) {
        // Each house: how wide, how high; roofs in one broken line from edge to edge.
        double total = 0, x = 0;
        for (const auto& [width, height] : houses) total += width;
        std::vector<Point> roofs;
        for (const auto& [width, height] : houses) {
            roofs.push_back({x / total, height});
            x += width;
            roofs.push_back({x / total, height});
        }
        return BelowPeaks(roofs);
    };
    const std::vector<std::pair<double, double>> far = {
        {4, .40}, {3, .55}, {2, .48}, {3, .72}, {2, .60}, {4, .44}, {3, .66}, {2, .90}, {3, .58}, {4, .50},
        {2, .78}, {3, .62}, {4, .46}, {2, .98}, {3, .70}, {2, .54}, {4, .64}, {3, .42}, {2, .58}};
    const std::vector<std::pair<double, double>> near = {
        {3, .26}, {4, .38}, {2, .30}, {3, .52}, {1, .58}, {3, .52}, {4, .24}, {3, .44}, {3, .34}, {4, .20},
        {2, .62}, {4, .32}, {3, .46}, {2, .28}, {4, .40}, {1, .48}, {3, .40}, {3, .22}, {3, .36}};
    Path masts, windows;
    for (const auto& [x, from, to] : {std::tuple{0.262, 0.58, 0.70}, {0.562, 0.62, 0.76}})
        masts.Move(x, from).Line(x, to);
    double total = 0, x = 0;
    for (const auto& [width, height] : near) total += width;
    int house = 0;
    for (const auto& [width, height] : near) {
        ++house;
        for (int row = 1; height - 0.05 * row > 0.05; ++row) {
            for (int column = 0; column < static_cast<int>(width); ++column) {
                if ((house * 7 + row * 5 + column * 3) % 4 != 0) continue;  // A few lit windows.
                const double left = (x + column + 0.32) / total, bottom = height - 0.05 * row - 0.012;
                windows.Rectangle(left, bottom, left + 0.36 / total, bottom + 0.022);
            }
        }
        x += width;
    }
    const Frame band = Frame::Band(0, 0.34);
    return {"Background city",
            {Wash("#F5F8FC", "#FCF9F4"), Filled(band, skyline(far), "#F0F3F7"),
             Drawn(band, std::move(masts), "#E3E9F0", 1.4), Filled(band, skyline(near), "#E6EBF1"),
             Filled(band, std::move(windows), "#F8F1DF")}};
}

Background Mountains() {
    const std::vector<Point> far = {{0, .52},   {.06, .60}, {.10, .57}, {.19, .80}, {.23, .74}, {.27, .79},
                                    {.38, .56}, {.44, .62}, {.53, .50}, {.62, .70}, {.66, .67}, {.75, .98},
                                    {.80, .86}, {.83, .89}, {.92, .66}, {1, .76}};
    const std::vector<Point> middle = {{0, .40},   {.08, .34}, {.16, .47}, {.21, .43}, {.31, .60},
                                       {.36, .53}, {.40, .55}, {.52, .34}, {.60, .44}, {.68, .36},
                                       {.80, .55}, {.85, .50}, {.93, .40}, {1, .46}};
    const Frame band = Frame::Band(0, 0.42);
    return {
        "Background mountains",
        {Wash("#F3F7FB", "#FDFBF7"), Filled(band, BelowPeaks(far), "#EBF0F5", Fill::TopToBottom, "#F4F7FA"),
         Filled(band, BelowPeaks(middle), "#E2E9F0", Fill::TopToBottom, "#EDF2F6"),
         Filled(band,
                Below({{0, .16},
                       {.12, .24},
                       {.26, .17},
                       {.42, .26},
                       {.60, .14},
                       {.78, .23},
                       {.90, .18},
                       {1, .24}}),
                "#DCE5E6", Fill::TopToBottom, "#E8EEEF")}};
}

Background Expedition() {
    // A survey map: height lines around two tops, the track across, its end marked.
    Path heights, summits, way, cross, flags;
    const auto hill = [&](Point top, double radius, int rings, double phase) {
        for (int ring = 1; ring <= rings; ++ring) {
            std::vector<Point> line;
            const double size = radius * ring / rings;
            for (int step = 0; step < 20; ++step) {
                const double angle = step * kPi / 10;
                const double bulge =
                    1 + 0.14 * std::sin(3 * angle + phase) + 0.07 * std::sin(5 * angle - phase + ring * 0.25);
                line.push_back(
                    {top.x + size * bulge * std::cos(angle), top.y + size * bulge * std::sin(angle) * 0.86});
            }
            heights.SmoothClosed(line);
        }
        summits.Polygon(
            {{top.x - 0.014, top.y - 0.010}, {top.x + 0.014, top.y - 0.010}, {top.x, top.y + 0.015}});
    };
    hill({0.735, 0.70}, 0.215, 7, 0.6);
    hill({0.43, 0.25}, 0.185, 6, 2.4);
    way.Smooth({{0.06, 0.10},
                {0.15, 0.30},
                {0.22, 0.45},
                {0.36, 0.52},
                {0.50, 0.46},
                {0.60, 0.33},
                {0.72, 0.27},
                {0.84, 0.34},
                {0.90, 0.42}});
    cross.Move(0.885, 0.415).Line(0.925, 0.455).Move(0.885, 0.455).Line(0.925, 0.415);
    flags.Ellipse(0.06, 0.10, 0.010, 0.010);
    const Frame frame = Frame::Square(0.98, 1, 0.5, 0.01);
    Path net;
    for (int i = 1; i < 8; ++i) net.Move(i / 8.0, 0).Line(i / 8.0, 1);
    for (int i = 1; i < 6; ++i) net.Move(0, i / 6.0).Line(1, i / 6.0);
    return {"Background expedition",
            {Wash("#FCFAF5", "#F8F4EA"), Drawn(Frame::Page(), std::move(net), "#F3EDDF", 0.7),
             Drawn(frame, std::move(heights), "#E8DEC8", 1.0), Filled(frame, std::move(summits), "#DCCFB2"),
             Drawn(frame, std::move(way), "#DDB9A4", 1.8, 2), Drawn(frame, std::move(cross), "#D9A78E", 2.4),
             Filled(frame, std::move(flags), "#DDB9A4")}};
}

Background Tranquil() {
    return {"Background tranquil",
            {Wash("#FDFEFE", "#F1F8F8"),
             Filled(Frame::Square(0.20, 1, 1, 0.10), Path().Ellipse(0.5, 0.5, 0.5, 0.5), "#F4FAFA"),
             Filled(Frame::Band(0, 0.36), Below(Swell(0.78, 0.11, 1.1, 0.4)), "#EDF5F6"),
             Filled(Frame::Band(0, 0.36), Below(Swell(0.58, 0.10, 1.4, 2.2)), "#E7F2F3"),
             Filled(Frame::Band(0, 0.36), Below(Swell(0.38, 0.09, 1.2, 4.0)), "#E0EEF0"),
             Filled(Frame::Band(0, 0.36), Below(Swell(0.18, 0.07, 1.6, 5.3)), "#D9EAEC")}};
}

}  // namespace norvelis::drawing::stencils
