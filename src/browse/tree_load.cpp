#include "browse/tree_load.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/failure.h"
#include "base/name_key.h"
#include "browse/next_step.h"
#include "core/log.h"
#include "dictionary/findings.h"
#include "dictionary/records.h"
#include "dictionary/schemas.h"
#include "store/store_failure.h"

namespace norvelis {

const TreeVariant kTreeview{true, dictionary::EntryRecordsByName};
const TreeVariant kTreeviewMax{false, dictionary::EntryRecords};

namespace {

/// Who owns whom: all records of the store with their members, read by one statement. Of several records of
/// one name the first counts, as in a look-up by name.
class MemberLists {
  public:
    using RecordId = std::uint32_t;
    struct Member {
        RecordTree::TextId text;
        RecordId record;
    };
    struct Record {
        std::string loadingText;  ///< Kept ready: it is shown at every node of the record.
        std::vector<Member> members;
    };

    MemberLists(Connection& store, RecordTreeBuilder& tree) {
        std::vector<std::string> lists;
        auto rows = dictionary::MemberLists(store);
        for (; !rows.Eof(); rows.MoveNext()) {
            const std::string name = rows.Text("Recordname");
            if (!ids_.try_emplace(NameKey(name), static_cast<RecordId>(records_.size())).second) continue;
            records_.push_back({"Loading... " + name + " Please wait...", {}});
            lists.push_back(rows.Text("next_step"));
        }
        for (std::size_t i = 0; i < lists.size(); ++i) {
            for (const std::string& item : SplitNextStep(lists[i])) {
                const std::string_view name = Trim(item);
                if (const auto record = Find(name))
                    records_[i].members.push_back({tree.Intern(name), *record});
            }
        }
    }

    std::optional<RecordId> Find(std::string_view name) const {
        const auto entry = ids_.find(NameKey(name));
        if (entry == ids_.end()) return std::nullopt;
        return entry->second;
    }
    const Record& operator[](RecordId record) const { return records_[record]; }
    std::size_t Size() const { return records_.size(); }

  private:
    std::unordered_map<std::string, RecordId> ids_;
    std::vector<Record> records_;
};

class TreeLoader {
  public:
    TreeLoader(AppState& app, Connection& store, const TreeVariant& variant, NodeIndex mostNodes)
        : app_(app), store_(store), variant_(variant), mostNodes_(mostNodes), tree_(app.random) {}

    RecordTree loadnodesfromaccess() {
        ShowText(Bar::TreeviewText, "Retrieving Records Details..");
        Guarded("loadnodesfromaccess", [this] {
            RequireFile();
            auto schemas = dictionary::SchemasByName(store_);
            for (; !schemas.Eof(); schemas.MoveNext()) {
                const std::string schema = schemas.Text("schemaname");
                const NodeIndex root = tree_.Add(kNoNode, tree_.Intern(schema));
                Guarded("loadrecords", [&] { loadrecords(schema, root); });
            }
        });
        MarkIncomplete();
        return std::move(tree_).Complete();
    }

  private:
    /// An open store can be read after its file was removed, and nobody would know.
    void RequireFile() const {
        if (HasVanished(store_.Path())) ThrowVanished(store_.Path());
    }

    void MarkIncomplete() {
        try {
            auto records = dictionary::IncompleteRecords(store_);
            for (; !records.Eof(); records.MoveNext())
                tree_.MarkIncomplete(records.Text("schemaname"), records.Text("Recordname"));
        } catch (const RuntimeFailure&) {
            // A tree without its marks; what else the store refused is in the log.
        }
    }

    void loadrecords(const std::string& schema, NodeIndex root) {
        if (variant_.showsProgress) {
            ShowText(Bar::TreeviewText, "Retrieving Records Details..");
            app_.progress.SetVisible(Bar::BackgroundValue, true);
            const auto count = static_cast<int>(dictionary::CountEntryRecords(store_, schema));
            app_.progress.BResetprogressbar(Bar::BackgroundValue, count);
            app_.progress.BResetprogressbar(Bar::TreeviewValue, count);
        }
        auto records = variant_.entryRecords(store_, schema);
        for (; !records.Eof(); records.MoveNext()) {
            const std::string record = records.Text("recordname");
            if (variant_.showsProgress) {
                app_.progress.BStepprogressbar(Bar::BackgroundValue, 1, record);
                app_.progress.BStepprogressbar(Bar::TreeviewValue, 1, record);
            }
            app_.host.Yield();
            const std::string text = "Loading... " + record + " Please wait...";
            ShowText(Bar::BackgroundText, text);
            ShowText(Bar::TreeviewText, text);
            const NodeIndex node = tree_.Add(root, tree_.Intern(record));
            if (addsMembers_) {
                addsMembers_ = Guarded("loadchildren", [&] { loadchildren(record, node); });
            }
        }
        if (variant_.showsProgress) app_.progress.SetVisible(Bar::BackgroundValue, false);
    }

    /// The members of one record and all below them. The branch being walked is a stack of its own, for a
    /// chain of sets can be longer than the machine's stack is deep.
    void loadchildren(const std::string& name, NodeIndex node) {
        if (!lists_) {
            lists_.emplace(store_, tree_);
            onPath_.assign(lists_->Size(), false);
        }
        branch_.clear();
        onPath_.assign(onPath_.size(), false);
        if (const auto record = lists_->Find(name)) Enter(*record, node);
        while (!branch_.empty()) {
            Step& step = branch_.back();
            const auto& members = (*lists_)[step.record].members;
            if (step.next == members.size()) {
                onPath_[step.record] = false;
                branch_.pop_back();
                continue;
            }
            const auto [text, record] = members[step.next++];
            if (tree_.Size() >= mostNodes_) {
                throw RuntimeFailure(FailureNumber::Overflow, "the record tree has more than " +
                                                                  std::to_string(mostNodes_) + " nodes");
            }
            const NodeIndex child = tree_.Add(step.node, text);
            app_.host.Yield();
            if (!onPath_[record]) Enter(record, child);
        }
    }

    void Enter(MemberLists::RecordId record, NodeIndex node) {
        const auto& [loadingText, members] = (*lists_)[record];
        if (members.empty()) return;
        ShowText(Bar::TreeviewText, loadingText);
        ShowText(Bar::TreeviewValue, loadingText);
        onPath_[record] = true;
        branch_.push_back({record, node, 0});
    }

    void ShowText(Bar bar, std::string_view text) {
        if (variant_.showsProgress) app_.progress.SetText(bar, text);
    }

    /// False when the step failed, which is then in the log.
    template <typename Step>
    bool Guarded(std::string_view procedure, const Step& step) {
        try {
            step();
            return true;
        } catch (const RuntimeFailure& failure) {
            WriteToErrorLog(app_, "frmTreeview", procedure, failure.what(),
                            static_cast<int>(failure.Number()));
            return false;
        }
    }

    struct Step {
        MemberLists::RecordId record;
        NodeIndex node;
        std::size_t next;  ///< The member to add next.
    };

    AppState& app_;
    Connection& store_;
    const TreeVariant& variant_;
    const NodeIndex mostNodes_;
    RecordTreeBuilder tree_;
    std::optional<MemberLists> lists_;
    std::vector<Step> branch_;
    std::vector<bool> onPath_;
    bool addsMembers_ = true;  ///< Off after a failure that every further record would meet again.
};

}  // namespace

RecordTree loadnodesfromaccess(AppState& app, Connection& store, const TreeVariant& variant,
                               NodeIndex mostNodes) {
    return TreeLoader(app, store, variant, mostNodes).loadnodesfromaccess();
}

RecordTree process_Refresh(AppState& app, Connection& store, const TreeVariant& variant) {
    if (!variant.showsProgress) return loadnodesfromaccess(app, store, variant);
    static constexpr Bar kShown[] = {Bar::TreeviewText, Bar::TreeviewValue, Bar::BackgroundValue};
    const ShownBars bars(app.progress, kShown);
    return loadnodesfromaccess(app, store, variant);
}

}  // namespace norvelis
