#include "scheduler/store_queue.h"

#include <utility>

#include "base/text.h"
#include "core/store_wait.h"

namespace norvelis {

std::optional<Job> StoreQueue::TakeDue(DateTime now) {
    const std::vector<Job> jobs = WaitForStore(app_.host, [&] { return DueJobs(*app_.gConnection, now); });
    leftOne_ = false;
    for (const Job& job : jobs) {
        if (passedOver_.contains(job.scheduleid)) continue;
        if (HasNoReport(job)) return job;
        auto claim = JobClaim::Take(app_, std::string(Trim(job.name)));
        if (!claim) {
            leftOne_ = true;
            continue;
        }
        // Who had the claim before may have run the row since the list was read.
        auto row = WaitForStore(app_.host, [&] { return DueJob(*app_.gConnection, job.scheduleid, now); });
        if (!row || Trim(row->name) != Trim(job.name)) continue;
        claim_ = std::move(claim);
        return row;
    }
    return std::nullopt;
}

void StoreQueue::MarkProcessed(const Job& job, const std::string& visiofile) {
    WaitForStore(app_.host, [&] { return MarkJobProcessed(*app_.gConnection, job.scheduleid, visiofile); });
}

}  // namespace norvelis
