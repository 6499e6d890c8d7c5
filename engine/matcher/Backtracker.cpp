#include "Backtracker.h"

#include "BracketDepths.h"
#include "WorkspacePool.h"

namespace vantrel {

using Kind = PatternNode::Kind;

namespace {

constexpr std::uint32_t kNoGoal = UINT32_MAX;
// A goal item is a part index, or this bit and a group number: close that history capture here.
constexpr std::uint32_t kCloseBit = 0x80000000u;
// A choice point that resumes its goals without trying anything else first.
constexpr std::uint32_t kResume = UINT32_MAX;

}  // namespace

// The goals still to match form linked lists sharing their tails, so that a choice point can keep
// the list of the moment it was made for free. Choice points and the capture log work like
// Oniguruma's stack: failing returns to the latest choice point and cuts the log back to where it
// was, so what is left in the log at the end is exactly the captures of the way that matched.
struct Backtracker::Workspace {
    struct Goal {
        std::uint32_t item;
        std::uint32_t next;
    };
    struct ChoicePoint {
        std::uint32_t goals;
        std::uint32_t position;
        std::uint32_t logSize;
        std::uint32_t part;
        std::uint32_t index;
    };
    struct LogEntry {
        std::uint32_t item;
        std::uint32_t position;
    };

    std::vector<Goal> goals;
    std::vector<ChoicePoint> choices;
    std::vector<LogEntry> log;
    BracketDepths depths;
};

Backtracker::Backtracker(const GrammarPattern& pattern, std::string_view text, std::size_t steps)
    : m_pattern(pattern), m_lookahead(pattern, text), m_stepsLeft(steps) {
    m_space = borrowWorkspace<Workspace>();
    // The depths are asked for only where a parenthesis opens.
    if (text.find('(') != std::string_view::npos) m_space->depths.index(text);
}

Backtracker::~Backtracker() {
    returnWorkspace(std::move(m_space));
}

Backtracker::Outcome Backtracker::matchAt(std::uint32_t start) {
    const std::vector<PatternNode>& nodes = m_pattern.nodes();
    auto& choices = m_space->choices;
    auto& log = m_space->log;
    m_space->goals.clear();
    choices.clear();
    log.clear();
    std::uint32_t goals = push(m_pattern.root(), kNoGoal);
    std::uint32_t position = start;
    for (;;) {
        if (m_stepsLeft == 0) return Outcome::OutOfSteps;
        --m_stepsLeft;
        if (goals == kNoGoal) {
            m_start = start;
            m_end = position;
            return Outcome::Match;
        }
        const Workspace::Goal goal = m_space->goals[goals];
        goals = goal.next;
        if ((goal.item & kCloseBit) != 0) {
            log.push_back({goal.item, position});
            continue;
        }
        // A part that leads straight into another (the first of a sequence, a call, an
        // alternative) goes on with it here instead of through the goal list.
        std::uint32_t item = goal.item;
        bool failed = false;
        for (bool descend = true; descend && !failed;) {
            descend = false;
            if (m_stepsLeft == 0) return Outcome::OutOfSteps;
            --m_stepsLeft;
            if (m_lookahead.plainlyWithoutEnds(item, position, m_space->depths)) {
                failed = true;
                break;
            }
            const PatternNode& node = nodes[item];
            const auto logSize = static_cast<std::uint32_t>(log.size());
            switch (node.kind) {
                case Kind::Empty:
                    break;
                case Kind::Run: {
                    const std::uint32_t length = m_lookahead.runLength(node, position);
                    failed = length < node.minCount;
                    if (!failed && length > node.minCount) {
                        choices.push_back({goals, position, logSize, item, length - 1});
                    }
                    position += length;
                    break;
                }
                case Kind::Sequence:
                    if (node.headTakesAll) {
                        const PatternNode& head = nodes[node.first];
                        const std::uint32_t length = m_lookahead.runLength(head, position);
                        failed = length < head.minCount;
                        position += length;
                        item = node.second;
                    } else {
                        goals = push(node.second, goals);
                        item = node.first;
                    }
                    descend = true;
                    break;
                case Kind::Choice: {
                    const std::uint32_t first = nextAlternative(node, 0, position);
                    failed = first == node.second;
                    if (failed) break;
                    const std::uint32_t second = nextAlternative(node, first + 1, position);
                    if (second < node.second) {
                        choices.push_back({goals, position, logSize, item, second});
                    }
                    item = m_pattern.alternatives()[node.first + first];
                    descend = true;
                    break;
                }
                case Kind::Star:
                    // Greedy: one more round first, stopping here when everything after fails.
                    if (!m_lookahead.canStart(node.first, position)) break;
                    choices.push_back({goals, position, logSize, kResume, 0});
                    goals = push(item, goals);
                    item = node.first;
                    descend = true;
                    break;
                case Kind::History:
                    log.push_back({node.group, position});
                    goals = push(kCloseBit | node.group, goals);
                    item = node.first;
                    descend = true;
                    break;
                case Kind::Call:
                    item = node.first;
                    descend = true;
                    break;
            }
        }
        if (!failed) continue;

        if (choices.empty()) return Outcome::NoMatch;
        Workspace::ChoicePoint& choice = choices.back();
        position = choice.position;
        goals = choice.goals;
        log.resize(choice.logSize);
        if (choice.part == kResume) {
            choices.pop_back();
            continue;
        }
        const PatternNode& chosen = nodes[choice.part];
        const std::uint32_t index = choice.index;
        if (chosen.kind == Kind::Run) {
            // One character fewer than last time.
            position += index;
            if (index > chosen.minCount) {
                --choice.index;
            } else {
                choices.pop_back();
            }
            continue;
        }
        const std::uint32_t following = nextAlternative(chosen, index + 1, position);
        if (following < chosen.second) {
            choice.index = following;
        } else {
            choices.pop_back();
        }
        goals = push(m_pattern.alternatives()[chosen.first + index], goals);
    }
}

std::vector<CaptureRecord> Backtracker::records() const {
    std::vector<CaptureRecord> result{{0, m_start, m_end, 0}};
    std::vector<std::size_t> open;
    for (const Workspace::LogEntry& entry : m_space->log) {
        if ((entry.item & kCloseBit) != 0) {
            result[open.back()].end = entry.position;
            open.pop_back();
        } else {
            open.push_back(result.size());
            result.push_back({entry.item, entry.position, entry.position,
                              static_cast<std::uint32_t>(open.size())});
        }
    }
    return result;
}

std::uint32_t Backtracker::push(std::uint32_t item, std::uint32_t next) {
    m_space->goals.push_back({item, next});
    return static_cast<std::uint32_t>(m_space->goals.size() - 1);
}

// The first alternative from `from` on that can match here at all; the others would fail at once.
std::uint32_t Backtracker::nextAlternative(const PatternNode& choice, std::uint32_t from,
                                           std::uint32_t position) const {
    for (std::uint32_t i = from; i < choice.second; ++i) {
        const std::uint32_t alternative = m_pattern.alternatives()[choice.first + i];
        if (m_pattern.nullable(alternative) ||
            (m_lookahead.canStart(alternative, position) &&
             m_lookahead.showsLiteralPrefix(alternative, position)))
            return i;
    }
    return choice.second;
}

}  // namespace vantrel
