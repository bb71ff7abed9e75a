#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace norvelis::repair {

/// From the lines of a repaired report to those of the file. Lines count from 1.
class LineMap {
  public:
    /// From `repaired` on, lines follow `onDisk` one by one. To be called in order of lines.
    void ContinueAt(std::size_t repaired, std::size_t onDisk) {
        if (OnDisk(repaired) != onDisk) stretches_.push_back({repaired, onDisk});
    }

    std::size_t OnDisk(std::size_t repaired) const {
        const auto behind =
            std::upper_bound(stretches_.begin(), stretches_.end(), repaired,
                             [](std::size_t line, const Stretch& s) { return line < s.repaired; });
        if (behind == stretches_.begin()) return repaired;
        const Stretch& stretch = *std::prev(behind);
        return stretch.onDisk + (repaired - stretch.repaired);
    }

  private:
    struct Stretch {
        std::size_t repaired, onDisk;
    };
    std::vector<Stretch> stretches_;
};

}  // namespace norvelis::repair
