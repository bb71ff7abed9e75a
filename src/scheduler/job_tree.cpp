#include "scheduler/job_tree.h"

#include <cstring>
#include <limits>

#include "base/failure.h"
#include "base/text.h"

namespace norvelis {

namespace {

constexpr std::string_view kJobMark = "*X*", kFieldMark = "S**";
constexpr std::size_t kMostNodes = 16;  ///< Of one job, itself included; there are eight fields.

}  // namespace

JobTree::JobTree(std::vector<Job> jobs, Random& random)
    : jobs_(std::move(jobs)), guidHigh_(random.Bits()), guidLow_(random.Bits()) {}

std::vector<std::string> JobTree::Fields(std::size_t job) const {
    const Job& row = jobs_[job];
    std::vector<std::string> fields;
    const auto add = [&fields](const std::string& text) {
        if (!Trim(text).empty()) fields.push_back(text);
    };
    add(row.address.value_or(""));
    add(row.tel.value_or(""));
    add(row.fax.value_or(""));
    add(row.email.value_or(""));
    add(DueText(row));
    add(row.idmsreport);
    add(row.processed ? "YES" : "NO");
    add(row.visiofile.value_or(""));
    return fields;
}

std::string JobTree::UniqueText(std::size_t job, std::size_t node) const {
    const std::uint64_t guid[] = {guidHigh_, guidLow_ + job * kMostNodes + node};
    unsigned char bytes[sizeof guid];
    std::memcpy(bytes, guid, sizeof guid);
    return HexText(bytes);
}

std::string JobTree::Key(std::size_t job) const {
    return std::to_string(jobs_[job].scheduleid) + std::string(kJobMark) + UniqueText(job, 0);
}

std::string JobTree::FieldKey(std::size_t job, std::size_t field) const {
    return std::string(kFieldMark) + UniqueText(job, field + 1);
}

JobTrees LoadJobTrees(Connection& store, Random& random) {
    std::vector<Job> unprocessed, processed;
    for (Job& job : ListJobs(store)) (job.processed ? processed : unprocessed).push_back(std::move(job));
    return {JobTree(std::move(unprocessed), random), JobTree(std::move(processed), random)};
}

std::optional<std::int16_t> ScheduleIdIn(std::string_view key) {
    const auto mark = key.find(kJobMark);
    if (mark == std::string_view::npos) return std::nullopt;
    const double id = Val(key.substr(0, mark));
    using Limits = std::numeric_limits<std::int16_t>;
    if (id < Limits::min() || id > Limits::max()) throw RuntimeFailure(FailureNumber::Overflow);
    return static_cast<std::int16_t>(id);
}

}  // namespace norvelis
