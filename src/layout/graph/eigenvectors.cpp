#include "layout/graph/eigenvectors.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace norvelis::layout {

namespace {

constexpr int kIterations = 300;

using Vector = std::vector<double>;

class PowerIteration {
  public:
    explicit PowerIteration(const std::vector<std::vector<int>>& neighbours) : neighbours_(neighbours) {
        for (const auto& of : neighbours)
            degree_.push_back(static_cast<double>(std::max<std::size_t>(of.size(), 1)));
    }

    /// Any vector that favours no vertex's neighbours; the same for equal graphs.
    Vector Start(double frequency) const {
        Vector vector;
        for (std::size_t i = 0; i < degree_.size(); ++i)
            vector.push_back(std::sin(frequency * static_cast<double>(i + 1)));
        return vector;
    }

    /// Each vertex goes halfway to the mean of its neighbours.
    void Step(Vector& vector) const {
        Vector next(vector.size());
        for (std::size_t i = 0; i < vector.size(); ++i) {
            double sum = 0;
            for (const int other : neighbours_[i]) sum += vector[static_cast<std::size_t>(other)];
            next[i] = (vector[i] + sum / degree_[i]) / 2;
        }
        vector = std::move(next);
    }

    void RemovePart(Vector& vector, const Vector& along) const {
        const double share = Product(vector, along) / std::max(Product(along, along), 1e-300);
        for (std::size_t i = 0; i < vector.size(); ++i) vector[i] -= share * along[i];
    }

    void Normalize(Vector& vector) const {
        const double length = std::sqrt(std::max(Product(vector, vector), 1e-300));
        for (double& value : vector) value /= length;
    }

  private:
    double Product(const Vector& a, const Vector& b) const {
        double product = 0;
        for (std::size_t i = 0; i < a.size(); ++i) product += a[i] * b[i] * degree_[i];
        return product;
    }

    const std::vector<std::vector<int>>& neighbours_;
    Vector degree_;
};

}  // namespace

std::vector<Point> SpectralPlaces(const std::vector<std::vector<int>>& neighbours) {
    const PowerIteration power(neighbours);
    const Vector same(neighbours.size(), 1.0);
    Vector x = power.Start(12.9898), y = power.Start(78.233);
    for (int i = 0; i < kIterations; ++i) {
        power.Step(x);
        power.RemovePart(x, same);
        power.Normalize(x);
        power.Step(y);
        power.RemovePart(y, same);
        power.RemovePart(y, x);
        power.Normalize(y);
    }
    std::vector<Point> places;
    for (std::size_t i = 0; i < x.size(); ++i) places.push_back({x[i], y[i]});
    return places;
}

}  // namespace norvelis::layout
