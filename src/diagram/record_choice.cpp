#include "diagram/record_choice.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>

#include "base/name_key.h"
#include "base/text.h"
#include "browse/find_text.h"

namespace norvelis {

namespace {

using Kind = RecordChoice::Kind;
using Direction = RecordChoice::Direction;

std::string Called(const dictionary::SchemaContents& schema) {
    return Trim(schema.name).empty() ? kNameless : std::string(Trim(schema.name));
}

/// A set between two records that may be drawn, by their places in the schema.
struct Link {
    std::size_t owner, member;
};

class Chooser {
  public:
    Chooser(const dictionary::SchemaContents& schema, const RecordChoice& choice)
        : records_(schema.records), choice_(choice), schema_(Called(schema)) {
        for (std::size_t i = 0; i < records_.size(); ++i) {
            const std::string key = NameKey(records_[i].name);
            if (!key.empty()) byName_.try_emplace(key, i);
        }
        LeaveOut();
        for (const dictionary::SetContents& set : schema.sets) {
            const auto owner = Find(set.owner), member = Find(set.member);
            if (owner && member && chosen_[*owner] && chosen_[*member]) links_.push_back({*owner, *member});
        }
    }

    ChosenRecords Choose() {
        ChosenRecords result;
        switch (choice_.kind) {
            case Kind::All:
                result.drawing = schema_ + " selected";
                break;
            case Kind::Around:
                result.drawing = schema_ + " around " + ChooseAround();
                break;
            case Kind::Area:
                result.drawing = schema_ + " area " + ChooseArea(choice_.name);
                break;
            case Kind::AreaOf:
                result.drawing = schema_ + " area " + ChooseAreaOf();
                break;
            case Kind::ByArea:
                result.drawing = schema_ + kByAreaDrawing;
                break;
        }
        result.pages = choice_.kind == Kind::ByArea ? PagesByArea() : OnePage(result.drawing);
        if (result.pages.empty()) Refuse("the choice leaves no record of schema " + schema_);
        result.refusal = refusal_;
        return result;
    }

  private:
    /// The first reason is the one that helps.
    void Refuse(const std::string& reason) {
        if (refusal_.empty()) refusal_ = reason;
    }

    std::optional<std::size_t> Find(std::string_view name) const {
        const auto found = byName_.find(NameKey(Trim(name)));
        return found == byName_.end() ? std::nullopt : std::optional(found->second);
    }

    /// The record that the choice names.
    std::optional<std::size_t> FindNamed() {
        const auto found = Find(choice_.name);
        if (!found) Refuse("there is no record " + choice_.name + " in schema " + schema_);
        return found;
    }

    /// Marks what `only` and `except` leave. A pattern that fits nothing is a slip of the pen.
    void LeaveOut() {
        chosen_.assign(records_.size(), choice_.only.empty());
        for (const auto& [patterns, keep] : {std::pair{&choice_.only, true}, {&choice_.except, false}}) {
            for (const std::string& pattern : *patterns) {
                const std::string key = NameKey(pattern);
                bool fits = false;
                for (std::size_t i = 0; i < records_.size(); ++i) {
                    if (!MatchesPattern(NameKey(records_[i].name), key)) continue;
                    fits = true;
                    chosen_[i] = keep;
                }
                if (!fits) Refuse("no record of schema " + schema_ + " is called " + pattern);
            }
        }
        // A name that the dictionary holds twice has one box.
        for (std::size_t i = 0; i < records_.size(); ++i) {
            const auto first = Find(records_[i].name);
            if (!first || *first != i) chosen_[i] = false;
        }
    }

    /// Keeps the record and what is within reach; the record's name.
    std::string ChooseAround() {
        const auto center = FindNamed();
        if (!center) return choice_.name;
        if (!chosen_[*center]) Refuse("record " + choice_.name + " itself is left out");
        std::vector<std::vector<std::size_t>> neighbors(records_.size());
        for (const Link& link : links_) {
            if (choice_.direction != Direction::Up) neighbors[link.owner].push_back(link.member);
            if (choice_.direction != Direction::Down) neighbors[link.member].push_back(link.owner);
        }
        chosen_.assign(records_.size(), false);
        chosen_[*center] = true;
        std::vector<std::size_t> front{*center};
        for (int step = 0; step < choice_.steps && !front.empty(); ++step) {
            std::vector<std::size_t> reached;
            for (const std::size_t from : front) {
                for (const std::size_t to : neighbors[from]) {
                    if (!chosen_[to]) reached.push_back(to);
                    chosen_[to] = true;
                }
            }
            front = std::move(reached);
        }
        return std::string(Trim(records_[*center].name));
    }

    std::string ChooseAreaOf() {
        const auto record = FindNamed();
        if (!record) return choice_.name;
        const std::string area(Trim(records_[*record].area));
        if (area.empty()) Refuse("record " + choice_.name + " is in no area");
        return ChooseArea(area);
    }

    /// Keeps the records of the area; its name.
    std::string ChooseArea(const std::string& name) {
        std::string area;
        for (std::size_t i = 0; i < records_.size(); ++i) {
            const bool inArea = SameName(Trim(records_[i].area), Trim(name));
            if (inArea && area.empty()) area = Trim(records_[i].area);
            chosen_[i] = chosen_[i] && inArea;
        }
        if (area.empty()) Refuse("no record of schema " + schema_ + " is in area " + name);
        return area;
    }

    std::vector<ChosenPage> OnePage(const std::string& title) const {
        ChosenPage page{title, title, {}, {}};
        for (std::size_t i = 0; i < records_.size(); ++i) {
            if (chosen_[i]) page.records.emplace_back(Trim(records_[i].name));
        }
        return page.records.empty() ? std::vector<ChosenPage>() : std::vector{page};
    }

    std::vector<ChosenPage> PagesByArea() const {
        std::map<std::string, std::vector<std::size_t>> areas;
        for (std::size_t i = 0; i < records_.size(); ++i) {
            if (chosen_[i]) areas[NameKey(Trim(records_[i].area))].push_back(i);
        }
        // Blank is the first of all names, and what has no area belongs behind the areas.
        std::vector<std::vector<std::size_t>> inOrder;
        auto withoutArea = areas.extract("");
        for (auto& [key, members] : areas) inOrder.push_back(std::move(members));
        if (withoutArea) inOrder.push_back(std::move(withoutArea.mapped()));

        std::vector<ChosenPage> pages;
        std::vector<std::size_t> pageOf(records_.size(), 0);
        for (const auto& members : inOrder) {
            const std::string area(Trim(records_[members.front()].area));
            ChosenPage page{area.empty() ? "no area" : area, {}, {}, {}};
            page.title = schema_ + (area.empty() ? " without area" : " area " + area);
            for (const std::size_t member : members) {
                page.records.emplace_back(Trim(records_[member].name));
                pageOf[member] = pages.size();
            }
            pages.push_back(std::move(page));
        }
        AddReferences(pages, pageOf);
        return pages;
    }

    void AddReferences(std::vector<ChosenPage>& pages, const std::vector<std::size_t>& pageOf) const {
        std::set<std::pair<std::size_t, std::size_t>> known;
        const auto add = [&](std::size_t page, std::size_t record) {
            if (!known.insert({page, record}).second) return;
            pages[page].references.push_back(
                {std::string(Trim(records_[record].name)), pages[pageOf[record]].name});
        };
        for (const Link& link : links_) {
            if (pageOf[link.owner] == pageOf[link.member]) continue;
            add(pageOf[link.owner], link.member);
            add(pageOf[link.member], link.owner);
        }
    }

    const std::vector<dictionary::RecordContents>& records_;
    const RecordChoice& choice_;
    const std::string schema_;
    std::unordered_map<std::string, std::size_t> byName_;
    std::vector<bool> chosen_;
    std::vector<Link> links_;
    std::string refusal_;
};

}  // namespace

ChosenRecords ChooseRecords(const dictionary::SchemaContents& schema, const RecordChoice& choice) {
    return Chooser(schema, choice).Choose();
}

}  // namespace norvelis
