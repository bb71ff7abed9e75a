#include "viewer/report_search.h"

#include <algorithm>

#include "base/text.h"

namespace norvelis::viewer {

namespace {

constexpr std::size_t kPiece = 1 << 20;

unsigned char Upper(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 'a' && byte <= 'z' ? static_cast<unsigned char>(byte - 'a' + 'A') : byte;
}

}  // namespace

// Each byte of a report is one letter, so the letters of the text are found among those of all bytes.
std::optional<std::string> ReportBytes(std::string_view utf8) {
    std::string bytes;
    while (!utf8.empty()) {
        const auto first = static_cast<unsigned char>(utf8.front());
        const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
        const std::string_view letter = utf8.substr(0, length);
        int byte = 0;
        while (byte < 256 && ToUtf8(std::string(1, static_cast<char>(byte))) != letter) ++byte;
        if (byte == 256) return std::nullopt;
        bytes += static_cast<char>(byte);
        utf8.remove_prefix(std::min(length, utf8.size()));
    }
    return bytes;
}

// Horspool's method: the byte under the text's end says how far the text can be moved on.
TextSearch::TextSearch(std::string_view text) : text_(UpperCase(text)) {
    advance_.fill(text_.size());
    for (std::size_t i = 0; i + 1 < text_.size(); ++i)
        advance_[static_cast<unsigned char>(text_[i])] = text_.size() - 1 - i;
}

std::size_t TextSearch::Find(std::string_view bytes, std::size_t from) const {
    while (from + text_.size() <= bytes.size()) {
        std::size_t i = text_.size();
        while (i > 0 && Upper(bytes[from + i - 1]) == static_cast<unsigned char>(text_[i - 1])) --i;
        if (i == 0) return from;
        from += advance_[Upper(bytes[from + text_.size() - 1])];
    }
    return std::string_view::npos;
}

std::vector<std::size_t> TextSearch::In(std::string_view line) const {
    std::vector<std::size_t> places;
    for (auto at = Find(line, 0); at != std::string_view::npos; at = Find(line, at + text_.size()))
        places.push_back(at);
    return places;
}

// Pieces overlap by one byte less than the text, so that each place is whole in exactly one.
std::optional<std::uint64_t> TextSearch::FindNext(const FileReader& file, std::uint64_t from,
                                                  const std::stop_token& stop) const {
    for (; !stop.stop_requested(); from += kPiece) {
        const std::string bytes = file.Read(from, kPiece + text_.size() - 1);
        const auto at = Find(bytes, 0);
        if (at != std::string::npos) return from + at;
        if (bytes.size() < kPiece) break;
    }
    return std::nullopt;
}

std::optional<std::uint64_t> TextSearch::FindPrevious(const FileReader& file, std::uint64_t before,
                                                      const std::stop_token& stop) const {
    for (std::uint64_t end = std::min(before, file.Size()); end > 0 && !stop.stop_requested();) {
        const std::uint64_t begin = end - std::min<std::uint64_t>(end, kPiece);
        const std::string bytes = file.Read(begin, static_cast<std::size_t>(end - begin) + text_.size() - 1);
        std::optional<std::uint64_t> last;
        for (auto at = Find(bytes, 0); at != std::string::npos; at = Find(bytes, at + 1)) last = begin + at;
        if (last) return last;
        end = begin;
    }
    return std::nullopt;
}

}  // namespace norvelis::viewer
