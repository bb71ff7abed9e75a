#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "browse/record_tree.h"
#include "core/host.h"

namespace norvelis {

/// For each text of the tree, by its id, whether it holds `text`; upper and lower case are different letters.
/// Few texts are on many nodes, so each is compared once.
std::vector<bool> MatchingTexts(const RecordTree& tree, std::string_view text);

/// The search of the tree screens. The button's caption is its mode: SEARCH starts at the top, NEXT goes on
/// behind the last hit; it never wraps by itself.
class RecordSearch {
  public:
    const std::string& Caption() const { return caption_; }
    std::optional<NodeIndex> LastNode() const { return lastNode_; }

    /// The search text was changed.
    void TextChanged() { caption_ = "SEARCH"; }

    /// The search button, with what is in the text box. The result is a node to select, colour red and
    /// bring into view; nothing when a box has answered instead.
    std::optional<NodeIndex> Click(Host& host, const RecordTree& tree, std::string_view text);

    /// The next node whose text holds `text` as it is.
    std::optional<NodeIndex> Search(Host& host, const RecordTree& tree, std::string_view text);

  private:
    std::string caption_ = "SEARCH";
    std::optional<NodeIndex> lastNode_;
};

}  // namespace norvelis
