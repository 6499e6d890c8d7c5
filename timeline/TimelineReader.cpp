#include "TimelineReader.h"

#include "AleReader.h"
#include "EdlReader.h"
#include "FcpxmlReader.h"
#include "OtioReader.h"
#include "TextDecoding.h"
#include "XmemlReader.h"

namespace vantrel::timeline {

namespace {

// The first character that is not a byte-order mark or white space.
char firstCharacter(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    const std::size_t at = bytes.find_first_not_of(" \t\r\n");
    return at == std::string_view::npos ? '\0' : bytes[at];
}

// The root element of an XML file: the first element name after the declaration, comments and
// the document type.
std::string_view rootElement(std::string_view bytes) {
    for (std::size_t at = bytes.find('<'); at != std::string_view::npos;
         at = bytes.find('<', at + 1)) {
        // A comment may hold any text, the name of another root among it.
        if (bytes.substr(at, 4) == "<!--") {
            at = bytes.find("-->", at);
            if (at == std::string_view::npos) return {};
            continue;
        }
        if (at + 1 < bytes.size() && (bytes[at + 1] == '?' || bytes[at + 1] == '!')) continue;
        const std::size_t end = bytes.find_first_of(" \t\r\n/>", at + 1);
        return bytes.substr(at + 1, end == std::string_view::npos ? end : end - at - 1);
    }
    return {};
}

Cut readFile(std::string_view bytes, const RateRequest& request) {
    switch (firstCharacter(bytes)) {
        case '<': {
            const std::string_view root = rootElement(bytes);
            if (root == "xmeml") return readXmeml(bytes, request);
            // Anything else XML is read as FCPXML, which names the root it expected.
            return readFcpxml(bytes, request);
        }
        case '{':
            return readOtio(bytes, request);
        default:
            return looksLikeAle(bytes) ? readAle(bytes, request) : readEdl(bytes, request);
    }
}

}  // namespace

Cut readTimeline(std::string_view bytes, const RateRequest& request) {
    Cut cut = readFile(bytes, request);
    dropUnsoundEvents(cut);
    // Names from XML come as its parser found them, which need not be UTF-8 whatever the file
    // declares; the rest of Vantrel counts on UTF-8.
    cut.title = validUtf8(cut.title);
    for (Event& event : cut.events) {
        for (std::string* text : {&event.number, &event.reel, &event.track, &event.clipName}) {
            *text = validUtf8(*text);
        }
        for (std::string& note : event.notes) note = validUtf8(note);
    }
    for (Problem& problem : cut.problems) problem.message = validUtf8(problem.message);
    return cut;
}

}  // namespace vantrel::timeline
