#include "TextDecoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace vantrel::timeline {

namespace {

// Apple's Mac OS Roman table for the bytes 0x80 to 0xFF.
constexpr std::array<char32_t, 128> kMacRoman{
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0, 0x00E2, 0x00E4, 0x00E3,
    0x00E5, 0x00E7, 0x00E9, 0x00E8, 0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3,
    0x00F2, 0x00F4, 0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, 0x2020, 0x00B0, 0x00A2, 0x00A3,
    0x00A7, 0x2022, 0x00B6, 0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8,
    0x221E, 0x00B1, 0x2264, 0x2265, 0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA,
    0x00BA, 0x03A9, 0x00E6, 0x00F8, 0x00BF, 0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB,
    0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5, 0x0152, 0x0153, 0x2013, 0x2014, 0x201C, 0x201D,
    0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044, 0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02,
    0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1, 0x00CB, 0x00C8, 0x00CD, 0x00CE,
    0x00CF, 0x00CC, 0x00D3, 0x00D4, 0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9, 0x0131, 0x02C6, 0x02DC,
    0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7};

constexpr char32_t kReplacement = 0xFFFD;

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// Control codes say nothing in a cut and would show as garbage: only tab and line ends stay.
char32_t shown(char32_t c) {
    const bool control =
        (c < 0x20 && c != '\t' && c != '\r' && c != '\n') || c == 0x7F || (c >= 0x80 && c < 0xA0);
    return control ? kReplacement : c;
}

// The length of the UTF-8 sequence at `at`, or 0 where the bytes are not one (overlong forms,
// surrogates and code points beyond U+10FFFF included).
std::size_t utf8Sequence(std::string_view bytes, std::size_t at, char32_t& c) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = byte(at);
    if (lead < 0x80) {
        c = lead;
        return 1;
    }
    std::size_t length = 0;
    char32_t smallest = 0;
    if ((lead & 0xE0) == 0xC0) {
        length = 2, c = lead & 0x1F, smallest = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, c = lead & 0x0F, smallest = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4, c = lead & 0x07, smallest = 0x10000;
    } else {
        return 0;
    }
    if (at + length > bytes.size()) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) return 0;
        c = (c << 6) | (byte(at + i) & 0x3F);
    }
    if (c < smallest || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return 0;
    return length;
}

bool isUtf8(std::string_view bytes) {
    char32_t c = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        if (static_cast<unsigned char>(bytes[at]) < 0x80) {
            ++at;
            continue;
        }
        const std::size_t length = utf8Sequence(bytes, at, c);
        if (length == 0) return false;
        at += length;
    }
    return true;
}

bool isPlainAscii(char byte) {
    const auto b = static_cast<unsigned char>(byte);
    return (b >= 0x20 && b < 0x7F) || b == '\t' || b == '\r' || b == '\n';
}

std::string fromUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    char32_t c = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        // Runs of plain ASCII, nearly all of a cut, are copied as they are.
        std::size_t plain = at;
        while (plain < bytes.size() && isPlainAscii(bytes[plain])) ++plain;
        out.append(bytes.substr(at, plain - at));
        at = plain;
        if (at == bytes.size()) break;
        const std::size_t length = utf8Sequence(bytes, at, c);
        appendUtf8(out, length == 0 ? kReplacement : shown(c));
        at += std::max<std::size_t>(length, 1);
    }
    return out;
}

std::string fromSingleBytes(std::string_view bytes, bool macRoman) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        const auto b = static_cast<unsigned char>(byte);
        appendUtf8(out, b >= 0x80 && macRoman ? kMacRoman[b - 0x80] : shown(b));
    }
    return out;
}

std::string fromUtf16(std::string_view bytes, bool bigEndian) {
    std::string out;
    out.reserve(bytes.size() / 2);
    const auto unit = [&](std::size_t at) -> char32_t {
        const auto first = static_cast<char32_t>(static_cast<unsigned char>(bytes[at]));
        const auto second = static_cast<char32_t>(static_cast<unsigned char>(bytes[at + 1]));
        return bigEndian ? (first << 8 | second) : (second << 8 | first);
    };
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t c = unit(at);
        if (c >= 0xD800 && c < 0xDC00 && at + 3 < bytes.size()) {
            const char32_t low = unit(at + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                at += 2;
            }
        }
        appendUtf8(out, (c >= 0xD800 && c < 0xE000) ? kReplacement : shown(c));
    }
    return out;
}

// UTF-16 without a byte-order mark: ASCII text with a NUL in every other byte.
bool looksLikeUtf16(std::string_view bytes, bool bigEndian) {
    const std::size_t sample = std::min<std::size_t>(bytes.size() / 2, 256);
    if (sample < 4) return false;
    for (std::size_t i = 0; i < sample; ++i) {
        const char high = bytes[2 * i + (bigEndian ? 0 : 1)];
        const char low = bytes[2 * i + (bigEndian ? 1 : 0)];
        if (high != '\0' || low == '\0') return false;
    }
    return true;
}

bool endsLinesWithCrAlone(std::string_view bytes) {
    const auto cr = bytes.find('\r');
    return cr != std::string_view::npos && bytes.find('\n') == std::string_view::npos;
}

// Lines ended by CR alone come from a classic Mac. Otherwise, Mac Roman puts its accented letters
// where Latin-1 has control codes; Latin-1 puts them above 0xBF, where Mac Roman has symbols and
// capitals few names use.
bool looksLikeMacRoman(std::string_view bytes) {
    if (endsLinesWithCrAlone(bytes)) return true;
    std::size_t macLetters = 0;
    std::size_t high = 0;
    for (const char byte : bytes) {
        const auto b = static_cast<unsigned char>(byte);
        if (b < 0x80) continue;
        ++high;
        if (b < 0xA0) ++macLetters;
    }
    return 2 * macLetters > high;
}

}  // namespace

DecodedText decodeText(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) return {fromUtf8(bytes.substr(3)), Encoding::Utf8};
    if (bytes.starts_with("\xFF\xFE")) return {fromUtf16(bytes.substr(2), false), Encoding::Utf16};
    if (bytes.starts_with("\xFE\xFF")) return {fromUtf16(bytes.substr(2), true), Encoding::Utf16};
    if (looksLikeUtf16(bytes, false)) return {fromUtf16(bytes, false), Encoding::Utf16};
    if (looksLikeUtf16(bytes, true)) return {fromUtf16(bytes, true), Encoding::Utf16};
    // Old systems padded files to a block with NULs or closed them with Ctrl+Z.
    const std::size_t end = bytes.find_last_not_of(std::string_view("\0\x1A", 2));
    bytes = bytes.substr(0, end == std::string_view::npos ? 0 : end + 1);
    if (bytes.find('\0') != std::string_view::npos) return {{}, Encoding::Binary};
    if (isUtf8(bytes)) return {fromUtf8(bytes), Encoding::Utf8};
    const bool macRoman = looksLikeMacRoman(bytes);
    return {fromSingleBytes(bytes, macRoman), macRoman ? Encoding::MacRoman : Encoding::Latin1};
}

std::string validUtf8(std::string_view text) {
    return fromUtf8(text);
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t start = text.find_first_not_of(kBlanks);
    if (start == std::string_view::npos) return {};
    return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

std::vector<std::string_view> splitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    lines.reserve(text.size() / 32 + 1);
    const std::size_t size = text.size();
    for (std::size_t at = 0; at < size;) {
        std::size_t end = at;
        while (end < size && text[end] != '\r' && text[end] != '\n') ++end;
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
        if (end + 1 < size && text[end] == '\r' && text[end + 1] == '\n') ++at;
    }
    return lines;
}

}  // namespace vantrel::timeline
