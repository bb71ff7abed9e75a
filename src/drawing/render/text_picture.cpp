#include "drawing/render/text_picture.h"

#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace norvelis::drawing::render {

namespace {

/// What one character row says.
struct LetterStyle {
    QFont font;
    QColor color;
    double rise = 0;  ///< Of the base line, for super- and subscript.
    int letterCase = 0;
};

struct ParagraphStyle {
    double first = 0, left = 0, right = 0, before = 0, after = 0, spacing = -1.2;
    int align = 1;
    bool bullet = false;
    QList<QTextOption::Tab> tabs;
};

struct Piece {
    QString text;
    int row = 0;
};

struct Paragraph {
    std::vector<Piece> pieces;
    int row = 0, tabs = 0;
};

class TextSetter {
  public:
    TextSetter(const Document& document, const Shape& shape, double width, double height)
        : document_(document), shape_(shape), size_(width * kUnitsPerInch, height * kUnitsPerInch) {}

    TextPicture Set() {
        left_ = Length(Name::LeftMargin), right_ = Length(Name::RightMargin);
        for (const Paragraph& paragraph : Paragraphs()) Set(paragraph);
        const double top = Length(Name::TopMargin), bottom = Length(Name::BottomMargin), slack = size_.height() - top - bottom - y_;
        const int align = static_cast<int>(Number(shape_, Name::VerticalAlign));
        const double shift = top + (align == 0 ? 0 : align == 1 ? slack / 2 : slack);
        double from = size_.width(), to = 0;
        for (Fragment& fragment : picture_.fragments) {
            fragment.start.ry() += shift;
            from = std::min(from, fragment.start.x());
            to = std::max(to, fragment.start.x() + fragment.width);
        }
        if (!picture_.fragments.empty())
            picture_.bounds = QRectF(QPointF(from - left_, shift - top), QPointF(to + right_, shift + y_ + bottom));
        return std::move(picture_);
    }

  private:
    double Length(Name cell) const { return Number(shape_, cell) * kUnitsPerInch; }
    double OfRow(Name section, int row, Name cell) const {
        return Number(shape_, CellRef(section, 0, RowKey::Number(row), cell));
    }

    /// The text cut at its line ends; CR LF is one line end, and the one that closes the text opens no line.
    std::vector<Paragraph> Paragraphs() const {
        std::vector<Paragraph> paragraphs;
        bool open = false;
        for (const TextRun& run : TextOf(shape_)) {
            QString text = QString::fromStdString(run.text);
            text.remove('\r');
            const QStringList lines = text.split('\n');
            for (qsizetype i = 0; i < lines.size(); ++i) {
                if (i > 0 || !open) paragraphs.push_back({{}, run.paragraph, run.tabs});
                open = true;
                if (!lines[i].isEmpty()) paragraphs.back().pieces.push_back({lines[i], run.character});
                if (lines[i].isEmpty() && paragraphs.back().pieces.empty()) paragraphs.back().pieces.push_back({{}, run.character});
            }
        }
        if (!paragraphs.empty() && paragraphs.back().pieces.size() == 1 && paragraphs.back().pieces.front().text.isEmpty())
            paragraphs.pop_back();
        return paragraphs;
    }

    LetterStyle Letters(int row) const {
        const auto cell = [&](Name name) { return OfRow(Name::Character, row, name); };
        LetterStyle letters;
        const QString family = QString::fromStdString(document_.FontName(static_cast<int>(cell(Name::Font))));
        letters.font.setFamilies({family, StandIn(family)});
        const int position = static_cast<int>(cell(Name::Pos)), style = static_cast<int>(cell(Name::Style));
        const double size = std::clamp(cell(Name::Size) * kUnitsPerInch, 1.0, 50000.0);
        letters.font.setPixelSize(std::max(1, static_cast<int>(std::lround(position == 0 ? size : size * 0.6))));
        letters.rise = position == 1 ? size * 0.35 : position == 2 ? -size * 0.15 : 0;
        letters.font.setBold((style & 1) != 0);
        letters.font.setItalic((style & 2) != 0);
        letters.font.setUnderline((style & 4) != 0);
        letters.font.setHintingPreference(QFont::PreferNoHinting);
        letters.letterCase = static_cast<int>(cell(Name::Case));
        const Color color = ColorOf(document_, shape_, CellRef(Name::Character, 0, RowKey::Number(row), Name::Color));
        letters.color = QColor(color.red, color.green, color.blue);
        letters.color.setAlphaF(static_cast<float>(1 - std::clamp(cell(Name::ColorTrans), 0.0, 1.0)));
        return letters;
    }

    /// The free family of the same measures.
    static QString StandIn(const QString& family) {
        if (family.contains("Times", Qt::CaseInsensitive)) return "Liberation Serif";
        if (family.contains("Courier", Qt::CaseInsensitive)) return "Liberation Mono";
        return "Liberation Sans";
    }

    ParagraphStyle Style(const Paragraph& paragraph) const {
        const auto cell = [&](Name name) { return OfRow(Name::Paragraph, paragraph.row, name); };
        ParagraphStyle style;
        style.first = cell(Name::IndFirst) * kUnitsPerInch;
        style.left = cell(Name::IndLeft) * kUnitsPerInch;
        style.right = cell(Name::IndRight) * kUnitsPerInch;
        style.before = cell(Name::SpBefore) * kUnitsPerInch;
        style.after = cell(Name::SpAfter) * kUnitsPerInch;
        style.spacing = cell(Name::SpLine);
        style.align = static_cast<int>(cell(Name::HorzAlign));
        style.bullet = cell(Name::Bullet) > 0;
        const auto stop = [&](Name position, Name alignment) {
            const CellRef place(Name::Tabs, 0, RowKey::Number(paragraph.tabs), position);
            if (!Find(shape_, place)) return;
            const int kind = std::clamp(static_cast<int>(OfRow(Name::Tabs, paragraph.tabs, alignment)), 0, 3);
            constexpr QTextOption::TabType kinds[] = {QTextOption::LeftTab, QTextOption::CenterTab, QTextOption::RightTab,
                                                      QTextOption::DelimiterTab};
            style.tabs.append({Number(shape_, place) * kUnitsPerInch, kinds[kind], '.'});
        };
        stop(Name::Position0, Name::Alignment0);
        stop(Name::Position1, Name::Alignment1);
        stop(Name::Position2, Name::Alignment2);
        return style;
    }

    static QString Cased(const QString& text, int letterCase) {
        if (letterCase == 1) return text.toUpper();
        if (letterCase != 2) return text;
        QString cased = text;
        for (qsizetype i = 0; i < cased.size(); ++i) {
            if (i == 0 || cased[i - 1].isSpace()) cased[i] = cased[i].toUpper();
        }
        return cased;
    }

    void Set(const Paragraph& paragraph) {
        const ParagraphStyle style = Style(paragraph);
        QString text;
        QList<QTextLayout::FormatRange> ranges;
        std::vector<LetterStyle> letters;
        for (const Piece& piece : paragraph.pieces) {
            letters.push_back(Letters(piece.row));
            QString pieceText = Cased(piece.text, letters.back().letterCase);
            if (style.bullet && text.isEmpty()) pieceText.prepend(QString::fromUtf8("\u2022 "));
            QTextLayout::FormatRange range;
            range.start = static_cast<int>(text.size());
            range.length = static_cast<int>(pieceText.size());
            range.format.setFont(letters.back().font);
            ranges.append(range);
            text += pieceText;
        }
        if (letters.empty()) return;

        QTextLayout layout(text, letters.front().font);
        layout.setFormats(ranges);
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        option.setTabs(style.tabs);
        option.setTabStopDistance(0.5 * kUnitsPerInch);
        layout.setTextOption(option);
        // Half a point of grace: a block that was measured to fit must not break over a rounding.
        const double width = std::max(1.0, size_.width() - left_ - right_ - style.left - style.right + kUnitsPerPoint / 2);
        y_ += style.before;
        layout.beginLayout();
        bool first = true;
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(std::max(1.0, width - (first ? style.first : 0)));
            Place(line, text, ranges, letters, style, width, first);
            first = false;
        }
        layout.endLayout();
        y_ += style.after;
    }

    void Place(const QTextLine& line, const QString& text, const QList<QTextLayout::FormatRange>& ranges,
               const std::vector<LetterStyle>& letters, const ParagraphStyle& style, double width, bool first) {
        const double free = std::max(0.0, width - kUnitsPerPoint / 2 - (first ? style.first : 0) - line.naturalTextWidth());
        const double start = left_ + style.left + (first ? style.first : 0) + (style.align == 1 ? free / 2 : style.align == 2 ? free : 0);
        const int from = line.textStart(), to = from + line.textLength();
        double tallest = 0;
        for (qsizetype i = 0; i < ranges.size(); ++i) {
            if (ranges[i].start < to || ranges[i].start == from) tallest = std::max<double>(tallest, letters[static_cast<std::size_t>(i)].font.pixelSize());
        }
        const double pitch = style.spacing > 0 ? style.spacing * kUnitsPerInch : style.spacing < 0 ? -style.spacing * tallest : line.height();
        const double base = y_ + (pitch - line.height()) / 2 + line.ascent();
        for (qsizetype i = 0; i < ranges.size(); ++i) {
            const int begin = std::max(from, ranges[i].start), end = std::min(to, ranges[i].start + ranges[i].length);
            AddFragments(line, text, begin, end, letters[static_cast<std::size_t>(i)], {start, base});
        }
        y_ += pitch;
    }

    /// A piece of the line, cut at tabs.
    void AddFragments(const QTextLine& line, const QString& text, int begin, int end, const LetterStyle& letters, QPointF origin) {
        while (begin < end) {
            const int tab = static_cast<int>(text.indexOf('\t', begin)), stop = tab < 0 ? end : std::min(end, tab);
            if (stop > begin) {
                const double x = line.cursorToX(begin), width = line.cursorToX(stop) - x;
                picture_.fragments.push_back({origin + QPointF(x, -letters.rise), width, text.mid(begin, stop - begin), letters.font, letters.color});
            }
            begin = stop + 1;
        }
    }

    const Document& document_;
    const Shape& shape_;
    QSizeF size_;
    double left_ = 0, right_ = 0;
    double y_ = 0;  ///< Lower edge of the lines so far.
    TextPicture picture_;
};

}  // namespace

TextPicture LayOutText(const Document& document, const Shape& shape, double width, double height) {
    return TextSetter(document, shape, width, height).Set();
}

}  // namespace norvelis::drawing::render
