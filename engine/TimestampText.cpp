#include "TimestampText.h"

#include <algorithm>

#include "Regex.h"

namespace vantrel::timestamp_text {

std::string withoutSpaces(std::string_view text) {
    std::string copy(text);
    copy.erase(std::remove(copy.begin(), copy.end(), ' '), copy.end());
    return copy;
}

std::vector<std::string_view> digitRuns(std::string_view text) {
    static const Regex digitRunPattern(R"(\d+)");
    std::vector<std::string_view> runs;
    digitRunPattern.forEachMatch(
        text, [&runs](const RegexMatch& match) { runs.push_back(match.matchedString()); });
    return runs;
}

std::string shortFormAsFullForm(std::string_view shortForm, std::size_t padding) {
    std::string padded(padding, '0');
    padded.append(shortForm);
    // The padding keeps p - 8 inside the text for every padding of eight zeros or more.
    const std::size_t p = std::min(padded.find('|'), padded.size());
    std::string fullForm = padded.substr(p - 8, 2) + ":" + padded.substr(p - 6, 2) + ":" +
                           padded.substr(p - 4, 2) + "." + padded.substr(p - 2, 2);
    fullForm.append(padded.substr(p));
    return fullForm;
}

}  // namespace vantrel::timestamp_text
