#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/random.h"
#include "scheduler/jobs.h"

namespace norvelis {

/// Jobs as a tree shows them: a node with the name for each, below it one for each field that is not blank.
/// Only the jobs are kept; texts and keys of the fields are made when they are asked for.
class JobTree {
  public:
    JobTree() = default;
    JobTree(std::vector<Job> jobs, Random& random);

    std::size_t Size() const { return jobs_.size(); }  ///< Of the jobs.
    const Job& At(std::size_t job) const { return jobs_[job]; }
    std::vector<std::string> Fields(std::size_t job) const;

    /// The job's scheduleid, "*X*" and a text that no other node has.
    std::string Key(std::size_t job) const;
    /// "S**" and such a text.
    std::string FieldKey(std::size_t job, std::size_t field) const;

  private:
    std::string UniqueText(std::size_t job, std::size_t node) const;

    std::vector<Job> jobs_;
    std::uint64_t guidHigh_ = 0, guidLow_ = 0;
};

/// What the store holds, by name.
struct JobTrees {
    JobTree unprocessed, processed;
};
JobTrees LoadJobTrees(Connection& store, Random& random);

/// The scheduleid in the key of a node, which the screen carries as a number of 16 bits: RuntimeFailure 6 for
/// a larger one. Nothing for the key of a field.
std::optional<std::int16_t> ScheduleIdIn(std::string_view key);

}  // namespace norvelis
