#include "copybook/record_layout.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "base/text.h"
#include "cobol/picture.h"
#include "cobol/usage.h"

namespace norvelis::copybook {

namespace {

constexpr int kLastLevel = 49;
constexpr long kMostPlaces = 1'000'000, kMostPackedDigits = 18;
constexpr long kMostBytes = 1'000'000'000'000;  // Damaged numbers multiplied stay within a long.

long Times(long bytes, long count) {
    return bytes > kMostBytes / count ? kMostBytes : bytes * count;
}

/// Takes the fields into a tree by their level numbers.
class TreeBuilder {
  public:
    explicit TreeBuilder(const std::vector<dictionary::FieldContents>& fields) {
        for (const auto& field : fields) items_.push_back(ReadItem(field));
    }

    std::vector<Entry> Build() { return Below(0, 1); }

  private:
    /// The entries from the next item on that are below an entry of this level in the report.
    std::vector<Entry> Below(int above, int writtenAbove) {
        std::vector<Entry> entries;
        while (next_ < items_.size() && items_[next_].level > above) {
            Entry entry;
            entry.item = std::move(items_[next_++]);
            const int reported = entry.item.level;
            entry.level = entries.empty() ? std::min(std::max(reported, writtenAbove + 1), kLastLevel)
                                          : entries.front().level;
            if (entry.level != reported)
                entry.remarks.push_back(fmt::format("Level {:02} in the report.", reported));
            entry.children = Below(reported, entry.level);
            if (!entry.children.empty() && !entry.item.IsGroup()) {
                entry.remarks.push_back(fmt::format("{} {} in the report, with items below it.",
                                                    entry.item.usage.word, entry.item.picture));
                entry.item.usage.form = cobol::Usage::Form::Group;
                entry.item.picture.clear();
            }
            entries.push_back(std::move(entry));
        }
        return entries;
    }

    std::vector<Item> items_;
    std::size_t next_ = 0;
};

long StartOf(const Entry& entry, long otherwise) {
    if (entry.item.start) return *entry.item.start;
    return entry.children.empty() ? otherwise : StartOf(entry.children.front(), otherwise);
}

std::string InWords(long bytes) {
    return fmt::format("{} {}", bytes, bytes == 1 ? "byte" : "bytes");
}

Entry Filler(int level, long start, long bytes) {
    Entry filler;
    filler.item.level = filler.level = level;
    filler.item.name = "FILLER";
    filler.start = start;
    filler.bytes = bytes;
    filler.isUnknown = true;
    filler.remarks.push_back("The dictionary has no field for " +
                             (bytes == 1 ? fmt::format("byte {}.", start)
                                         : fmt::format("bytes {} to {}.", start, start + bytes - 1)));
    return filler;
}

/// 0 when no compiler takes the picture with that usage.
long BytesFor(const cobol::Picture& picture, const cobol::Usage& usage) {
    if (std::max(picture.width, picture.nines) > kMostPlaces) return 0;
    if (usage.form == cobol::Usage::Form::Packed && picture.nines > kMostPackedDigits) return 0;
    return StoredBytes(picture, usage);
}

/// Settles the bytes of a field by its positions and its picture. Where they differ the positions hold, for
/// all that comes behind is counted by them.
void MeasureField(Entry& entry) {
    Item& item = entry.item;
    const cobol::Picture picture = cobol::ReadPicture(item.picture);
    const long pictured = BytesFor(picture, item.usage);
    if (!item.end) {
        entry.bytes = std::max(pictured, 1L);
        entry.isUnknown = pictured == 0;
    } else {
        const long span = *item.end - *item.start + 1;
        // Some reports end an item that occurs behind its first time.
        const bool isFirstOnly = pictured == span && item.occurs > 1;
        const bool isWhole = isFirstOnly || span % item.occurs == 0;
        if (!isWhole) {
            entry.remarks.push_back(
                fmt::format("OCCURS {} in the report, in {}.", item.occurs, InWords(span)));
            item.occurs = 1;
        }
        entry.bytes = isFirstOnly ? span : span / item.occurs;
        entry.signIsSeparate =
            isWhole && pictured > 0 && entry.bytes == pictured + 1 && IsSignedDisplay(picture, item.usage);
        entry.isUnknown = !entry.signIsSeparate && pictured != entry.bytes;
    }
    if (entry.signIsSeparate)
        entry.remarks.push_back(
            "One byte more than its digits: the sign has a byte of its own, whether LEADING or "
            "TRAILING is not in the dictionary.");
    if (!entry.isUnknown) return;
    std::string reported = item.picture.empty() ? "No picture" : "PIC " + item.picture;
    if (!item.usage.word.empty()) reported += ", usage " + item.usage.word;
    entry.remarks.push_back(item.end ? fmt::format("{} in the report, in {}.", reported, InWords(entry.bytes))
                                     : reported + " in the report, its bytes are not known.");
}

/// Places entries one behind the other and gives back how many bytes they take.
class Placement {
  public:
    long Place(std::vector<Entry>& entries, long start) {
        long next = start;
        std::optional<std::size_t> base;  // The last entry that is no redefinition.
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const long begin = StartOf(entries[i], next);
            if (const long gap = begin - next; gap > 0) {
                if (i == 0 || !GiveBytes(entries[i - 1], gap)) {
                    const auto place = entries.begin() + static_cast<std::ptrdiff_t>(i);
                    entries.insert(place, Filler(place->level, next, gap));
                    ++i;
                }
                next = begin;
            }
            Entry& entry = entries[i];
            Measure(entry, begin);
            if (begin < next) {
                Redefine(entry, base ? &entries[*base] : nullptr);
            } else {
                base = i;
                next = std::min(begin + entry.TotalBytes(), kMostBytes);
            }
        }
        return next - start;
    }

    /// Bytes that are known to be the group's, or a group's inside it, and that no field of it covers; false
    /// when it has no use for them.
    static bool GiveBytes(Entry& group, long bytes) {
        if (!group.item.IsGroup() || group.isLeftOut || !group.redefines.empty()) return false;
        if (bytes % group.item.occurs != 0) return false;
        const long each = bytes / group.item.occurs;
        if (group.children.empty()) {
            group.bytes = each;
        } else if (!GiveBytes(group.children.back(), each)) {
            if (group.item.occurs == 1) return false;
            group.children.push_back(Filler(group.children.back().level, group.start + group.bytes, each));
            group.bytes += each;
        } else {
            group.bytes += each;
        }
        return true;
    }

  private:
    void Measure(Entry& entry, long start) {
        entry.start = start;
        if (!entry.item.IsGroup()) {
            MeasureField(entry);
        } else if (entry.children.empty()) {
            entry.isUnknown = true;
            entry.remarks.push_back("A group whose items are not in the dictionary.");
        } else {
            entry.bytes = Place(entry.children, start);
        }
    }

    static void Redefine(Entry& entry, const Entry* base) {
        const bool canBeSaid = base && entry.start == base->start && base->item.occurs == 1 &&
                               !base->item.IsFiller() && !SameName(base->item.name, entry.item.name) &&
                               entry.TotalBytes() <= base->bytes;
        if (canBeSaid) {
            entry.redefines = base->item.name;
            entry.remarks.push_back("REDEFINES by its position, as the dictionary does not hold the word.");
        } else {
            entry.isLeftOut = true;
            entry.remarks.push_back(
                fmt::format("Left out: it begins at byte {}, over items before it.", entry.start));
        }
    }
};

}  // namespace

long Entry::TotalBytes() const {
    return Times(bytes, item.occurs);
}

RecordLayout LayOut(const dictionary::RecordContents& record) {
    RecordLayout layout{TreeBuilder(record.fields).Build(), 0};
    layout.bytes = Placement().Place(layout.entries, 1);
    const long rest = LengthOf(record) - layout.bytes;
    // A last group that lost its items has what is left of the record. Other bytes that are left may be the
    // prefix of the record, which its length includes in some reports.
    const auto lostItems = [&layout] {
        const std::vector<Entry>* entries = &layout.entries;
        while (!entries->empty() && !entries->back().children.empty()) entries = &entries->back().children;
        return !entries->empty() && entries->back().item.IsGroup();
    };
    if (rest > 0 && lostItems() && Placement::GiveBytes(layout.entries.back(), rest)) layout.bytes += rest;
    return layout;
}

long LengthOf(const dictionary::RecordContents& record) {
    const std::string_view text = Trim(record.length);
    return text.size() <= 9 && IsNumeric(text) ? static_cast<long>(std::max(0.0, Val(text))) : 0;
}

}  // namespace norvelis::copybook
