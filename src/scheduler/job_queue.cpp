#include "scheduler/job_queue.h"

#include "base/failure.h"
#include "base/text.h"

namespace norvelis {

void RunAndMark(JobQueue& jobs, const Job& job, const JobRun& run) {
    if (HasNoReport(job)) return;
    Job trimmed = job;
    trimmed.name = Trim(job.name);
    trimmed.idmsreport = Trim(job.idmsreport);
    run(trimmed);
    jobs.MarkProcessed(trimmed, VisioFileOf(trimmed.idmsreport));
}

bool HasNoReport(const Job& job) {
    return Trim(job.idmsreport).empty();
}

std::string VisioFileOf(std::string_view reportPath) {
    constexpr int kEndingLength = 3;
    for (int i = 0; i < kEndingLength; ++i) {
        if (reportPath.empty()) throw RuntimeFailure(FailureNumber::InvalidCall);
        // A character is one byte and the bytes that continue it.
        const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; };
        while (reportPath.size() > 1 && continues(reportPath.back())) reportPath.remove_suffix(1);
        reportPath.remove_suffix(1);
    }
    return std::string(reportPath) + "vsd";
}

}  // namespace norvelis
