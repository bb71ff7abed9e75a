#include <cstdio>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>

#include "base/text.h"
#include "browse/record_search.h"
#include "browse/tree_load.h"
#include "cli/command.h"
#include "cli/find_names.h"

namespace norvelis::cli {

namespace {

/// A list of nodes, one line each, or as a JSON array; written as it comes, for a tree can be a million lines
/// long.
class NodeList {
  public:
    NodeList(const RecordTree& tree, bool json) : tree_(tree), json_(json) {
        if (json_) std::fputs("[", stdout);
    }
    ~NodeList() {
        if (json_) std::fputs("\n]\n", stdout);
    }
    NodeList(const NodeList&) = delete;
    NodeList& operator=(const NodeList&) = delete;

    void Add(NodeIndex node, int level, const std::string& line) {
        if (!json_) {
            std::printf("%s\n", line.c_str());
            return;
        }
        const nlohmann::ordered_json entry = {{"level", level},
                                              {"text", tree_.Text(node)},
                                              {"schema", tree_.Schema(node)},
                                              {"key", tree_.Key(node)}};
        std::printf("%s\n  %s", first_ ? "" : ",",
                    entry.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
        first_ = false;
    }

  private:
    const RecordTree& tree_;
    bool json_;
    bool first_ = true;
};

RecordTree LoadTree(CommandContext& context) {
    context.OpenStore();
    return loadnodesfromaccess(*context.app, *context.app->gConnection, kTreeview);
}

// Without a schema: all of them. One may have an empty name.
int PrintTree(CommandContext& context, const std::optional<std::string>& schema, int depth, bool json) {
    const RecordTree tree = LoadTree(context);
    NodeIndex begin = 0, end = tree.Size();
    if (schema) {
        const auto roots = tree.Roots();
        const auto root = std::find_if(roots.begin(), roots.end(),
                                       [&](NodeIndex node) { return SameName(tree.Text(node), *schema); });
        if (root == roots.end()) return Refuse("there is no schema " + *schema + " in the dictionary");
        begin = *root;
        end = tree.SubtreeEnd(*root);
    }
    NodeList list(tree, json);
    std::vector<NodeIndex> branch;  // the nodes above the present one
    for (NodeIndex node = begin; node < end; ++node) {
        while (!branch.empty() && tree.Parent(node) != branch.back()) branch.pop_back();
        const int level = static_cast<int>(branch.size()) + 1;
        if (depth == 0 || level <= depth) {
            list.Add(node, level, std::string(branch.size() * 2, ' ') + tree.Text(node));
        }
        branch.push_back(node);
    }
    return kDone;
}

/// "schema > record > … > node"
std::string PathOf(const RecordTree& tree, NodeIndex node) {
    std::string path = tree.Text(node);
    while ((node = tree.Parent(node)) != kNoNode) path = tree.Text(node) + " > " + path;
    return path;
}

int Find(CommandContext& context, const std::string& text, bool json) {
    const std::string wanted = UpperCase(Trim(text));
    if (wanted.empty()) return Refuse("Please type the record to locate");
    const RecordTree tree = LoadTree(context);
    const std::vector<bool> matches = MatchingTexts(tree, wanted);
    int hits = 0;
    {
        NodeList list(tree, json);
        for (NodeIndex node = 0; node < tree.Size(); ++node) {
            if (!matches[tree.TextIdOf(node)]) continue;
            list.Add(node, tree.Level(node), json ? "" : PathOf(tree, node));
            ++hits;
        }
    }
    return hits > 0 ? kDone : Refuse("End of search for record: " + wanted);
}

void AddFind(CLI::App& program, CommandContext& context) {
    auto* find = program.add_subcommand(
        "find", "Print every place in the tree whose name holds a text, or what else has a name");
    auto options = std::make_shared<FindOptions>();
    find->add_option(
            "TEXT", options->text,
            "Part of a name, in any letter case; field: set: index: area: id: record: schema: in front "
            "look for these, and then * and ? are wild cards")
        ->required();
    find->add_option("--in", options->in,
                     "Not in the tree but among the names of these, separated by commas: schemas, records, "
                     "fields, sets, indexes, areas, ids; * and ? are wild cards")
        ->type_name("KINDS")
        ->delimiter(',')
        ->allow_extra_args(false)  // TEXT may follow.
        ->check(CheckFindKind);
    find->add_flag("--where-used", options->whereUsed,
                   "The records that have a field of this name or of this ending");
    find->add_flag("--json", options->json, "As a JSON array in the order of the lines");
    find->callback([&context, options] {
        context.run = [&context, options] {
            return options->IsForNames() ? FindNames(context, *options)
                                         : Find(context, options->text, options->json);
        };
    });
}

}  // namespace

void AddBrowseCommands(CLI::App& program, CommandContext& context) {
    auto* tree = program.add_subcommand("tree", "Print the record tree: schemas, entry records, members");
    struct Options {
        std::string schema;
        int depth = 0;
        bool json = false;
    };
    auto options = std::make_shared<Options>();

    tree->add_option("SCHEMA", options->schema, "This schema only");
    tree->add_option("--depth", options->depth, "Levels to print, the schemas being level 1 (default: all)")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()));
    tree->add_flag("--json", options->json, "As a JSON array in the order of the tree");
    tree->callback([&context, options, tree] {
        const bool one = tree->count("SCHEMA") > 0;
        context.run = [&context, options, one] {
            return PrintTree(context, one ? std::optional(options->schema) : std::nullopt, options->depth,
                             options->json);
        };
    });

    AddFind(program, context);
    AddRecordList(program, context);
}

}  // namespace norvelis::cli
