#include "extract/set_checks.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/text.h"
#include "extract/format/keywords.h"

namespace norvelis {

namespace {

using namespace keywords;

/// A record's part in a set, in few bytes: a report has as many of them as members.
using Part = std::size_t;
Part PartOf(std::string_view set, std::string_view record) {
    const std::hash<std::string_view> hash;
    return hash(set) * 31 + hash(record);
}

class SetReader {
  public:
    explicit SetReader(ExtractionState& state) : state_(state) {
        for (const auto& record : state.writer->Records()) records_.insert(record.name);
    }

    void Read() {
        const auto& lines = state_.report.Lines();
        for (std::size_t i = 0; i < lines.size(); ++i) ReadLine(i, lines[i]);
        EndSet();
        if (!inSets_ && (hasParts_ || !claims_.empty()))
            state_.FindInReport(FindingKind::SetsMissing, {},
                                "no set line at column 1, so there are no sets");
        if (inSets_) CheckClaims();
    }

  private:
    /// What a record's own section says of its part in a set.
    struct Claim {
        Part part;
        std::size_t line;
        bool isMember;
    };

    void ReadLine(std::size_t number, const ReportLine& line) {
        const bool isRecord = line.Has(KeywordKind::RecordNameAtStart);
        const bool isClaim = line.Has(KeywordKind::Membership) || line.Has(KeywordKind::Ownership);
        const bool isOfSet = line.Has(KeywordKind::SetAtStart) || line.Has(KeywordKind::Owner) ||
                             line.Has(KeywordKind::Member);
        if (!isRecord && !isClaim && !isOfSet) return;
        const std::string_view text = state_.report.TextOf(line);
        if (isRecord) record_ = NameIn(text, kIndexName);
        if (isClaim && records_.contains(record_)) {
            claims_.push_back(
                {PartOf(NameIn(text, kIndexName), record_), number, line.Has(KeywordKind::Membership)});
        }
        if (line.Has(KeywordKind::SetAtStart)) BeginSet(number, text);
        if (isCalc_) return;
        hasParts_ = hasParts_ || line.Has(KeywordKind::Owner) || line.Has(KeywordKind::Member);
        if (!inSets_) return;
        if (line.Has(KeywordKind::Owner)) ReadOwner(line, text);
        if (line.Has(KeywordKind::Member) && Column(text, kMember, 2) != 0) ReadMember(line, text);
    }

    void BeginSet(std::size_t number, std::string_view text) {
        EndSet();
        const ReportLine& line = state_.report.Lines()[number];
        set_ = NameIn(text, kSetOrOwnerOrMember);
        setBegin_ = line.Begin();
        owner_ = {};
        members_ = 0;
        isCalc_ = set_ == kCalcName;
        if (isCalc_) {
            Find(FindingKind::CalcSet, line, "CALC", "the set of the location mode CALC has no row");
            return;
        }
        inSets_ = true;
        CheckWidth(line, text, "set");
        const auto counting = state_.index->SetLine(set_);
        if (!counting || *counting == number) return;
        const std::string_view other =
            NameIn(state_.report.TextOf(state_.report.Lines()[*counting]), kSetOrOwnerOrMember);
        Find(FindingKind::SetOfAnother, line, set_,
             other == set_
                 ? "the set was met before; texts are those of the first"
                 : fmt::format("its texts are looked for in set {}, whose name begins with this one", other));
    }

    void EndSet() {
        if (!inSets_ || isCalc_ || set_.empty()) return;
        const bool hasOwner = !owner_.empty();
        if (hasOwner && members_ > 0) return;
        state_.Find(FindingKind::SetWithoutRows, setBegin_, set_,
                    hasOwner ? "the set has no member line" : "the set has no owner line");
    }

    void ReadOwner(const ReportLine& line, std::string_view text) {
        owner_ = NameIn(text, kSetOrOwnerOrMember);
        owners_.push_back(PartOf(set_, owner_));
        if (owner_.empty()) return;
        CheckWidth(line, text, "owner");
        if (owner_ == kSystemOwner) {
            Find(FindingKind::OwnerSystem, line, set_, "the set's owner is SYSTEM, which is no record");
        } else if (!records_.contains(owner_)) {
            Find(FindingKind::OwnerUnknown, line, set_, fmt::format("its owner {} is no record", owner_));
        }
    }

    void ReadMember(const ReportLine& line, std::string_view text) {
        const std::string_view member = NameIn(text, kSetOrOwnerOrMember);
        ++members_;
        memberParts_.push_back(PartOf(set_, member));
        CheckWidth(line, text, "member");
        if (!records_.contains(member)) {
            Find(FindingKind::MemberUnknown, line, set_, fmt::format("its member {} is no record", member));
        } else if (member == owner_) {
            Find(FindingKind::SetToItself, line, set_,
                 fmt::format("the set leads from {} to itself", member));
        }
    }

    void CheckWidth(const ReportLine& line, std::string_view text, std::string_view what) {
        const Span behind{kSetOrOwnerOrMember.column + kSetOrOwnerOrMember.count, 1};
        if (NameIn(text, behind).empty()) return;
        Find(FindingKind::NameTooLong, line, NameIn(text, kSetOrOwnerOrMember),
             fmt::format("the name of this {} is longer than its columns", what));
    }

    void CheckClaims() {
        std::sort(owners_.begin(), owners_.end());
        std::sort(memberParts_.begin(), memberParts_.end());
        for (const Claim& claim : claims_) {
            const auto& parts = claim.isMember ? memberParts_ : owners_;
            if (std::binary_search(parts.begin(), parts.end(), claim.part)) continue;
            const ReportLine& line = state_.report.Lines()[claim.line];
            const std::string_view set = NameIn(state_.report.TextOf(line), kIndexName);
            Find(FindingKind::MembershipUnmatched, line, set,
                 claim.isMember ? "the set has no line for this member"
                                : "the set has no line for this owner");
        }
    }

    void Find(FindingKind kind, const ReportLine& line, std::string_view subject, std::string_view reason) {
        state_.Find(kind, line.Begin(), subject, reason);
    }

    ExtractionState& state_;
    std::unordered_set<std::string_view> records_;
    std::vector<Claim> claims_;
    std::vector<Part> owners_, memberParts_;
    std::string_view record_, set_, owner_;
    std::size_t setBegin_ = 0, members_ = 0;
    bool inSets_ = false, isCalc_ = false;
    bool hasParts_ = false;  ///< Owners or members of sets other than CALC were met.
};

}  // namespace

void CheckSets(ExtractionState& state) {
    SetReader(state).Read();
}

}  // namespace norvelis
