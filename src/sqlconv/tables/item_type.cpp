#include "sqlconv/tables/item_type.h"

namespace norvelis::tables {

using cobol::Picture;
using cobol::Usage;

namespace {

ColumnType WholeNumber(long digits) {
    using enum ColumnType::Kind;
    if (digits <= 4) return {SmallInteger};
    if (digits <= 9) return {Integer};
    if (digits <= 18) return {BigInteger};
    return {Decimal, digits, 0};
}

/// The type that holds whatever the bytes of a binary number can.
ColumnType FullRange(const Picture& picture) {
    const bool two = picture.nines <= 4, four = picture.nines <= 9;
    if (picture.decimals > 0) return {ColumnType::Kind::Decimal, two ? 5 : four ? 10 : 20, picture.decimals};
    return WholeNumber(two ? 5 : four ? 10 : 20);
}

}  // namespace

ColumnType TypeFor(const Picture& picture, const Usage& usage, const TypeRules& rules) {
    using enum ColumnType::Kind;
    switch (usage.form) {
        case Usage::Form::Group:
            return {};
        case Usage::Form::SingleFloat:
            return {SingleFloat};
        case Usage::Form::DoubleFloat:
            return {DoubleFloat};
        case Usage::Form::Index:
            return {Integer};
        default:
            break;
    }
    if (picture.kind == Picture::Kind::Invalid) return {};
    if (picture.kind != Picture::Kind::Number)
        return {rules.fixedText || picture.width == 1 ? FixedText : Text,
                picture.width,
                0,
                {},
                picture.kind == Picture::Kind::WideText};
    if (rules.widenBinary && usage.form == Usage::Form::Binary && picture.digits == picture.nines)
        return FullRange(picture);
    if (picture.decimals > 0) return {Decimal, picture.digits, picture.decimals};
    return WholeNumber(picture.digits);
}

}  // namespace norvelis::tables
