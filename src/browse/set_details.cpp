#include "browse/set_details.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <sstream>

#include "base/failure.h"
#include "base/text.h"
#include "dictionary/sets.h"

namespace norvelis {

namespace {

constexpr int kSortKeys = 16;

using Words = std::map<std::string, std::string, std::less<>>;

const Words kMemberships = {{"MA", "mandatory automatic"},
                            {"MM", "mandatory manual"},
                            {"OA", "optional automatic"},
                            {"OM", "optional manual"}};
const Words kOrders = {
    {"NEXT", "next"}, {"PRIOR", "prior"}, {"FIRST", "first"}, {"LAST", "last"}, {"SORTED", "sorted"}};
const Words kDirections = {{"ASC", "ascending"}, {"DSC", "descending"}};
const Words kDuplicates = {{"DN", "not allowed"}, {"DF", "first"}, {"DL", "last"}, {"DU", "in any order"}};
const Words kPointers = {{"N", "next"}, {"P", "prior"}, {"O", "owner"}};

std::optional<std::string> Find(const Words& words, std::string_view word) {
    const auto found = words.find(word);
    return found == words.end() ? std::nullopt : std::optional(found->second);
}

/// "next, prior, owner"; the letters themselves when one of them means nothing.
std::string PointersOf(std::string_view letters) {
    std::string text;
    for (const char letter : letters) {
        const auto word = Find(kPointers, std::string_view(&letter, 1));
        if (!word) return std::string(letters);
        text += (text.empty() ? "" : ", ") + *word;
    }
    return text;
}

void Append(std::string& text, std::string_view word) {
    if (!text.empty()) text += ' ';
    text += word;
}

struct StoredSet {
    std::string schema, set, connection;
};

std::optional<StoredSet> FindSet(Connection& store, std::string_view schema, std::string_view set,
                                 std::string_view owner, std::string_view member) {
    std::optional<StoredSet> found;
    for (auto row = dictionary::SetsBetween(store, owner, member); !row.Eof(); row.MoveNext()) {
        StoredSet stored{row.Text("schemaname"), row.Text("set"), row.Text("connection")};
        if (!SameName(Trim(stored.set), Trim(set))) continue;
        if (SameName(stored.schema, schema)) return stored;
        if (!found) found = std::move(stored);
    }
    return found;
}

/// Those of a set that is an index; they are not among its member's options.
std::vector<std::string> KeysOfIndex(Connection& store, const StoredSet& set, std::string_view member) {
    std::vector<std::string> keys;
    for (auto row = dictionary::IndexesOf(store, member); !row.Eof(); row.MoveNext()) {
        if (!SameName(row.Text("Recordname"), set.set) || !SameName(row.Text("schemaname"), set.schema))
            continue;
        for (int i = 1; i <= kSortKeys; ++i) {
            const std::string number = std::to_string(i), key = row.Text("sortkey" + number);
            const std::string direction(Trim(row.Text("sortorder" + number)));
            if (!key.empty()) keys.push_back(key + " " + Find(kDirections, direction).value_or(direction));
        }
    }
    return keys;
}

}  // namespace

MemberOptions ReadMemberOptions(std::string_view text) {
    MemberOptions options;
    std::istringstream words{std::string(text)};
    std::string direction;
    for (std::string word; words >> word;) {
        if (const auto way = Find(kDirections, word)) {
            direction = *way;
            options.order = "sorted";
        } else if (const auto order = Find(kOrders, word); order && direction.empty()) {
            Append(options.order, *order);
        } else if (const auto duplicates = Find(kDuplicates, word)) {
            options.duplicates = *duplicates;
        } else if (const auto membership = Find(kMemberships, word);
                   membership && options.membership.empty()) {
            options.membership = *membership;
        } else if (!direction.empty()) {
            options.keys.push_back(word + " " + direction);
        } else {
            Append(options.order, word);
        }
    }
    return options;
}

SetDetails DescribeSet(Connection& store, std::string_view schema, std::string_view set,
                       std::string_view owner, std::string_view member) {
    const std::string from(Trim(owner)), to(Trim(member));
    SetDetails details;
    const auto add = [&details](const char* item, const std::string& value) {
        if (!value.empty()) details.items.push_back({item, value});
    };
    try {
        const auto stored = FindSet(store, schema, set, from, to);
        if (!stored) {
            details.missing = "The dictionary has no set of this name from " + from + " to " + to +
                              ". It may have been cleared, or another program made the drawing.";
            return details;
        }
        const std::size_t end = std::min(stored->connection.find(kLineBreak), stored->connection.size());
        MemberOptions options = ReadMemberOptions(std::string_view(stored->connection).substr(end));
        if (options.keys.empty()) options.keys = KeysOfIndex(store, *stored, to);
        add("Owner", from);
        add("Member", to);
        add("Membership", options.membership);
        add("Order", options.order);
        for (const std::string& key : options.keys) add(&key == &options.keys.front() ? "Keys" : "", key);
        add("Duplicates", options.duplicates);
        add("Pointers", PointersOf(Trim(std::string_view(stored->connection).substr(0, end))));
        add("Schema", stored->schema);
    } catch (const RuntimeFailure& failure) {
        details.items.clear();
        details.missing = std::string("The dictionary does not answer: ") + failure.what();
    }
    return details;
}

}  // namespace norvelis
