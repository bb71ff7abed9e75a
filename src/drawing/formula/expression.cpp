#include "drawing/formula/expression.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/text.h"
#include "drawing/formula/functions.h"
#include "drawing/formula/lexer.h"

namespace norvelis::drawing {

namespace {

constexpr int kDeepest = 60;            // Nested parentheses.
constexpr int kLongestChain = 1200;     // Terms of one sum; they make a tree as deep.
constexpr std::size_t kLongest = 8192;  // Bytes.

}  // namespace

struct Expression::Node {
    enum class Kind { Constant, Reference, Unary, Binary, Call } kind = Kind::Constant;
    Value value;
    Name unit = Name::None;
    std::size_t reference = 0;  // Index in references_.
    std::string operation;
    const Function* function = nullptr;  // Of a call; null when it is not known.
    std::vector<std::unique_ptr<Node>> arguments;
    int depth = 1;
};

Expression::Expression() = default;
Expression::~Expression() = default;

/// Recursive descent over the tokens; builds the tree and the universal spelling in one pass.
class Expression::Parser {
  public:
    Parser(const NamePool& names, Expression& result, std::string_view text)
        : names_(names), result_(result), tokens_(Tokens(text)) {}

    bool Run() {
        if (tokens_.empty()) return false;
        result_.root_ = Comparison(0);
        return result_.root_ && Peek().kind == Token::Kind::End;
    }

  private:
    using NodePtr = std::unique_ptr<Node>;

    const Token& Peek() const { return tokens_[at_]; }
    Token& Take() {
        Token& token = tokens_[at_];
        if (at_ + 1 < tokens_.size()) ++at_;
        return token;
    }
    void Spell(std::string_view text) { result_.text_ += text; }

    bool TakeSymbol(std::initializer_list<std::string_view> symbols, std::string& taken) {
        if (Peek().kind != Token::Kind::Symbol) return false;
        for (const auto symbol : symbols) {
            if (Peek().text != symbol) continue;
            taken = Take().text;
            Spell(taken);
            return true;
        }
        return false;
    }

    /// Gives the node one more argument; false when there is none.
    bool Take(Node& node, NodePtr argument) {
        if (!argument) return false;
        node.depth = std::max(node.depth, argument->depth + 1);
        node.arguments.push_back(std::move(argument));
        return true;
    }

    template <class Operand>
    NodePtr LeftToRight(std::initializer_list<std::string_view> symbols, int depth, Operand operand) {
        NodePtr left = operand(depth);
        std::string symbol;
        for (int links = 0; left && TakeSymbol(symbols, symbol); ++links) {
            if (links > kLongestChain) return nullptr;
            auto node = std::make_unique<Node>();
            node->kind = Node::Kind::Binary;
            node->operation = symbol;
            if (!Take(*node, std::move(left)) || !Take(*node, operand(depth))) return nullptr;
            left = std::move(node);
        }
        return left;
    }

    NodePtr Comparison(int depth) {
        if (depth > kDeepest) return nullptr;
        return LeftToRight({"<=", ">=", "<>", "<", ">", "="}, depth, [this](int d) { return Joined(d); });
    }
    NodePtr Joined(int depth) {
        return LeftToRight({"&"}, depth, [this](int d) { return Additive(d); });
    }
    NodePtr Additive(int depth) {
        return LeftToRight({"+", "-"}, depth, [this](int d) { return Multiplicative(d); });
    }
    NodePtr Multiplicative(int depth) {
        return LeftToRight({"*", "/"}, depth, [this](int d) { return Power(d); });
    }
    NodePtr Power(int depth) {
        return LeftToRight({"^"}, depth, [this](int d) { return Signed(d); });
    }
    NodePtr Signed(int depth) {
        if (depth > kDeepest) return nullptr;
        std::string sign;
        if (!TakeSymbol({"-", "+"}, sign)) return Primary(depth);
        NodePtr operand = Signed(depth + 1);
        if (operand && operand->kind == Node::Kind::Constant && !operand->value.isText) {
            if (sign == "-") operand->value.number = -operand->value.number;
            return operand;
        }
        auto node = std::make_unique<Node>();
        node->kind = Node::Kind::Unary;
        node->operation = sign;
        return Take(*node, std::move(operand)) ? std::move(node) : nullptr;
    }

    NodePtr Primary(int depth) {
        auto node = std::make_unique<Node>();
        std::string symbol;
        if (Peek().kind == Token::Kind::Number || Peek().kind == Token::Kind::String) {
            const Token& token = Take();
            if (token.kind == Token::Kind::Number && token.number > kGreatest) return nullptr;
            Spell(token.spelling);
            node->value = token.kind == Token::Kind::Number ? Value::Of(token.number) : Value::Of(token.text);
            node->unit = token.unit;
            return node;
        }
        if (Peek().kind == Token::Kind::Word) return Word(depth);
        if (!TakeSymbol({"("}, symbol)) return nullptr;
        node = Comparison(depth + 1);
        return node && TakeSymbol({")"}, symbol) ? std::move(node) : nullptr;
    }

    NodePtr Word(int depth) {
        const std::string word = Take().text;
        if (Peek().kind == Token::Kind::Symbol && Peek().text == "(") return Call(word, depth);
        auto node = std::make_unique<Node>();
        if (EqualIgnoringCase(word, "TRUE") || EqualIgnoringCase(word, "FALSE")) {
            Spell(UpperCase(word));
            node->value = Value::Of(word.size() == 4 ? 1.0 : 0.0);
            node->unit = Name::BOOL;
            return node;
        }
        node->kind = Node::Kind::Reference;
        return RefersTo(word, *node) ? std::move(node) : nullptr;
    }

    bool RefersTo(const std::string& word, Node& node) {
        const auto mark = word.rfind('!');
        const std::string_view sheet = std::string_view(word).substr(0, mark == std::string::npos ? 0 : mark);
        const std::string_view cell = std::string_view(word).substr(mark == std::string::npos ? 0 : mark + 1);
        if (cell.empty()) return false;
        Reference reference;
        reference.cell = ParseCellName(names_, cell);
        if (EqualIgnoringCase(sheet, "ThePage")) {
            reference.where = Reference::Where::Page;
            Spell("ThePage!");
        } else if (sheet.size() >= 6 && EqualIgnoringCase(sheet.substr(0, 6), "Sheet.")) {
            reference.where = Reference::Where::Sheet;
            const auto end = sheet.data() + sheet.size();
            if (const auto result = std::from_chars(sheet.data() + 6, end, reference.sheet);
                result.ec != std::errc() || result.ptr != end) {
                return false;
            }
            Spell(fmt::format("Sheet.{}!", reference.sheet));
        } else if (!sheet.empty()) {  // Another document's or page's cell, or a shape by its name.
            result_.opaque_ = true;
            Spell(word);
            return true;
        }
        if (reference.cell.cell == Name::None) return false;
        Spell(cell.find_first_of(".[") == std::string_view::npos ? names_.Text(reference.cell.cell) : cell);
        node.reference = result_.references_.size();
        result_.references_.push_back(reference);
        return true;
    }

    NodePtr Call(const std::string& word, int depth) {
        auto node = std::make_unique<Node>();
        node->kind = Node::Kind::Call;
        node->function = FindFunction(word);
        Spell(UpperCase(word));
        std::string symbol;
        TakeSymbol({"("}, symbol);
        if (!TakeSymbol({")"}, symbol)) {
            do {
                if (!Take(*node, Comparison(depth + 1))) return nullptr;
            } while (TakeSymbol({",", ";"}, symbol));
            if (!TakeSymbol({")"}, symbol)) return nullptr;
        }
        if (!node->function) {
            result_.opaque_ = true;
            return node;
        }
        const std::size_t count = node->arguments.size();
        return count >= node->function->least && count <= node->function->most ? std::move(node) : nullptr;
    }

    const NamePool& names_;
    Expression& result_;
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
};

class Expression::Evaluation {
  public:
    Evaluation(const Expression& expression, FormulaSource& source)
        : expression_(expression), source_(source) {}

    std::optional<Value> Of(const Node& node) {
        switch (node.kind) {
            case Node::Kind::Constant:
                return node.value;
            case Node::Kind::Reference:
                return source_.CellValue(expression_.references_[node.reference]);
            case Node::Kind::Unary: {
                auto value = Of(*node.arguments[0]);
                if (value && node.operation == "-") value->number = -value->number;
                return value;
            }
            case Node::Kind::Binary:
                return Binary(node);
            case Node::Kind::Call:
                return Call(node);
        }
        return std::nullopt;
    }

  private:
    std::optional<Value> Binary(const Node& node) {
        const auto left = Of(*node.arguments[0]), right = Of(*node.arguments[1]);
        if (!left || !right) return std::nullopt;
        const std::string& op = node.operation;
        if (op == "&") return Value::Of(AsText(*left) + AsText(*right));
        const double a = left->number, b = right->number;
        const int order = left->isText && right->isText
                              ? UpperCase(left->text).compare(UpperCase(right->text))
                          : a < b ? -1
                          : a > b ? 1
                                  : 0;
        const auto truth = [](bool true_) { return Value::Of(true_ ? 1.0 : 0.0); };
        if (op == "=") return truth(order == 0);
        if (op == "<>") return truth(order != 0);
        if (op == "<") return truth(order < 0);
        if (op == ">") return truth(order > 0);
        if (op == "<=") return truth(order <= 0);
        if (op == ">=") return truth(order >= 0);
        if (op == "/" && b == 0) return std::nullopt;
        const double result = op == "+"   ? a + b
                              : op == "-" ? a - b
                              : op == "*" ? a * b
                              : op == "/" ? a / b
                                          : std::pow(a, b);
        return Finite(result);
    }

    static std::string AsText(const Value& value) {
        return value.isText ? value.text : fmt::format("{:.10g}", value.number);
    }

    std::optional<Value> Call(const Node& node) {
        const auto& arguments = node.arguments;
        switch (node.function->kind) {
            case Function::Kind::If: {
                const auto condition = Of(*arguments[0]);
                if (!condition) return std::nullopt;
                return Of(*arguments[condition->number != 0 ? 1 : 2]);
            }
            case Function::Kind::TextWidth: {
                if (arguments.size() == 1) return Finite(source_.TextWidth(HUGE_VAL));
                const auto most = Of(*arguments[1]);
                return most ? Finite(source_.TextWidth(most->number)) : std::nullopt;
            }
            case Function::Kind::TextHeight: {
                const auto most = Of(*arguments[1]);
                return most ? Finite(source_.TextHeight(most->number)) : std::nullopt;
            }
            case Function::Kind::WalkGlue: {
                for (const auto& trigger : arguments) Of(*trigger);  // They count as read.
                const auto end = source_.WalkGlue();
                return end ? Finite(*end) : std::nullopt;
            }
            case Function::Kind::Trigger:
                return std::nullopt;
            case Function::Kind::Plain:
                break;
        }
        std::vector<Value> values;
        for (const auto& argument : arguments) {
            auto value = Of(*argument);
            if (!value) return std::nullopt;
            values.push_back(std::move(*value));
        }
        return node.function->plain(values);
    }

    const Expression& expression_;
    FormulaSource& source_;
};

std::shared_ptr<const Expression> Expression::Parse(const NamePool& names, std::string_view text) {
    if (text.size() > kLongest) return nullptr;
    std::shared_ptr<Expression> expression(new Expression);
    return Parser(names, *expression, text).Run() ? expression : nullptr;
}

bool Expression::IsConstant() const {
    return root_->kind == Node::Kind::Constant;
}

int Expression::Depth() const {
    return root_->depth;
}

Name Expression::ConstantUnit() const {
    return root_->unit;
}

std::optional<Value> Expression::Evaluate(FormulaSource& source) const {
    return opaque_ ? std::nullopt : Evaluation(*this, source).Of(*root_);
}

}  // namespace norvelis::drawing
