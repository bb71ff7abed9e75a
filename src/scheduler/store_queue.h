#pragma once

#include <cstdint>
#include <optional>
#include <unordered_set>

#include "core/app_state.h"
#include "scheduler/job_folder.h"
#include "scheduler/job_queue.h"

namespace norvelis {

/// The jobs of the open store. A row is taken together with the claim on its folder, so that no two programs
/// run it or work in one folder; a row whose folder somebody else has is left until that is free. A store in
/// which another program is in the middle of a change is waited for.
class StoreQueue : public JobQueue {
  public:
    explicit StoreQueue(AppState& app) : app_(app) {}

    std::optional<Job> TakeDue(DateTime now) override;
    void Release() override { claim_.reset(); }
    void MarkProcessed(const Job& job, const std::string& visiofile) override;

    /// The last TakeDue left a due row to somebody else, who has its folder.
    bool LeftOne() const { return leftOne_; }

    /// Takes this row no more.
    void PassOver(std::int64_t scheduleid) { passedOver_.insert(scheduleid); }

  private:
    AppState& app_;
    std::optional<JobClaim> claim_;
    bool leftOne_ = false;
    std::unordered_set<std::int64_t> passedOver_;
};

}  // namespace norvelis
