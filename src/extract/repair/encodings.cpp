#include "extract/repair/encodings.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <string>

#include "base/failure.h"
#include "base/text.h"
#include "extract/format/keywords.h"

namespace norvelis::repair {

namespace {

constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

struct EncodingName {
    std::string_view name;
    Encoding encoding;
};
// The first name of each encoding is the one that is shown.
constexpr std::array<EncodingName, 12> kNames = {{{"Windows-1252", Encoding::SingleByte},
                                                  {"CP1252", Encoding::SingleByte},
                                                  {"UTF-16LE", Encoding::Utf16LittleEndian},
                                                  {"UTF-16", Encoding::Utf16LittleEndian},
                                                  {"UTF-16BE", Encoding::Utf16BigEndian},
                                                  {"IBM037", Encoding::Ebcdic037},
                                                  {"CP037", Encoding::Ebcdic037},
                                                  {"037", Encoding::Ebcdic037},
                                                  {"37", Encoding::Ebcdic037},
                                                  {"IBM1047", Encoding::Ebcdic1047},
                                                  {"CP1047", Encoding::Ebcdic1047},
                                                  {"1047", Encoding::Ebcdic1047}}};

/// A conversion by iconv, closed with its owner.
class Converter {
  public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {
        if (handle_ == Failed())
            throw RuntimeFailure(FailureNumber::InvalidCall,
                                 std::string("this machine cannot convert ") + from + " to " + to);
    }
    ~Converter() { iconv_close(handle_); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /// One character of any width as one byte; nothing when there is no such byte.
    std::optional<char> ToByte(std::string_view character) {
        std::array<char, 8> input{}, output{};
        std::copy(character.begin(), character.end(), input.begin());
        char* in = input.data();
        char* out = output.data();
        std::size_t inLeft = character.size(), outLeft = output.size();
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        const bool converted = iconv(handle_, &in, &inLeft, &out, &outLeft) != static_cast<std::size_t>(-1);
        if (!converted || outLeft != output.size() - 1) return std::nullopt;
        return output[0];
    }

  private:
    static iconv_t Failed() { return reinterpret_cast<iconv_t>(-1); }

    iconv_t handle_;
};

using ByteTable = std::array<char, 256>;

// Both code pages hold the characters of Latin-1, each at another place.
ByteTable EbcdicTable(Encoding encoding) {
    Converter converter("ISO-8859-1", encoding == Encoding::Ebcdic037 ? "IBM037" : "IBM1047");
    ByteTable table;
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        const char character = static_cast<char>(byte);
        table[byte] = converter.ToByte({&character, 1}).value_or('?');
    }
    table[0x15] = table[0x25] = '\n';
    return table;
}

std::string DecodeEbcdic(std::string_view bytes, Encoding encoding) {
    const ByteTable table = EbcdicTable(encoding);
    std::string text(bytes.size(), '\0');
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [&](char c) { return table[static_cast<unsigned char>(c)]; });
    return text;
}

std::string DecodeUtf16(std::string_view bytes, bool bigEndian) {
    if (bytes.starts_with(bigEndian ? kBigEndianMark : kLittleEndianMark)) bytes.remove_prefix(2);
    Converter converter("WINDOWS-1252", bigEndian ? "UTF-16BE" : "UTF-16LE");
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const char high = bytes[i + (bigEndian ? 0 : 1)], low = bytes[i + (bigEndian ? 1 : 0)];
        // Controls from 0x80 on have a byte of the same number, which iconv does not give.
        const bool same = high == '\0' && static_cast<unsigned char>(low) < 0xA0;
        text += same ? low : converter.ToByte(bytes.substr(i, 2)).value_or('?');
    }
    return text;
}

std::string Utf16(std::string_view text, bool bigEndian) {
    std::string units;
    for (const char c : text) {
        if (bigEndian) units += '\0';
        units += c;
        if (!bigEndian) units += '\0';
    }
    return units;
}

// Letters, dots and blanks have one place in both code pages.
std::string Ebcdic(std::string_view text) {
    const ByteTable table = EbcdicTable(Encoding::Ebcdic037);
    std::string bytes;
    for (const char c : text)
        bytes += static_cast<char>(std::find(table.begin(), table.end(), c) - table.begin());
    return bytes;
}

// The code pages differ in few characters, of which brackets are the ones that listings hold.
Encoding EbcdicByBrackets(std::string_view bytes) {
    const auto count = [&](char open, char close) {
        return std::count(bytes.begin(), bytes.end(), open) + std::count(bytes.begin(), bytes.end(), close);
    };
    return count('\xAD', '\xBD') > count('\xBA', '\xBB') ? Encoding::Ebcdic1047 : Encoding::Ebcdic037;
}

}  // namespace

std::string_view NameOf(Encoding encoding) {
    return std::find_if(kNames.begin(), kNames.end(), [&](const auto& n) { return n.encoding == encoding; })
        ->name;
}

std::optional<Encoding> EncodingNamed(std::string_view name) {
    for (const auto& known : kNames) {
        if (EqualIgnoringCase(known.name, name)) return known.encoding;
    }
    return std::nullopt;
}

Encoding DetectEncoding(std::string_view bytes) {
    const std::string_view keyword = keywords::kRecordName;
    if (bytes.find(keyword) != std::string_view::npos) return Encoding::SingleByte;
    // Read a byte too early or too late, either order of bytes looks like the other.
    for (const bool bigEndian : {false, true}) {
        const std::size_t place = bytes.find(Utf16(keyword, bigEndian));
        if (place != std::string_view::npos && place % 2 == 0)
            return bigEndian ? Encoding::Utf16BigEndian : Encoding::Utf16LittleEndian;
    }
    if (bytes.find(Ebcdic(keyword)) != std::string_view::npos) return EbcdicByBrackets(bytes);
    return Encoding::SingleByte;
}

std::string Decode(std::string_view bytes, Encoding encoding) {
    switch (encoding) {
        case Encoding::Utf16LittleEndian:
        case Encoding::Utf16BigEndian:
            return DecodeUtf16(bytes, encoding == Encoding::Utf16BigEndian);
        case Encoding::Ebcdic037:
        case Encoding::Ebcdic1047:
            return DecodeEbcdic(bytes, encoding);
        case Encoding::SingleByte:
            break;
    }
    return std::string(bytes);
}

}  // namespace norvelis::repair
