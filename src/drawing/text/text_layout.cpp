#include "drawing/text/text_layout.h"

#include <algorithm>
#include <cmath>

namespace norvelis::drawing {

namespace {

constexpr double kOthers = 0.75 / 72;  // Other programs measure a little wider; a block must not break there.
constexpr double kSlack = 1e-6;        // A line that is exactly as wide as its block does not break.

struct CharFormat {
    FontFace* face = nullptr;
    double size = 0, scale = 1, letterspace = 0;
    bool capitals = false;
};

struct ParaFormat {
    double first = 0, left = 0, right = 0, spacing = -1.2, before = 0, after = 0;
    int align = 1;
};

char32_t NextCharacter(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text[0]);
    std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    length = std::min(length, text.size());
    char32_t character = length == 1 ? first : first & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i)
        character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3F);
    text.remove_prefix(length);
    return character;
}

class LineBreaker {
  public:
    LineBreaker(FontLibrary& fonts, const Document& document, const Shape& shape, double width)
        : fonts_(fonts), document_(document), shape_(shape), width_(width) {}

    TextLayout Run() {
        const TextRuns& runs = TextOf(shape_);
        if (runs.empty()) return {};
        for (const auto& run : runs) Add(run);
        EndLine(true);
        Align();
        return std::move(layout_);
    }

  private:
    void Add(const TextRun& run) {
        if (run.character != characterRow_) character_ = Characters(run.character);
        characterRow_ = run.character;
        if (run.paragraph != paragraphRow_) paragraph_ = Paragraph(run.paragraph);
        paragraphRow_ = run.paragraph;
        tabsRow_ = run.tabs;
        std::string_view rest = run.text;
        while (!rest.empty()) {
            const std::string_view before = rest;
            const char32_t character = NextCharacter(rest);
            const auto bytes = before.substr(0, before.size() - rest.size());
            if (character == '\r' || (character == '\n' && !afterReturn_)) {
                Grow(character_);
                EndLine(true);
            } else if (character != '\n') {
                AddCharacter(character, bytes);
            }
            afterReturn_ = character == '\r';
        }
        Grow(character_);
    }

    void AddCharacter(char32_t character, std::string_view bytes) {
        double advance = Advance(character);
        const bool blank = character == ' ' || character == '\t';
        if (!blank && x_ + advance > Right() + kSlack) Wrap();
        if (character == '\t') advance = NextTabStop(x_) - x_;
        Append(bytes, advance);
        if (!blank) line_.width = x_;
        if (blank || character == '-') RememberBreak();
    }

    double Advance(char32_t character) const {
        if (character_.capitals && character >= 'a' && character <= 'z') character -= 'a' - 'A';
        return character_.face->Advance(character) * character_.size * character_.scale +
               character_.letterspace;
    }

    double Left() const { return paragraph_.left + (firstLine_ ? paragraph_.first : 0); }
    double Right() const { return width_ - paragraph_.right; }

    void Append(std::string_view bytes, double advance) {
        Grow(character_);
        auto& fragments = line_.fragments;
        if (fragments.empty() || fragments.back().character != characterRow_ || bytes == "\t") {
            fragments.push_back({{}, characterRow_, x_, 0});
        }
        if (bytes != "\t") {
            fragments.back().text += bytes;
            fragments.back().width += advance;
        }
        x_ += advance;
    }

    /// The line is as high as its largest character.
    void Grow(const CharFormat& format) {
        const double size = format.size;
        const double spacing = paragraph_.spacing;
        line_.height = std::max(line_.height, spacing < 0 ? -spacing * size : spacing > 0 ? spacing : size);
        ascent_ = std::max(ascent_, format.face->Ascent() * size);
        descent_ = std::max(descent_, format.face->Descent() * size);
    }

    void RememberBreak() {
        breakFragments_ = line_.fragments.size();
        breakBytes_ = line_.fragments.empty() ? 0 : line_.fragments.back().text.size();
        breakFragmentWidth_ = line_.fragments.empty() ? 0 : line_.fragments.back().width;
        breakX_ = x_;
        breakWidth_ = line_.width;
    }

    /// Moves what stands behind the last place for a break to a new line; the whole line stays when there is
    /// none.
    void Wrap() {
        if (line_.fragments.empty()) return;
        std::vector<TextFragment> carried;
        if (breakFragments_ > 0) {
            auto& last = line_.fragments[breakFragments_ - 1];
            if (last.text.size() > breakBytes_) {
                carried.push_back({last.text.substr(breakBytes_), last.character, breakX_,
                                   last.width - breakFragmentWidth_});
                last.text.resize(breakBytes_);
                last.width = breakFragmentWidth_;
            }
            carried.insert(carried.end(),
                           line_.fragments.begin() + static_cast<std::ptrdiff_t>(breakFragments_),
                           line_.fragments.end());
            line_.fragments.resize(breakFragments_);
            line_.width = breakWidth_;
        }
        const double oldX = breakFragments_ > 0 ? breakX_ : x_, rest = x_ - oldX;
        EndLine(false);
        for (auto& fragment : carried) fragment.x += x_ - oldX;
        line_.fragments = std::move(carried);
        x_ += rest;
        if (!line_.fragments.empty()) line_.width = x_;
        for (const auto& fragment : line_.fragments) Grow(Characters(fragment.character));
    }

    void EndLine(bool paragraphEnds) {
        if (firstLine_ && !layout_.lines.empty()) y_ += paragraph_.before;
        line_.top = y_;
        // The surplus of the line's height stands above the characters, as word processors have it.
        line_.baseline = y_ + (line_.height - (ascent_ + descent_)) / 2 + ascent_;
        y_ += line_.height;
        if (paragraphEnds) y_ += paragraph_.after;
        layout_.width = std::max(layout_.width, line_.width + paragraph_.right);
        layout_.height = y_;
        aligns_.push_back({paragraph_.align, Left(), paragraph_.right});
        layout_.lines.push_back(std::move(line_));
        line_ = {};
        firstLine_ = paragraphEnds;
        x_ = Left();
        line_.width = x_;
        ascent_ = descent_ = 0;
        breakFragments_ = 0;
    }

    void Align() {
        const double whole = std::isinf(width_) ? layout_.width : width_;
        for (std::size_t i = 0; i < layout_.lines.size(); ++i) {
            auto& line = layout_.lines[i];
            const double room = whole - aligns_[i].right - line.width;
            const double shift = aligns_[i].align == 1 ? room / 2 : aligns_[i].align == 2 ? room : 0;
            for (auto& fragment : line.fragments) fragment.x += shift;
            line.width -= aligns_[i].left;
        }
    }

    double NextTabStop(double x) const {
        const auto row = RowKey::Number(tabsRow_);
        for (const Name position : {Name::Position0, Name::Position1, Name::Position2}) {
            const Cell* stop = drawing::Find(shape_, {Name::Tabs, 0, row, position});
            if (stop && stop->value > x + kSlack) return stop->value;
        }
        const double step = std::max(0.05, drawing::Number(shape_, Name::DefaultTabStop));
        return (std::floor(x / step + kSlack) + 1) * step;
    }

    CharFormat Characters(int row) {
        const auto number = [&](Name cell) {
            return drawing::Number(shape_, {Name::Character, 0, RowKey::Number(row), cell});
        };
        const int style = static_cast<int>(number(Name::Style));
        CharFormat format;
        format.face =
            &fonts_.Face(document_.FontName(static_cast<int>(number(Name::Font))), style & 1, style & 2);
        format.size = std::clamp(number(Name::Size), 0.0, 100.0);
        format.scale = std::clamp(number(Name::FontScale), 0.01, 10.0);
        format.letterspace = std::clamp(number(Name::Letterspace), -1.0, 10.0);
        format.capitals = static_cast<int>(number(Name::Case)) == 1;
        return format;
    }

    ParaFormat Paragraph(int row) {
        const auto number = [&](Name cell) {
            return drawing::Number(shape_, {Name::Paragraph, 0, RowKey::Number(row), cell});
        };
        ParaFormat format;
        format.first = number(Name::IndFirst);
        format.left = number(Name::IndLeft);
        format.right = number(Name::IndRight);
        format.spacing = number(Name::SpLine);
        format.before = number(Name::SpBefore);
        format.after = number(Name::SpAfter);
        format.align = static_cast<int>(number(Name::HorzAlign));
        return format;
    }

    struct Alignment {
        int align;
        double left, right;
    };

    FontLibrary& fonts_;
    const Document& document_;
    const Shape& shape_;
    const double width_;

    TextLayout layout_;
    std::vector<Alignment> aligns_;
    TextLine line_;
    double x_ = 0, y_ = 0, ascent_ = 0, descent_ = 0;
    bool firstLine_ = true, afterReturn_ = false;

    int characterRow_ = -1, paragraphRow_ = -1, tabsRow_ = 0;
    CharFormat character_;
    ParaFormat paragraph_;

    std::size_t breakFragments_ = 0, breakBytes_ = 0;
    double breakFragmentWidth_ = 0, breakX_ = 0, breakWidth_ = 0;
};

double Margins(const Shape& shape, Name one, Name other) {
    return drawing::Number(shape, one) + drawing::Number(shape, other);
}

}  // namespace

TextLayout LayOutText(FontLibrary& fonts, const Document& document, const Shape& shape, double width) {
    return LineBreaker(fonts, document, shape, width).Run();
}

double TextWidth(FontLibrary& fonts, const Document& document, const Shape& shape, double mostWidth) {
    const double margins = Margins(shape, Name::LeftMargin, Name::RightMargin);
    return std::min(mostWidth,
                    LayOutText(fonts, document, shape, mostWidth - margins).width + margins + kOthers);
}

double TextHeight(FontLibrary& fonts, const Document& document, const Shape& shape, double mostWidth) {
    const double margins = Margins(shape, Name::LeftMargin, Name::RightMargin);
    return LayOutText(fonts, document, shape, mostWidth - margins).height +
           Margins(shape, Name::TopMargin, Name::BottomMargin);
}

}  // namespace norvelis::drawing
