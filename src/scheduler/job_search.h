#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "core/host.h"
#include "scheduler/job_tree.h"

namespace norvelis {

/// The search of the scheduler screen through the jobs that have not run, then those that have. The button's
/// caption is its mode: "Search" starts at the top, "Next" goes on behind the last hit; it never wraps by
/// itself. Letter case does not count, since names of jobs are free text.
class JobSearch {
  public:
    const std::string& Caption() const { return caption_; }

    /// The search text was changed.
    void TextChanged() { caption_ = "Search"; }

    struct Hit {
        bool processed;  ///< In which of the trees.
        std::size_t job;
        std::optional<std::size_t> field;  ///< Nothing: the job itself.
    };
    /// The search button, with what is in the text box. Nothing when a box has answered instead.
    std::optional<Hit> Click(Host& host, const JobTree& unprocessed, const JobTree& processed,
                             std::string_view text);

  private:
    std::optional<Hit> Search(const JobTree& unprocessed, const JobTree& processed,
                              const std::string& upperCased);

    std::string caption_ = "Search";
    std::size_t behindLast_ = 0;  ///< Counted through both trees.
};

}  // namespace norvelis
