#include "scheduler/job_search.h"

#include "base/text.h"

namespace norvelis {

std::optional<JobSearch::Hit> JobSearch::Click(Host& host, const JobTree& unprocessed,
                                               const JobTree& processed, std::string_view text) {
    text = Trim(text);
    if (text.empty() || EqualIgnoringCase(text, "TYPE HERE")) {
        host.MessageBox("Please type the record to locate");
        return std::nullopt;
    }
    if (caption_ == "Search") behindLast_ = 0;
    const std::string wanted = UpperCase(text);
    const auto hit = Search(unprocessed, processed, wanted);
    caption_ = hit ? "Next" : "Search";
    if (!hit)
        host.MessageBox({"End of search for record: " + wanted, "Search Results", Buttons::Ok,
                         Icon::Information, Answer::Ok});
    return hit;
}

std::optional<JobSearch::Hit> JobSearch::Search(const JobTree& unprocessed, const JobTree& processed,
                                                const std::string& upperCased) {
    std::size_t node = 0;
    const auto isHit = [&](const std::string& text) {
        if (node++ < behindLast_ || UpperCase(text).find(upperCased) == std::string::npos) return false;
        behindLast_ = node;
        return true;
    };
    for (const bool isProcessed : {false, true}) {
        const JobTree& tree = isProcessed ? processed : unprocessed;
        for (std::size_t job = 0; job < tree.Size(); ++job) {
            if (isHit(tree.At(job).name)) return Hit{isProcessed, job, std::nullopt};
            const auto fields = tree.Fields(job);
            for (std::size_t field = 0; field < fields.size(); ++field) {
                if (isHit(fields[field])) return Hit{isProcessed, job, field};
            }
        }
    }
    return std::nullopt;
}

}  // namespace norvelis
