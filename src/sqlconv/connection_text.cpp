#include "sqlconv/connection_text.h"

#include <algorithm>

#include "base/text.h"

namespace norvelis {

namespace {

constexpr std::string_view kHidden = "***";

/// Where a value that begins at `begin` ends: at the next semicolon outside braces.
std::size_t EndOfValue(std::string_view text, std::size_t begin) {
    std::size_t i = std::min(text.find_first_not_of(' ', begin), text.size());
    if (i < text.size() && text[i] == '{') {
        while (++i < text.size()) {
            if (text[i] != '}') continue;
            if (i + 1 >= text.size() || text[i + 1] != '}') break;
            ++i;  // A closing brace in the value is written twice.
        }
    }
    return std::min(text.find(';', i), text.size());
}

std::string Unbraced(std::string_view written) {
    written = Trim(written);
    if (written.size() < 2 || written.front() != '{' || written.back() != '}') return std::string(written);
    std::string value;
    written = written.substr(1, written.size() - 2);
    for (std::size_t i = 0; i < written.size(); ++i) {
        value += written[i];
        if (written[i] == '}' && i + 1 < written.size() && written[i + 1] == '}') ++i;
    }
    return value;
}

/// Braces only where they are needed: not every driver takes them.
std::string Written(std::string_view value) {
    if (value.find_first_of(";{}") == std::string_view::npos && Trim(value) == value)
        return std::string(value);
    std::string written = "{";
    for (const char c : value) {
        written += c;
        if (c == '}') written += c;
    }
    return written + '}';
}

bool IsPassword(std::string_view key) {
    return EqualIgnoringCase(key, "PWD") || EqualIgnoringCase(key, "PASSWORD");
}

}  // namespace

ConnectionText::ConnectionText(std::string_view text) {
    if (text.find('=') == std::string_view::npos) {
        parts_.push_back({"DSN", std::string(text)});
        return;
    }
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t equals = text.find_first_of("=;", begin);
        if (equals == std::string_view::npos || text[equals] == ';') {
            begin = equals == std::string_view::npos ? text.size() : equals + 1;
            continue;
        }
        const std::size_t end = EndOfValue(text, equals + 1);
        parts_.push_back({std::string(Trim(text.substr(begin, equals - begin))),
                          std::string(text.substr(equals + 1, end - equals - 1))});
        begin = end + 1;
    }
}

const ConnectionText::Part* ConnectionText::Find(std::string_view key) const {
    const auto found = std::find_if(parts_.begin(), parts_.end(),
                                    [key](const Part& part) { return EqualIgnoringCase(part.key, key); });
    return found != parts_.end() ? &*found : nullptr;
}

std::string ConnectionText::Value(std::string_view key) const {
    const Part* part = Find(key);
    return part != nullptr ? Unbraced(part->written) : std::string();
}

bool ConnectionText::Has(std::string_view key) const {
    return Find(key) != nullptr;
}

void ConnectionText::Set(std::string_view key, std::string_view value) {
    std::erase_if(parts_, [key](const Part& part) { return EqualIgnoringCase(part.key, key); });
    parts_.push_back({std::string(key), Written(value)});
}

std::string ConnectionText::Text() const {
    std::string text;
    for (const auto& part : parts_) text += (text.empty() ? "" : ";") + part.key + "=" + part.written;
    return text;
}

std::string ConnectionText::Shown() const {
    std::string text;
    for (const auto& part : parts_) {
        text += (text.empty() ? "" : ";") + part.key + "=" +
                (IsPassword(part.key) ? std::string(kHidden) : part.written);
    }
    return text;
}

std::string ShownSource(std::string_view source) {
    const ConnectionText text(source);
    return text.Has("PWD") || text.Has("PASSWORD") ? text.Shown() : std::string(source);
}

std::string TypedSource(std::string_view typed, std::string_view before) {
    if (typed.find(kHidden) == std::string_view::npos) return std::string(typed);
    ConnectionText text(typed);
    const ConnectionText former(before);
    for (auto& part : text.parts_) {
        const auto* password = former.Find(part.key);
        if (IsPassword(part.key) && part.written == kHidden && password != nullptr)
            part.written = password->written;
    }
    return text.Text();
}

}  // namespace norvelis
