#include "drawing/formula/lexer.h"

#include <array>
#include <charconv>
#include <numbers>

#include "base/text.h"

namespace norvelis::drawing {

namespace {

struct UnitWord {
    std::string_view word, spelling;
    double factor;  // To internal units.
    Name unit;
};
constexpr double kDegree = std::numbers::pi / 180;
constexpr std::array<UnitWord, 20> kUnits = {{
    {"in", " in", 1, Name::IN},
    {"in.", " in", 1, Name::IN},
    {"inch", " in", 1, Name::IN},
    {"inches", " in", 1, Name::IN},
    {"\"", " in", 1, Name::IN},
    {"pt", " pt", 1.0 / 72, Name::PT},
    {"pt.", " pt", 1.0 / 72, Name::PT},
    {"mm", " mm", 1 / 25.4, Name::MM},
    {"mm.", " mm", 1 / 25.4, Name::MM},
    {"cm", " cm", 1 / 2.54, Name::CM},
    {"cm.", " cm", 1 / 2.54, Name::CM},
    {"m", " m", 100 / 2.54, Name::None},
    {"ft", " ft", 12, Name::None},
    {"deg", " deg", kDegree, Name::DEG},
    {"deg.", " deg", kDegree, Name::DEG},
    {"rad", " rad", 1, Name::RAD},
    {"DL", "DL", 1, Name::DL},
    {"DT", "DT", 1.0 / 72, Name::DT},
    {"DA", "DA", kDegree, Name::DA},
    {"%", "%", 0.01, Name::PER},
}};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

class Lexer {
  public:
    explicit Lexer(std::string_view rest) : rest_(rest) {}

    std::vector<Token> Run() {
        for (;;) {
            SkipBlanks();
            Token token;
            if (rest_.empty()) {
                tokens_.push_back(token);
                return std::move(tokens_);
            }
            const bool good = IsDigit(rest_[0]) || (rest_[0] == '.' && rest_.size() > 1 && IsDigit(rest_[1]))
                                  ? Number(token)
                              : rest_[0] == '"'                        ? String(token)
                              : IsLetter(rest_[0]) || rest_[0] == '\'' ? Word(token)
                                                                       : Symbol(token);
            if (!good) return {};
            tokens_.push_back(std::move(token));
        }
    }

  private:
    void SkipBlanks() {
        while (!rest_.empty() &&
               (rest_[0] == ' ' || rest_[0] == '\t' || rest_[0] == '\n' || rest_[0] == '\r')) {
            rest_.remove_prefix(1);
        }
    }
    std::string_view Cut(std::size_t length) {
        const auto cut = rest_.substr(0, length);
        rest_.remove_prefix(cut.size());
        return cut;
    }

    bool Number(Token& token) {
        token.kind = Token::Kind::Number;
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), token.number);
        if (error != std::errc()) return false;
        token.spelling = Cut(static_cast<std::size_t>(end - rest_.data()));
        const std::string_view behind = rest_;
        SkipBlanks();
        std::size_t length = 0;
        while (length < rest_.size() && IsLetter(rest_[length])) ++length;
        if (length == 0 && !rest_.empty() && (rest_[0] == '%' || rest_[0] == '"')) length = 1;
        if (length > 0 && length < rest_.size() && rest_[length] == '.') ++length;
        for (; length > 0; --length) {  // With the dot behind it, else without.
            for (const auto& unit : kUnits) {
                if (!EqualIgnoringCase(unit.word, rest_.substr(0, length))) continue;
                Cut(length);
                token.number *= unit.factor;
                token.unit = unit.unit;
                token.spelling += unit.spelling;
                return true;
            }
            if (rest_[length - 1] != '.') break;
        }
        rest_ = behind;
        return true;
    }

    bool String(Token& token) {
        token.kind = Token::Kind::String;
        std::size_t at = 1;
        for (;; ++at) {
            if (at >= rest_.size()) return false;
            if (rest_[at] == '"' && (at + 1 >= rest_.size() || rest_[at + 1] != '"')) break;
            if (rest_[at] == '"') ++at;
            token.text += rest_[at];
        }
        token.spelling = Cut(at + 1);
        return true;
    }

    bool Word(Token& token) {
        token.kind = Token::Kind::Word;
        std::size_t at = 0;
        if (rest_[0] == '\'') {  // A sheet's name in quotes.
            at = rest_.find('\'', 1);
            if (at == std::string_view::npos) return false;
            ++at;
        }
        while (at < rest_.size() &&
               (IsLetter(rest_[at]) || IsDigit(rest_[at]) || rest_[at] == '.' || rest_[at] == '!')) {
            ++at;
        }
        if (at < rest_.size() && rest_[at] == '[') {
            std::size_t close = at + 1;
            while (close < rest_.size() &&
                   (IsDigit(rest_[close]) || IsLetter(rest_[close]) || rest_[close] == '-'))
                ++close;
            if (close >= rest_.size() || rest_[close] != ']') return false;
            at = close + 1;
            while (at < rest_.size() &&
                   (IsLetter(rest_[at]) || IsDigit(rest_[at]) || rest_[at] == '.' || rest_[at] == '!')) {
                ++at;
            }
        }
        token.text = token.spelling = Cut(at);
        return true;
    }

    bool Symbol(Token& token) {
        token.kind = Token::Kind::Symbol;
        for (const std::string_view two : {"<=", ">=", "<>"}) {
            if (rest_.starts_with(two)) {
                token.text = token.spelling = Cut(2);
                return true;
            }
        }
        if (std::string_view("+-*/^&()=<>,;").find(rest_[0]) == std::string_view::npos) return false;
        token.text = token.spelling = Cut(1);
        return true;
    }

    std::string_view rest_;
    std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> Tokens(std::string_view formula) {
    return Lexer(formula).Run();
}

}  // namespace norvelis::drawing
