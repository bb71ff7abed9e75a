#include <algorithm>

#include "drawing/automation/handles.h"
#include "drawing/automation/text_ranges.h"

// Characters.
namespace norvelis::drawing {

namespace {

using engine::CharProperty;
using engine::ParaProperty;

constexpr double kPointsPerInch = 72;

class CharactersHandle : public engine::Characters {
  public:
    CharactersHandle(Context context, Canvas& canvas, Shape& shape)
        : context_(std::move(context)), canvas_(canvas), shape_(shape), end_(TextLength(shape)) {}

    std::optional<int> Begin() override { return IfAlive(begin_); }
    std::optional<int> End() override { return IfAlive(end_); }
    bool SetBegin(int position) override {
        if (!context_.Alive()) return false;
        begin_ = Inside(position);
        end_ = std::max(end_, begin_);
        return true;
    }
    bool SetEnd(int position) override {
        if (!context_.Alive()) return false;
        end_ = Inside(position);
        begin_ = std::min(begin_, end_);
        return true;
    }
    std::optional<std::string> Text() override { return IfAlive(TextInRange(shape_, begin_, end_)); }
    bool SetText(const std::string& text) override {
        if (!context_.Writable()) return false;
        ReplaceText(shape_, begin_, end_, text);
        end_ = begin_ + engine::CharacterCount(text);
        Changed();
        return true;
    }
    std::optional<int> CharCount() override { return IfAlive(end_ - begin_); }
    bool SetCharProps(CharProperty property, int value) override {
        switch (property) {
            case CharProperty::Font:
                return Format(Name::Character, Name::Font, value);
            case CharProperty::Color:
                return Format(Name::Character, Name::Color, value);
            case CharProperty::Style:
                return Format(Name::Character, Name::Style, value);
            case CharProperty::Size:
                return Format(Name::Character, Name::Size, value / kPointsPerInch, Name::PT);
        }
        return false;
    }
    bool SetParaProps(ParaProperty property, int value) override {
        return property == ParaProperty::HorzAlign && Format(Name::Paragraph, Name::HorzAlign, value);
    }
    engine::Ref<engine::Document> Document() override {
        return context_.Alive() ? HandleOf(context_) : nullptr;
    }

  private:
    template <class T>
    std::optional<T> IfAlive(T value) const {
        return context_.Alive() ? std::optional<T>(std::move(value)) : std::nullopt;
    }
    int Inside(int position) const { return std::clamp(position, 0, TextLength(shape_)); }
    bool Format(Name section, Name cell, double value, Name unit = Name::None) {
        if (!context_.Writable()) return false;
        FormatText(shape_, begin_, end_, section, cell, value, unit);
        Changed();
        return true;
    }
    void Changed() { context_.document->recalculation.TextChanged(canvas_, shape_); }

    Context context_;
    Canvas& canvas_;
    Shape& shape_;
    int begin_ = 0, end_;
};

}  // namespace

engine::Ref<engine::Characters> CharactersOf(const Context& context, Canvas& canvas, Shape& shape) {
    return std::make_shared<CharactersHandle>(context, canvas, shape);
}

}  // namespace norvelis::drawing
