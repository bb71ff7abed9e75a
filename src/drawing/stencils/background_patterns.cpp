#include <algorithm>
#include <cmath>
#include <numbers>
#include <tuple>
#include <utility>

#include "drawing/stencils/backgrounds.h"

// Backgrounds made by rule: patterns, networks, instruments and the sky.
namespace norvelis::drawing::stencils {

namespace {

constexpr double kPi = std::numbers::pi;

Point OnCircle(Point center, double radius, double degrees) {
    return {center.x + radius * std::cos(degrees * kPi / 180),
            center.y + radius * std::sin(degrees * kPi / 180)};
}

/// An ellipse turned by `degrees`.
std::vector<Point> TurnedEllipse(Point center, double radiusX, double radiusY, double degrees) {
    const double turn = degrees * kPi / 180;
    std::vector<Point> points;
    for (int step = 0; step < 24; ++step) {
        const double x = radiusX * std::cos(step * kPi / 12), y = radiusY * std::sin(step * kPi / 12);
        points.push_back({center.x + x * std::cos(turn) - y * std::sin(turn),
                          center.y + x * std::sin(turn) + y * std::cos(turn)});
    }
    return points;
}

/// A star of `rays` points between two radii.
std::vector<Point> Star(Point center, double outer, double inner, int rays, double firstDegrees) {
    std::vector<Point> points;
    for (int i = 0; i < 2 * rays; ++i)
        points.push_back(OnCircle(center, i % 2 == 0 ? outer : inner, firstDegrees + i * 180.0 / rays));
    return points;
}

}  // namespace

Background Steel() {
    Path brush, light;
    for (int i = 1; i < 60; ++i) {  // Brushed: hairlines of uneven length, closest in the middle.
        const double y = i / 60.0 + 0.004 * std::sin(i * 2.7);
        const double left = 0.5 - 0.5 * std::abs(std::sin(i * 1.3)),
                     right = 0.5 + 0.5 * std::abs(std::cos(i * 0.9));
        (i % 3 == 0 ? light : brush).Move(left, y).Line(right, y);
    }
    return {
        "Background steel",
        {Wash("#FBFCFD", "#E9EDF1"), Drawn(Frame::Page(), std::move(brush), "#E3E8ED", 0.7),
         Drawn(Frame::Page(), std::move(light), "#FFFFFF", 1.2),
         Filled(Frame::Band(0, 0.012), Path().Rectangle(0, 0, 1, 1), "#CBD5DF", Fill::LeftToRight, "#E9EDF1"),
         Filled(Frame::Band(0.988, 1), Path().Rectangle(0, 0, 1, 1), "#E9EDF1", Fill::LeftToRight,
                "#CBD5DF")}};
}

Background HighTech() {
    // Circuit tracks that come in from the right edge and turn by 45 degrees, each ending in a pad.
    struct Track {
        double edge, bend, end, rise;
    };
    const Track tracks[] = {{0.10, 0.80, 0.52, 0.05},  {0.14, 0.74, 0.40, 0.05},  {0.18, 0.70, 0.56, 0.05},
                            {0.26, 0.86, 0.62, 0.08},  {0.30, 0.82, 0.46, 0.08},  {0.34, 0.78, 0.66, 0.08},
                            {0.46, 0.88, 0.70, -0.06}, {0.50, 0.84, 0.58, -0.06}, {0.54, 0.80, 0.72, 0.07},
                            {0.62, 0.90, 0.76, 0.07},  {0.66, 0.86, 0.64, 0.07},  {0.78, 0.90, 0.74, -0.05},
                            {0.82, 0.86, 0.66, -0.05}, {0.86, 0.82, 0.78, 0.04},  {0.92, 0.92, 0.70, 0.03}};
    Path lines, pads, dots;
    for (const Track& track : tracks) {
        const double turn = track.bend - std::abs(track.rise), y = track.edge + track.rise;
        lines.Move(1, track.edge)
            .Line(track.bend, track.edge)
            .Line(turn, y)
            .Line(std::min(track.end, turn), y);
        pads.Ellipse(std::min(track.end, turn) - 0.008, y, 0.008, 0.008);
        dots.Ellipse(track.bend + 0.05, track.edge, 0.004, 0.004);
    }
    const Frame corner = Frame::Square(1, 1, 0.5);
    return {"Background high-tech",
            {Wash("#FAFCFD", "#EFF5F8"), Drawn(corner, std::move(lines), "#D3E4EC", 1.6),
             Drawn(corner, std::move(pads), "#C3DAE5", 1.6), Filled(corner, std::move(dots), "#C3DAE5"),
             Filled({false, 0.994, 0, 1, 1, 0, 0, 0, 0}, Path().Rectangle(0, 0, 1, 1), "#D3E4EC",
                    Fill::BottomToTop, "#A9CBDB")}};
}

Background Stripes() {
    Path wide, thin;
    for (int i = 0; i < 18; ++i) {  // Slanted bands, cut where they meet the page's edges.
        const double at = i * 0.125 - 0.5;
        const auto band = [](double from, double to) {
            std::vector<Point> corners;
            const auto add = [&corners](double x, double y) {
                if (x >= -1e-9 && x <= 1 + 1e-9 && y >= -1e-9 && y <= 1 + 1e-9) corners.push_back({x, y});
            };
            const auto slant = [](double start, double y) { return start + 0.5 * y; };
            add(slant(from, 0), 0), add(slant(to, 0), 0);
            add(1, (1 - to) * 2), add(slant(to, 1), 1);
            if (slant(to, 1) > 1 && slant(from, 1) < 1) add(1, 1);
            add(slant(from, 1), 1), add(1, (1 - from) * 2);
            add(0, -from * 2);
            if (slant(from, 0) < 0 && slant(to, 0) > 0) add(0, 0);
            add(0, -to * 2);
            return corners;
        };
        for (const auto& [path, from, to] :
             {std::tuple{&wide, at, at + 0.062}, std::tuple{&thin, at + 0.075, at + 0.079}}) {
            std::vector<Point> corners = band(from, to);
            if (corners.size() < 3) continue;
            Point middle;
            for (const Point& corner : corners) middle.x += corner.x, middle.y += corner.y;
            middle.x /= static_cast<double>(corners.size()), middle.y /= static_cast<double>(corners.size());
            std::sort(corners.begin(), corners.end(), [middle](Point a, Point b) {
                return std::atan2(a.y - middle.y, a.x - middle.x) <
                       std::atan2(b.y - middle.y, b.x - middle.x);
            });
            path->Polygon(corners);
        }
    }
    return {"Background stripes",
            {Wash("#FCFCFB"), Filled(Frame::Page(), std::move(wide), "#F7F6F2"),
             Filled(Frame::Page(), std::move(thin), "#F0EDE4")}};
}

Background Web() {
    const Point hub{1, 1};
    const double spokes[] = {180, 192, 205, 219, 232, 244, 257, 270};
    const double radii[] = {0.16, 0.26, 0.37, 0.49, 0.62, 0.76, 0.91};
    Path rays, threads, dew;
    for (const double angle : spokes) {
        const Point end = OnCircle(hub, 0.995, angle);
        rays.Move(hub.x, hub.y).Line(end.x, end.y);
    }
    for (const double radius : radii) {
        for (std::size_t i = 0; i + 1 < std::size(spokes); ++i) {  // Threads sag towards the hub.
            const Point from = OnCircle(hub, radius, spokes[i]), to = OnCircle(hub, radius, spokes[i + 1]);
            const double middle = (spokes[i] + spokes[i + 1]) / 2;
            const Point sag = OnCircle(hub, radius * 0.90, middle);
            threads.Move(from.x, from.y)
                .Curve((from.x + 2 * sag.x) / 3, (from.y + 2 * sag.y) / 3, (to.x + 2 * sag.x) / 3,
                       (to.y + 2 * sag.y) / 3, to.x, to.y);
        }
    }
    for (const auto& [ring, spoke] : {std::pair{4, 2}, {2, 4}, {5, 5}, {3, 6}, {6, 3}, {1, 3}}) {
        const Point drop = OnCircle(hub, radii[ring], spokes[spoke]);
        dew.Ellipse(drop.x, drop.y, 0.006, 0.006);
    }
    const Frame corner = Frame::Square(0.95, 1, 1);
    return {"Background web",
            {Wash("#F8F9FB", "#FDFDFE"), Drawn(corner, std::move(rays), "#D6DCE6", 1.1),
             Drawn(corner, std::move(threads), "#D9DFE8", 1.1), Filled(corner, std::move(dew), "#CCD4E2")}};
}

Background Orbit() {
    const Point sun{0.5, 0.5};
    Path orbits, planets, glow, core, rings;
    struct Planet {
        double radius, angle, size;
    };
    for (const Planet& planet : {Planet{0.14, 40, 0.011}, Planet{0.23, 155, 0.017}, Planet{0.33, 285, 0.014},
                                 Planet{0.47, 20, 0.030}}) {
        orbits.SmoothClosed(TurnedEllipse(sun, planet.radius, planet.radius * 0.52, 24));
        const double turn = 24 * kPi / 180, x = planet.radius * std::cos(planet.angle * kPi / 180),
                     y = 0.52 * planet.radius * std::sin(planet.angle * kPi / 180);
        const Point at{sun.x + x * std::cos(turn) - y * std::sin(turn),
                       sun.y + x * std::sin(turn) + y * std::cos(turn)};
        planets.Ellipse(at.x, at.y, planet.size, planet.size);
        if (planet.size > 0.02)
            rings.SmoothClosed(TurnedEllipse(at, planet.size * 1.9, planet.size * 0.5, -18));
    }
    glow.Ellipse(sun.x, sun.y, 0.075, 0.075);
    core.Ellipse(sun.x, sun.y, 0.045, 0.045);
    const Frame frame = Frame::Square(0.92, 1, 0, 0.02);
    return {"Background orbit",
            {Wash("#FBFBFE", "#F1F2FA"), Drawn(frame, std::move(orbits), "#D2D6EB", 1.2),
             Filled(frame, std::move(glow), "#F8F3E6"), Filled(frame, std::move(core), "#F5EACD"),
             Filled(frame, std::move(planets), "#CDD2EA"), Drawn(frame, std::move(rings), "#C3C9E6", 1.4)}};
}

Background Compass() {
    const Point hub{0.5, 0.5};
    Path dial, ticks, long_, dark, light, minor;
    dial.Ellipse(0.5, 0.5, 0.5, 0.5).Ellipse(0.5, 0.5, 0.485, 0.485).Ellipse(0.5, 0.5, 0.41, 0.41);
    for (int degrees = 0; degrees < 360; degrees += 5) {
        const bool main = degrees % 30 == 0;
        const Point from = OnCircle(hub, main ? 0.41 : 0.45, degrees), to = OnCircle(hub, 0.485, degrees);
        (main ? long_ : ticks).Move(from.x, from.y).Line(to.x, to.y);
    }
    for (int ray = 0; ray < 8; ++ray) {  // Each ray in two halves, as if light came from one side.
        const double angle = ray * 45.0;
        const bool main = ray % 2 == 0;
        const Point tip = OnCircle(hub, main ? 0.39 : 0.24, angle);
        const Point left = OnCircle(hub, main ? 0.10 : 0.085, angle + 22.5 + (main ? 22.5 : 0)),
                    right = OnCircle(hub, main ? 0.10 : 0.085, angle - 22.5 - (main ? 22.5 : 0));
        if (main) {
            dark.Polygon({hub, tip, left});
            light.Polygon({hub, right, tip});
        } else {
            minor.Polygon({hub, left, tip, right});
        }
    }
    const Frame frame = Frame::Square(0.72, 1, 0, 0.07);
    return {"Background compass",
            {Wash("#FDFCFA", "#F8F4EC"), Drawn(frame, std::move(dial), "#E6DDCB", 1.2),
             Drawn(frame, std::move(ticks), "#E9E1D1", 0.9), Drawn(frame, std::move(long_), "#DDD1B8", 1.4),
             Filled(frame, std::move(minor), "#F0E9DB"), Filled(frame, std::move(light), "#F4EEE2"),
             Filled(frame, std::move(dark), "#E8DFCC"),
             Filled(frame, Path().Ellipse(0.5, 0.5, 0.022, 0.022), "#FBF8F2")}};
}

Background None() {
    return {"Background none", {}};
}

Background Geometric() {
    // A net of triangles over the lower right: the knots of a grid, moved a little from their places.
    const int columns = 8, rows = 8;
    const auto knot = [&](int column, int row) {
        double x = static_cast<double>(column) / columns, y = static_cast<double>(row) / rows;
        if (column > 0 && column < columns) x += 0.034 * std::sin(column * 12.9 + row * 78.2);
        if (row > 0 && row < rows) y += 0.034 * std::sin(column * 39.3 + row * 11.1);
        return Point{x, y};
    };
    Path tones[4];
    const char* colors[] = {"#F6F9FA", "#F1F5F8", "#EBF1F5", "#E5EDF2"};
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const double reach = static_cast<double>(column) / columns -
                                 static_cast<double>(row) / rows;  // Fades to the upper left.
            const Point a = knot(column, row), b = knot(column + 1, row), c = knot(column + 1, row + 1),
                        d = knot(column, row + 1);
            int which = 0;
            for (const auto& triangle : {std::vector<Point>{a, b, c}, std::vector<Point>{a, c, d}}) {
                const double shade = reach + 0.55 * std::sin(column * 4.1 + row * 7.7 + which * 2.3);
                ++which;
                if (reach < -0.15) continue;
                const double depth = std::min(shade, reach + 0.45);
                tones[depth > 0.8 ? 3 : depth > 0.5 ? 2 : depth > 0.25 ? 1 : 0].Polygon(triangle);
            }
        }
    }
    Background background{"Background geometric", {Wash("#FBFCFD", "#F5F8FA")}};
    for (int i = 0; i < 4; ++i) {
        if (!tones[i].Empty())
            background.layers.push_back(Filled(Frame::Square(1, 1, 0), std::move(tones[i]), colors[i]));
    }
    return background;
}

Background Cosmic() {
    const Point dipper[] = {{0.52, 0.80}, {0.60, 0.83},  {0.66, 0.79}, {0.735, 0.765},
                            {0.75, 0.69}, {0.855, 0.70}, {0.85, 0.785}};
    const Point crown[] = {{0.62, 0.30}, {0.69, 0.22}, {0.76, 0.32}, {0.83, 0.20}, {0.90, 0.29}};
    Path links, stars, dust, flares, haze[4];
    links.Polyline({std::begin(dipper), std::end(dipper)}).Line(dipper[3].x, dipper[3].y);
    links.Polyline({std::begin(crown), std::end(crown)});
    for (const Point& star : dipper) stars.Ellipse(star.x, star.y, 0.006, 0.006);
    for (const Point& star : crown) stars.Ellipse(star.x, star.y, 0.006, 0.006);
    for (int i = 1; i < 80; ++i) {  // Spread evenly by the golden ratio, denser to the right.
        const double x = std::sqrt(std::fmod(i * 0.6180339887, 1.0)), y = std::fmod(i * 0.7548776662, 1.0),
                     size = 0.0014 + 0.0011 * (i % 3);
        dust.Ellipse(0.01 + 0.98 * x, 0.01 + 0.98 * y, size, size);
    }
    for (const auto& [x, y, size] :
         {std::tuple{0.93, 0.90, 0.030}, {0.47, 0.55, 0.018}, {0.94, 0.50, 0.022}, {0.54, 0.12, 0.020}})
        flares.Polygon(Star({x, y}, size, size * 0.16, 4, 90));
    for (int i = 0; i < 4; ++i)
        haze[i].SmoothClosed(TurnedEllipse({0.62, 0.5}, 0.38 - 0.05 * i, 0.15 - 0.032 * i, 38));
    const Frame frame = Frame::Square(1, 1, 0.5);
    return {"Background cosmic",
            {Wash("#F4F3FB", "#FBFAFD"), Filled(frame, std::move(haze[0]), "#F4F2FB"),
             Filled(frame, std::move(haze[1]), "#F1EFFA"), Filled(frame, std::move(haze[2]), "#EEEBF8"),
             Filled(frame, std::move(haze[3]), "#EAE7F6"), Filled(frame, std::move(dust), "#D5D0EA"),
             Drawn(frame, std::move(links), "#DAD6EC", 0.9), Filled(frame, std::move(stars), "#C3BCE0"),
             Filled(frame, std::move(flares), "#CDC7E6")}};
}

}  // namespace norvelis::drawing::stencils
