#include "browse/record_search.h"

#include "base/text.h"

namespace norvelis {

std::vector<bool> MatchingTexts(const RecordTree& tree, std::string_view text) {
    std::vector<bool> matches(tree.TextCount());
    for (RecordTree::TextId id = 0; id < matches.size(); ++id) {
        matches[id] = tree.TextOf(id).find(text) != std::string::npos;
    }
    return matches;
}

std::optional<NodeIndex> RecordSearch::Click(Host& host, const RecordTree& tree, std::string_view text) {
    text = Trim(text);
    if (text.empty() || text == "TYPE HERE") {
        host.MessageBox("Please type the record to locate");
        return std::nullopt;
    }
    const clsHourglass hourglass(host);
    return Search(host, tree, UpperCase(text));
}

std::optional<NodeIndex> RecordSearch::Search(Host& host, const RecordTree& tree, std::string_view text) {
    const std::vector<bool> matches = MatchingTexts(tree, text);
    for (NodeIndex node = caption_ == "NEXT" && lastNode_ ? *lastNode_ + 1 : 0; node < tree.Size(); ++node) {
        if (!matches[tree.TextIdOf(node)]) continue;
        caption_ = "NEXT";
        lastNode_ = node;
        return node;
    }
    host.MessageBox({"End of search for record: " + std::string(text), "Search Results", Buttons::Ok,
                     Icon::Information, Answer::Ok});
    caption_ = "SEARCH";
    lastNode_.reset();
    return std::nullopt;
}

}  // namespace norvelis
