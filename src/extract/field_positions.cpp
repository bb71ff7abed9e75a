#include "extract/field_positions.h"

#include <algorithm>

#include "base/text.h"
#include "base/whole_number.h"
#include "extract/format/keywords.h"

namespace norvelis {

namespace {

using namespace keywords;

constexpr std::string_view kGroup = "GROUP";
constexpr std::string_view kOccurs = "OCCURS";
constexpr std::string_view kSynchronized = "SYNC";
/// A synchronized field begins at a multiple of at most so many bytes.
constexpr long kWidestAlignment = 8;

// 0 for what is no number.
long NumberIn(std::string_view text) {
    return WholeNumber<long>(Trim(text)).value_or(0);
}

}  // namespace

FieldPositions::Fault FieldPositions::Take(std::string_view line) {
    const std::string_view usage = TextIn(line, kFieldUsage);
    if (usage.starts_with(kGroup)) {
        if (Column(usage, kOccurs) != 0) mayJump_ = true;
        return Fault::None;
    }
    const long start = NumberIn(TextIn(line, kFieldStart)), end = NumberIn(TextIn(line, kFieldEnd));
    if (start == 0 || end < start) return Fault::None;
    const std::string_view name = TextIn(line, kFieldName);
    const bool isRepeated = start == lastStart_ && name == lastName_;
    const long gap = start - lastEnd_ - 1;
    const bool isAligned = gap < kWidestAlignment && gap > 0 && Column(usage, kSynchronized) != 0;
    const bool isLost = gap > 0 && !isAligned && !mayJump_;
    if (gap > 0) mayJump_ = false;
    lastName_ = name;
    lastStart_ = start;
    lastEnd_ = std::max(lastEnd_, end);
    if (isRepeated) return Fault::Repeated;
    return isLost ? Fault::Gap : Fault::None;
}

bool FieldPositions::EndsBefore(std::string_view dataLength) const {
    return lastEnd_ > 0 && !mayJump_ && lastEnd_ < NumberIn(dataLength);
}

}  // namespace norvelis
