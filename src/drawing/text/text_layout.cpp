#include "drawing/text/text_layout.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace norvelis::drawing {

namespace {

constexpr char32_t kSoftBreak = 0x2028;
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

/// Formats of damaged files are brought back to what can be measured.
double Within(double value, double least, double most) {
    return std::isnan(value) ? least : std::clamp(value, least, most);
}

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
            const bool completes = character == '\n' && afterReturn_;  // A carriage return ended the line.
            if (character == '\r' || character == kSoftBreak || (character == '\n' && !completes)) {
                Grow(character_);
                EndLine(character != kSoftBreak);
            } else if (character == '\t') {
                AddTab();
            } else if (!completes) {
                AddCharacter(character, bytes);
            }
            afterReturn_ = character == '\r';
        }
        Grow(character_);
    }

    void AddCharacter(char32_t character, std::string_view bytes) {
        BeginLine();
        const double advance = Advance(character);
        const bool blank = character == ' ';
        while (!blank && x_ + advance > Right() + kSlack && !line_.fragments.empty()) Wrap();
        Grow(character_);
        auto& fragments = line_.fragments;
        if (fragments.empty() || fragments.back().character != characterRow_)
            fragments.push_back({{}, characterRow_, x_, 0});
        fragments.back().text += bytes;
        fragments.back().width += advance;
        x_ += advance;
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

    /// The indent is that of the paragraph whose first character comes.
    void BeginLine() {
        if (begun_) return;
        begun_ = true;
        x_ = line_.width = Left();
    }

    /// The line is as high as its largest character.
    void Grow(const CharFormat& format) {
        const double size = format.size;
        const double spacing = paragraph_.spacing;
        line_.height = std::max(line_.height, spacing < 0 ? -spacing * size : spacing > 0 ? spacing : size);
        ascent_ = std::max(ascent_, format.face->Ascent() * size);
        descent_ = std::max(descent_, format.face->Descent() * size);
    }

    /// What follows a tab starts at its stop, or is moved there once it is known how long it is.
    void AddTab() {
        BeginLine();
        SettleTab();
        Grow(character_);
        const TabStop stop = NextTabStop(x_);
        if (stop.alignment == 0) x_ = stop.position;
        line_.fragments.push_back({{}, characterRow_, x_, 0});
        tab_ = {stop, line_.fragments.size() - 1};
        RememberBreak();
    }

    void SettleTab() {
        if (tab_.stop.alignment == 0) return;
        const auto first = line_.fragments.begin() + static_cast<std::ptrdiff_t>(tab_.fragment);
        double length = 0, whole = 0;
        bool beforePoint = true;
        for (auto fragment = first; fragment != line_.fragments.end(); ++fragment) {
            const auto point = fragment->text.find('.');
            if (beforePoint) length += WidthOfStart(*fragment, point);
            beforePoint = beforePoint && point == std::string::npos;
            whole += fragment->width;
        }
        const double before = tab_.stop.alignment == 1   ? whole / 2
                              : tab_.stop.alignment == 2 ? whole
                                                         : length;
        const double shift = std::max(0.0, tab_.stop.position - before - first->x);
        for (auto fragment = first; fragment != line_.fragments.end(); ++fragment) fragment->x += shift;
        if (whole > 0) line_.width += shift;
        x_ += shift;
        tab_ = {};
    }

    /// Of a fragment's text up to a byte; the whole when there is no such byte.
    double WidthOfStart(const TextFragment& fragment, std::size_t end) {
        if (end == std::string::npos) return fragment.width;
        const CharFormat now = std::exchange(character_, Characters(fragment.character));
        double width = 0;
        for (std::string_view start = std::string_view(fragment.text).substr(0, end); !start.empty();)
            width += Advance(NextCharacter(start));
        character_ = now;
        return width;
    }

    void RememberBreak() {
        breakFragments_ = line_.fragments.size();
        breakBytes_ = line_.fragments.back().text.size();
        breakFragmentWidth_ = line_.fragments.back().width;
        breakX_ = x_;
        breakWidth_ = line_.width;
    }

    /// Moves what is behind the last place for a break to a new line; the whole line stays when there is
    /// none.
    void Wrap() {
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
        if (tab_.fragment >= line_.fragments.size()) tab_ = {};
        EndLine(false);
        BeginLine();
        for (auto& fragment : carried) fragment.x += x_ - oldX;
        line_.fragments = std::move(carried);
        x_ += rest;
        if (!line_.fragments.empty()) line_.width = x_;
        for (const auto& fragment : line_.fragments) Grow(Characters(fragment.character));
    }

    void EndLine(bool paragraphEnds) {
        BeginLine();
        SettleTab();
        tab_ = {};
        if (firstLine_ && !layout_.lines.empty()) y_ += paragraph_.before;
        line_.top = y_;
        // The surplus of the line's height is above the characters, as word processors have it.
        line_.baseline = y_ + (line_.height - (ascent_ + descent_)) / 2 + ascent_;
        y_ += line_.height;
        if (paragraphEnds) y_ += paragraph_.after;
        layout_.width = std::max(layout_.width, line_.width + paragraph_.right);
        layout_.height = y_;
        aligns_.push_back({paragraph_.align, Left(), paragraph_.right});
        layout_.lines.push_back(std::move(line_));
        line_ = {};
        firstLine_ = paragraphEnds;
        begun_ = false;
        ascent_ = descent_ = 0;
        breakFragments_ = 0;
    }

    void Align() {
        const double whole = std::isinf(width_) ? layout_.width : width_;
        for (std::size_t i = 0; i < layout_.lines.size(); ++i) {
            auto& line = layout_.lines[i];
            const double space = whole - aligns_[i].right - line.width;
            const double shift = aligns_[i].align == 1 ? space / 2 : aligns_[i].align == 2 ? space : 0;
            for (auto& fragment : line.fragments) fragment.x += shift;
            line.width -= aligns_[i].left;
        }
    }

    struct TabStop {
        double position = 0;
        int alignment =
            0;  ///< What follows starts at it (0), is centred (1), ends (2) or has its point there (3).
    };

    TabStop NextTabStop(double x) const {
        const std::pair<Name, Name> stops[] = {{Name::Position0, Name::Alignment0},
                                               {Name::Position1, Name::Alignment1},
                                               {Name::Position2, Name::Alignment2}};
        for (const auto& [position, alignment] : stops) {
            const auto cell = [this](Name name) {
                return drawing::Find(shape_, {Name::Tabs, 0, RowKey::Number(tabsRow_), name});
            };
            const Cell* const stop = cell(position);
            if (!stop || !(stop->value > x + kSlack)) continue;
            const Cell* const kind = cell(alignment);
            return {stop->value,
                    kind && kind->value >= 1 && kind->value <= 3 ? static_cast<int>(kind->value) : 0};
        }
        const double step = std::max(0.05, drawing::Number(shape_, Name::DefaultTabStop));
        return {(std::floor(x / step + kSlack) + 1) * step, 0};
    }

    CharFormat Characters(int row) {
        const auto number = [&](Name cell) {
            return drawing::Number(shape_, {Name::Character, 0, RowKey::Number(row), cell});
        };
        const int style = static_cast<int>(number(Name::Style));
        CharFormat format;
        format.face =
            &fonts_.Face(document_.FontName(static_cast<int>(number(Name::Font))), style & 1, style & 2);
        format.size = Within(number(Name::Size), 0, 100);
        format.scale = Within(number(Name::FontScale), 0.01, 10);
        format.letterspace = Within(number(Name::Letterspace), -1, 10);
        format.capitals = static_cast<int>(number(Name::Case)) == 1;
        return format;
    }

    ParaFormat Paragraph(int row) {
        const auto number = [&](Name cell) {
            return drawing::Number(shape_, {Name::Paragraph, 0, RowKey::Number(row), cell});
        };
        const auto length = [&number](Name cell) { return Within(number(cell), -100, 100); };
        ParaFormat format;
        format.first = length(Name::IndFirst);
        format.left = length(Name::IndLeft);
        format.right = length(Name::IndRight);
        format.spacing = length(Name::SpLine);
        format.before = length(Name::SpBefore);
        format.after = length(Name::SpAfter);
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
    bool firstLine_ = true, begun_ = false, afterReturn_ = false;
    struct {
        TabStop stop;
        std::size_t fragment = 0;  // The first behind the tab.
    } tab_;

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
