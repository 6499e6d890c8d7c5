#pragma once

#include <string>
#include <string_view>
#include <vector>

// Files from editing systems come in the encodings and line ends of their platforms: UTF-8 with or
// without a byte-order mark, Latin-1 from Windows and Unix tools, Mac Roman with CR line ends from
// classic Mac systems, now and then UTF-16. Readers take the text as UTF-8 lines, whatever it was.
namespace vantrel::timeline {

enum class Encoding { Utf8, Latin1, MacRoman, Utf16, Binary };

struct DecodedText {
    std::string text;  // UTF-8, control characters other than tab and line ends replaced by U+FFFD
    Encoding encoding = Encoding::Utf8;
};

/// The bytes as UTF-8 text. A byte-order mark is dropped; text that is not valid UTF-8 is Mac
/// Roman when its lines end in CR alone or most of its bytes above 127 are Mac Roman's accented
/// letters (0x80 to 0x9F, control codes in Latin-1), and Latin-1 otherwise. NUL bytes other than
/// padding at the end make it binary data, with no text.
DecodedText decodeText(std::string_view bytes);

/// The text with every byte that is not part of a UTF-8 character, and every control character
/// but tab and line ends, replaced by U+FFFD: what an XML file that says it is UTF-8 may still
/// hold.
std::string validUtf8(std::string_view text);

/// The text without the blanks and tabs at either end.
std::string_view trimmed(std::string_view text);

/// The text's lines, split at CR, LF or CRLF (each a single line end), without their ends; line
/// numbers count from 1.
std::vector<std::string_view> splitLines(std::string_view text);

}  // namespace vantrel::timeline
