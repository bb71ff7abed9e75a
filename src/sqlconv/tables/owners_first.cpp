#include <algorithm>
#include <limits>

#include "base/name_key.h"
#include "sqlconv/tables/build.h"

namespace norvelis::tables {

namespace {

/// Strongly connected components after Tarjan, without recursion: a chain of sets may be long. An edge goes
/// from a member to its owner, so components come out owners first.
class Components {
  public:
    explicit Components(std::vector<std::vector<std::size_t>> owners)
        : owners_(std::move(owners)),
          number_(owners_.size(), kUnseen),
          low_(owners_.size()),
          of_(owners_.size(), kUnseen) {
        for (std::size_t node = 0; node < owners_.size(); ++node) {
            if (number_[node] == kUnseen) Visit(node);
        }
    }

    const std::vector<std::vector<std::size_t>>& InOrder() const { return components_; }
    /// Whether both are on one cycle.
    bool Together(std::size_t a, std::size_t b) const { return of_[a] == of_[b]; }

  private:
    static constexpr std::size_t kUnseen = std::numeric_limits<std::size_t>::max();
    struct Step {
        std::size_t node, next;
    };

    void Visit(std::size_t first) {
        std::vector<Step> path{Enter(first)};
        while (!path.empty()) {
            auto& [node, next] = path.back();
            if (next < owners_[node].size()) {
                const std::size_t owner = owners_[node][next++];
                if (number_[owner] == kUnseen) {
                    path.push_back(Enter(owner));
                } else if (of_[owner] == kUnseen) {
                    low_[node] = std::min(low_[node], number_[owner]);
                }
                continue;
            }
            const std::size_t done = node;
            path.pop_back();
            if (low_[done] == number_[done]) Close(done);
            if (!path.empty()) low_[path.back().node] = std::min(low_[path.back().node], low_[done]);
        }
    }

    Step Enter(std::size_t node) {
        number_[node] = low_[node] = count_++;
        open_.push_back(node);
        return {node, 0};
    }

    void Close(std::size_t root) {
        std::vector<std::size_t> component;
        for (std::size_t node = kUnseen; node != root;) {
            node = open_.back();
            open_.pop_back();
            of_[node] = components_.size();
            component.push_back(node);
        }
        std::ranges::sort(component);
        components_.push_back(std::move(component));
    }

    std::vector<std::vector<std::size_t>> owners_, components_;
    std::vector<std::size_t> number_, low_, of_, open_;
    std::size_t count_ = 0;
};

struct Relation {
    std::size_t member, owner;
    ForeignKey* key;
    bool required;
};

std::vector<Relation> RelationsOf(Build& build) {
    std::unordered_map<std::string, std::size_t> planOfTable;
    for (std::size_t i = 0; i < build.plans.size(); ++i)
        planOfTable.emplace(NameKey(build.plans[i].table.name), i);
    std::vector<Relation> relations;
    for (std::size_t i = 0; i < build.plans.size(); ++i) {
        Table& table = build.plans[i].table;
        for (ForeignKey& key : table.foreignKeys)
            relations.push_back(
                {i, planOfTable.at(NameKey(key.owner)), &key, table.Find(key.columns.front())->required});
    }
    return relations;
}

Components ComponentsOf(const std::vector<Relation>& relations, std::size_t count, bool requiredOnly) {
    std::vector<std::vector<std::size_t>> owners(count);
    for (const auto& [member, owner, key, required] : relations) {
        if (required || !requiredOnly) owners[member].push_back(owner);
    }
    return Components(std::move(owners));
}

}  // namespace

std::vector<std::size_t> OwnersFirst(Build& build) {
    const auto relations = RelationsOf(build);
    const Components all = ComponentsOf(relations, build.plans.size(), false);
    std::vector<std::size_t> order, place(build.plans.size());
    for (const auto& component : all.InOrder()) {
        for (const std::size_t plan : component) {
            place[plan] = order.size();
            order.push_back(plan);
        }
    }
    const Components required = ComponentsOf(relations, build.plans.size(), true);
    for (const auto& [member, owner, key, isRequired] : relations) {
        key->cyclic = all.Together(member, owner);
        key->ownerLater = place[owner] > place[member];
        if (!isRequired || !required.Together(member, owner)) continue;
        const std::string words = "set " + key->set +
                                  ": part of a cycle of sets whose members must have an owner; no first row "
                                  "can go in unless the server looks at keys at the end of a transaction";
        build.plans[member].table.notes.push_back(words);
        for (Outcome& outcome : build.outcomes) {
            if (outcome.subject != Outcome::Subject::Set || outcome.name != key->set ||
                !SameName(outcome.record, build.plans[member].record->name))
                continue;
            outcome.lookAt = true;
            outcome.why += (outcome.why.empty() ? "" : "; ") + words.substr(words.find(": ") + 2);
        }
    }
    return order;
}

}  // namespace norvelis::tables
