#include "drawing/render/text_picture.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

#include "drawing/text/text_layout.h"

namespace norvelis::drawing::render {

namespace {

/// A block that was measured to fit its text must not break it over a rounding.
constexpr double kGrace = 0.5 / 72;

/// What one character row says.
struct Letters {
    QFont font;
    QColor color;
    double rise = 0;  ///< Of the base line, for super- and subscript.
    int letterCase = 0;
};

Letters LettersOf(const Document& document, const Shape& shape, int row) {
    const auto cell = [&](Name name) {
        return Number(shape, CellRef(Name::Character, 0, RowKey::Number(row), name));
    };
    Letters letters;
    const std::string& family = document.FontName(static_cast<int>(cell(Name::Font)));
    letters.font.setFamilies(
        {QString::fromStdString(family), QString::fromStdString(SubstituteFamily(family))});
    const int position = static_cast<int>(cell(Name::Pos)), style = static_cast<int>(cell(Name::Style));
    const double size = std::clamp(cell(Name::Size) * kUnitsPerInch, 1.0, 50000.0);
    letters.font.setPixelSize(std::max(1, static_cast<int>(std::lround(position == 0 ? size : size * 0.6))));
    letters.rise = position == 1 ? size * 0.35 : position == 2 ? -size * 0.15 : 0;
    letters.font.setBold((style & 1) != 0);
    letters.font.setItalic((style & 2) != 0);
    letters.font.setUnderline((style & 4) != 0);
    letters.font.setStrikeOut(cell(Name::Strikethru) != 0);
    letters.font.setKerning(false);  // Lines are measured character by character.
    letters.font.setHintingPreference(QFont::PreferNoHinting);
    letters.letterCase = static_cast<int>(cell(Name::Case));
    const Color color =
        ColorOf(document, shape, CellRef(Name::Character, 0, RowKey::Number(row), Name::Color));
    letters.color = QColor(color.red, color.green, color.blue);
    letters.color.setAlphaF(static_cast<float>(1 - std::clamp(cell(Name::ColorTrans), 0.0, 1.0)));
    return letters;
}

QString Cased(QString text, int letterCase) {
    if (letterCase == 1) return text.toUpper();
    if (letterCase != 2) return text;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (i == 0 || text[i - 1].isSpace()) text[i] = text[i].toUpper();
    }
    return text;
}

}  // namespace

TextPicture PictureOfText(FontLibrary& fonts, const Document& document, const Shape& shape, double width,
                          double height) {
    const auto margin = [&shape](Name cell) { return Number(shape, cell); };
    const double left = margin(Name::LeftMargin), right = margin(Name::RightMargin);
    const double top = margin(Name::TopMargin), bottom = margin(Name::BottomMargin);
    const double space = width - left - right;
    const TextLayout layout = LayOutText(fonts, document, shape, space + kGrace);
    const double slack = height - top - bottom - layout.height;
    const int align = static_cast<int>(Number(shape, Name::VerticalAlign));
    const double down = top + (align == 0 ? 0 : align == 1 ? slack / 2 : slack);

    TextPicture picture;
    std::map<int, Letters> rows;
    double from = width, to = 0;
    for (const TextLine& line : layout.lines) {
        std::optional<double> inkFrom;
        for (const TextFragment& fragment : line.fragments) {
            if (fragment.text.empty()) continue;
            auto row = rows.find(fragment.character);
            if (row == rows.end())
                row = rows.emplace(fragment.character, LettersOf(document, shape, fragment.character)).first;
            const Letters& letters = row->second;
            const QPointF start((left + fragment.x - kGrace / 2) * kUnitsPerInch,
                                (down + line.baseline) * kUnitsPerInch - letters.rise);
            picture.fragments.push_back({start, fragment.width * kUnitsPerInch,
                                         Cased(QString::fromStdString(fragment.text), letters.letterCase),
                                         letters.font, letters.color});
            from = std::min(from, left + fragment.x);
            to = std::max(to, left + fragment.x + fragment.width);
            const bool hasInk = fragment.text.find_first_not_of(' ') != std::string::npos;
            if (hasInk && !inkFrom) inkFrom = fragment.x;
        }
        if (inkFrom) {  // From the left margin's begin to the right one's end; blanks at the end do not
                        // count.
            picture.ink.emplace_back(*inkFrom * kUnitsPerInch, (down + line.top) * kUnitsPerInch,
                                     (left + line.width + right) * kUnitsPerInch,
                                     line.height * kUnitsPerInch);
        }
    }
    if (!picture.fragments.empty()) {
        picture.bounds = QRectF(QPointF(from - left, down - top) * kUnitsPerInch,
                                QPointF(to + right, down + layout.height + bottom) * kUnitsPerInch);
    }
    return picture;
}

}  // namespace norvelis::drawing::render
