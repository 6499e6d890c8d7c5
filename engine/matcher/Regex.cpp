#include "Regex.h"

#include <oniguruma.h>

#include <stdexcept>

namespace vantrel {

namespace {

// Oniguruma nests subexpression calls at most 20 deep by default, which would make the grammar
// fail on six levels of parentheses. Depth is instead limited by the effort bound below.
constexpr int kMaxCallNesting = 100000;

// Backtracking through the calculator's grammar multiplies its cost with every further level of
// parentheses (three to nine times). A search stops after this many steps and reports no match, so
// no input can make it run away; on long unclosed texts a search can still take a second or more
// before it stops, which is why the engine matches the grammar with GrammarMatcher and keeps this
// library for the short timestamp patterns and as the reference in tests. Below the bound, plain
// shapes match exactly up to nine levels (eight levels of 1+(...+1) need 470,000 steps).
constexpr unsigned long kMaxBacktrackingSteps = 1'200'000;

OnigSyntaxType* rubySyntaxWithCaptureHistory() {
    static OnigSyntaxType syntax = [] {
        OnigSyntaxType copy;
        onig_copy_syntax(&copy, ONIG_SYNTAX_RUBY);
        onig_set_syntax_op2(&copy,
                            onig_get_syntax_op2(&copy) | ONIG_SYN_OP2_ATMARK_CAPTURE_HISTORY);
        return copy;
    }();
    return &syntax;
}

void initializeOnigurumaOnce() {
    static const bool initialized = [] {
        OnigEncoding encodings[] = {ONIG_ENCODING_ASCII};
        onig_initialize(encodings, 1);
        onig_set_subexp_call_max_nest_level(kMaxCallNesting);
        return true;
    }();
    (void)initialized;
}

const OnigUChar* bytes(std::string_view text) {
    return reinterpret_cast<const OnigUChar*>(text.data());
}

std::size_t offset(int position) {
    return static_cast<std::size_t>(position);
}

struct MatchParamDeleter {
    void operator()(OnigMatchParam* param) const { onig_free_match_param(param); }
};

std::unique_ptr<OnigMatchParam, MatchParamDeleter> boundedMatchParam() {
    std::unique_ptr<OnigMatchParam, MatchParamDeleter> param(onig_new_match_param());
    onig_initialize_match_param(param.get());
    onig_set_retry_limit_in_match_of_match_param(param.get(), kMaxBacktrackingSteps);
    onig_set_retry_limit_in_search_of_match_param(param.get(), kMaxBacktrackingSteps);
    return param;
}

struct TraversalContext {
    const RegexMatch* match;
    const Regex* regex;
    CaptureVisitor* visitor;
    std::string_view subject;
};

int visitCaptureNode(int group, int begin, int end, int level, int at, void* context) {
    auto& traversal = *static_cast<TraversalContext*>(context);
    const TextRange range{offset(begin), offset(end - begin)};
    const Capture capture{traversal.regex->groupName(group),
                          traversal.subject.substr(range.location, range.length), level, range};
    if (at == ONIG_TRAVERSE_CALLBACK_AT_FIRST) {
        traversal.visitor->visitAtFirstCapture(capture);
    } else {
        traversal.visitor->visitAtLastCapture(capture);
    }
    return 0;
}

}  // namespace

const unsigned long Regex::kSearchEffortBound = kMaxBacktrackingSteps;

RegexMatch::RegexMatch(const Regex& regex, std::string_view subject)
    : m_regex(&regex), m_subject(subject), m_region(onig_region_new()) {}

RegexMatch::~RegexMatch() {
    if (m_region) onig_region_free(m_region, 1);
}

RegexMatch::RegexMatch(RegexMatch&& other) noexcept
    : m_regex(other.m_regex), m_subject(other.m_subject), m_region(other.m_region) {
    other.m_region = nullptr;
}

TextRange RegexMatch::range() const {
    return {offset(m_region->beg[0]), offset(m_region->end[0] - m_region->beg[0])};
}

std::string_view RegexMatch::matchedString() const {
    return range().in(m_subject);
}

std::string_view RegexMatch::prematchString() const {
    return range().before(m_subject);
}

std::string_view RegexMatch::postmatchString() const {
    return range().after(m_subject);
}

void RegexMatch::acceptVisitor(CaptureVisitor& visitor) const {
    TraversalContext context{this, m_regex, &visitor, m_subject};
    if (onig_get_capture_tree(m_region) == nullptr) return;
    onig_capture_tree_traverse(m_region, ONIG_TRAVERSE_CALLBACK_AT_BOTH, visitCaptureNode,
                               &context);
}

Regex::Regex(std::string_view pattern) {
    initializeOnigurumaOnce();
    OnigErrorInfo errorInfo{};
    // Plain groups stay numbered and captured although the pattern has named groups.
    const int status = onig_new(&m_regex, bytes(pattern), bytes(pattern) + pattern.size(),
                                ONIG_OPTION_CAPTURE_GROUP, ONIG_ENCODING_ASCII,
                                rubySyntaxWithCaptureHistory(), &errorInfo);
    if (status != ONIG_NORMAL) {
        OnigUChar message[ONIG_MAX_ERROR_MESSAGE_LEN];
        onig_error_code_to_str(message, status, &errorInfo);
        throw std::invalid_argument(reinterpret_cast<const char*>(message));
    }
    m_groupNames.resize(static_cast<std::size_t>(onig_number_of_captures(m_regex)) + 1);
    onig_foreach_name(
        m_regex,
        [](const OnigUChar* name, const OnigUChar* nameEnd, int count, int* groups, OnigRegex,
           void* names) {
            auto& list = *static_cast<std::vector<std::string>*>(names);
            for (int i = 0; i < count; ++i) {
                list[static_cast<std::size_t>(groups[i])].assign(
                    reinterpret_cast<const char*>(name), static_cast<std::size_t>(nameEnd - name));
            }
            return 0;
        },
        &m_groupNames);
}

Regex::~Regex() {
    onig_free(m_regex);
}

std::string_view Regex::groupName(int group) const {
    const auto index = static_cast<std::size_t>(group);
    return index < m_groupNames.size() ? std::string_view(m_groupNames[index]) : std::string_view();
}

std::optional<RegexMatch> Regex::find(std::string_view text, std::size_t from, bool anchored,
                                      bool* stoppedByBound) const {
    RegexMatch match(*this, text);
    const auto param = boundedMatchParam();
    const OnigUChar* begin = bytes(text);
    const OnigUChar* end = begin + text.size();
    const OnigUChar* start = begin + from;
    // Errors (the effort bound above all) count as no match, like a plain mismatch.
    const int status = anchored
                           ? onig_match_with_param(m_regex, begin, end, start, match.m_region,
                                                   ONIG_OPTION_NONE, param.get())
                           : onig_search_with_param(m_regex, begin, end, start, end, match.m_region,
                                                    ONIG_OPTION_NONE, param.get());
    if (stoppedByBound) {
        *stoppedByBound = status == ONIGERR_RETRY_LIMIT_IN_MATCH_OVER ||
                          status == ONIGERR_RETRY_LIMIT_IN_SEARCH_OVER;
    }
    if (status < 0) return std::nullopt;
    return match;
}

std::optional<RegexMatch> Regex::search(std::string_view text) const {
    return find(text, 0, false);
}

std::optional<RegexMatch> Regex::matchAtStart(std::string_view text) const {
    return find(text, 0, true);
}

std::optional<RegexMatch> Regex::search(std::string_view text, bool& stoppedByBound) const {
    return find(text, 0, false, &stoppedByBound);
}

std::optional<RegexMatch> Regex::matchAtStart(std::string_view text, bool& stoppedByBound) const {
    return find(text, 0, true, &stoppedByBound);
}

void Regex::forEachMatch(std::string_view text,
                         const std::function<void(const RegexMatch&)>& callback) const {
    std::size_t from = 0;
    while (from <= text.size()) {
        const auto match = find(text, from, false);
        if (!match) return;
        callback(*match);
        const TextRange range = match->range();
        // An empty match would be found again at the same place: step past it.
        from = range.location + (range.length > 0 ? range.length : 1);
    }
}

std::string Regex::replaceAll(
    std::string_view text, const std::function<std::string(const RegexMatch&)>& replacement) const {
    std::string result;
    std::size_t copied = 0;
    forEachMatch(text, [&](const RegexMatch& match) {
        const TextRange range = match.range();
        result.append(text.substr(copied, range.location - copied));
        result.append(replacement(match));
        copied = range.location + range.length;
    });
    result.append(text.substr(copied));
    return result;
}

}  // namespace vantrel
