#include "EndStreams.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "Arena.h"
#include "BracketDepths.h"
#include "Derivation.h"
#include "StreamIndex.h"
#include "WorkspacePool.h"

// Why the first end of the root, from the first start position that has one, is exactly the match
// and capture history that Oniguruma's backtracking finds.
//
// A backtracking matcher that reaches a part P at position p, with the continuation K (everything
// after P up to the end of the pattern, the returns from the calls in progress included), tries the
// ways of matching P from p one after another, in an order fixed by P and p alone: alternatives as
// written; for a sequence A B each way through A in A's order, and for each of them each way
// through B from where it ended; for a greedy repetition one more round before stopping, the
// rounds given back one at a time; for a call, the ways through the definition's body, which are
// re-entered on backtracking like any other part. After each way it runs K from the way's end, and
// the first way after which K succeeds is the one the match uses.
//
// Whether K succeeds after a way depends only on where the way ended, because nothing in the
// grammar looks back at what was captured: there are no back-references, no conditions on groups,
// no look-around, no atomic or possessive parts (those would cut P's order short depending on K),
// and no repetition of a part that can match the empty text (Oniguruma stops such a repetition by
// a check that also compares captures). GrammarPattern refuses all of these. So if two ways
// through P end at the same position, K is run after the second only when it already failed after
// the first, from the same place, and fails again: the second way is never used and everything
// tried after it is tried in vain. Dropping every way whose end an earlier way already reached
// therefore changes nothing. What is left for P at p is the list of its distinct ends in the order
// they are first reached, each with the first way there, and the match is the first end on the
// list from which K succeeds.
//
// Such lists compose: the list of A B from p runs through A's list and, for each end a, through
// B's list from a, dropping ends already on the list (a later way through A to an end that an
// earlier one reached adds only ends the earlier one added before it); a choice chains its
// alternatives' lists; a greedy repetition from p is, for each end q of its body, its own list
// from q, and p last. A call's list is its definition's list, whichever part called it and whatever
// calls are in progress, so a definition's list from a position is worked out once however often,
// and from however deep a nesting, it is called: that is what keeps the work polynomial where
// backtracking triples with every level of parentheses. The root has no continuation, so its
// first end is the match. A `{0}` definition matches the empty text where it stands and is only
// reached through calls; GrammarPattern leaves it out of the sequence it stands in.
//
// The capture history Oniguruma returns is built from the history-group starts still on its
// backtracking stack when the match succeeds, that is, the history groups entered along the way
// that matched, each a child of the innermost one open when it began, calls included. Each end
// here keeps its way as a derivation: history captures nest their inner derivation, so the tree,
// its order and its levels are read off the derivation of the root's first end. A capture made
// inside a called definition nests under the history capture open at the call, and its level is
// its depth in the tree, one more for each history capture around it however many calls lie in
// between. Oniguruma records history only for group numbers up to 31; GrammarPattern drops the
// history of groups beyond, as Oniguruma does.
//
// Two shortcuts only leave out ways that fail at once: a part that cannot begin with the character
// at p (and cannot match the empty text) has an empty list, and a run followed by a part that
// cannot begin with any of the run's characters keeps only its longest end. A third leaves out
// ways that fail later but surely: a part whose every match reads the same count of "(" less ")"
// has an empty list from p when no position after p lies that much deeper in the text.
//
// Lists are filled lazily: an end is worked out only when a waiting part asks for it, so a part
// whose first end already lets the match go on never has its other ends computed. The waiting is
// kept on an explicit stack instead of the call stack, so thousands of nested parentheses cannot
// overflow it.

namespace vantrel {

using Kind = PatternNode::Kind;

namespace {

// Below this many ends a stream looks for a duplicate by scanning its list; beyond, it keeps a
// bit per position.
constexpr std::uint32_t kScanLimit = 16;

}  // namespace

struct EndStreams::End {
    std::uint32_t position;
    const Derivation* derivation;
};

// One position of a repetition's walk: the body's list from there, how far it has been read, and
// the way from the repetition's start to here.
struct EndStreams::Round {
    std::uint32_t position;
    Stream* body;
    std::uint32_t next;
    const Derivation* derivation;
};

// The list of one part from one start position, and where its production stands: `outer` is the
// list being run through (first part of a sequence, body of a history group), `inner` the list
// taken for the current outer end (the rest of a sequence) or the current alternative of a choice.
struct EndStreams::Stream {
    std::uint32_t part = 0;
    std::uint32_t start = 0;
    std::uint32_t id = 0;
    // One past the last position whose character (or the end of the text) the list depends on.
    std::uint32_t reach = 0;
    bool finished = false;
    bool waiting = false;
    // Worked out for an earlier text and no longer right for this one.
    bool stale = false;
    End* ends = nullptr;
    std::uint32_t size = 0;
    std::uint32_t capacity = 0;
    std::uint64_t* seen = nullptr;
    Stream* outer = nullptr;
    Stream* inner = nullptr;
    std::uint32_t outerIndex = 0;
    std::uint32_t innerIndex = 0;
    // A repetition's walk: the rounds entered and not yet listed, latest last.
    Round* rounds = nullptr;
    std::uint32_t roundCount = 0;
    std::uint32_t roundCapacity = 0;
};

// What a search needs besides the pattern and the text, kept per thread from search to search,
// with the streams of the last search and what they were worked out for.
struct EndStreams::Workspace {
    Arena arena;
    StreamIndex<Stream> streams;
    BracketDepths depths;
    BracketDepths lastDepths;
    std::vector<Request> work;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> aliases;
    // The list of a part that plainly has no ends where it was asked for; whoever asked has read
    // what decided that.
    Stream* noEnds = nullptr;
    std::uint64_t pattern = 0;
    std::string text;
    bool reusable = false;
};

EndStreams::EndStreams(const GrammarPattern& pattern, std::string_view text)
    : m_pattern(pattern),
      m_text(text),
      m_lookahead(pattern, text),
      m_reachLimit(static_cast<std::uint32_t>(text.size() + 1)) {
    m_space = borrowWorkspace<Workspace>(
        [&](const Workspace& space) { return space.pattern == pattern.serial(); }, kWorkspacesKept);
    std::swap(m_space->depths, m_space->lastDepths);
    m_space->depths.index(text);
    keepWhatStillHolds();
    m_space->pattern = pattern.serial();
    m_space->text.assign(text);
    m_space->reusable = false;
}

EndStreams::~EndStreams() {
    m_space->work.clear();
    // A search cut short by an exception may leave streams half-way; the next one starts afresh.
    m_space->reusable = std::uncaught_exceptions() == 0;
    returnWorkspace(std::move(m_space));
}

// Typing at the end of a long text changes only what the streams that read the end found: every
// other stream of the last text still holds, so a key press after a long paste works out a few
// streams instead of all of them. A finished stream holds when the new text agrees with the last
// one below its reach, and so do the depth ranges the bracket shortcut reads there. Streams that
// no longer hold stay in the arena as garbage until it is reset: when they come to an eighth of
// those kept in an arena of some size, or the arena has grown past what the costliest text needs,
// the search starts afresh instead, which holds the garbage to a small part of the memory.
void EndStreams::keepWhatStillHolds() {
    Workspace& space = *m_space;
    std::uint32_t unchanged = 0;
    if (space.reusable && space.pattern == m_pattern.serial()) {
        const auto same =
            std::mismatch(m_text.begin(), m_text.end(), space.text.begin(), space.text.end());
        unchanged = static_cast<std::uint32_t>(same.first - m_text.begin());
        if (same.first == m_text.end() && same.second == space.text.end()) ++unchanged;
        unchanged = std::min(
            unchanged, static_cast<std::uint32_t>(space.depths.firstDifference(space.lastDepths)));
    }
    std::size_t kept = 0;
    std::size_t dropped = 0;
    if (unchanged > 0) {
        space.streams.forEach([&](Stream& stream) {
            if (!stream.stale && (!stream.finished || stream.reach > unchanged))
                stream.stale = true;
            ++(stream.stale ? dropped : kept);
        });
    }
    const std::size_t used = space.arena.used();
    if (kept == 0 || (8 * dropped > kept && used > kGarbageIgnoredBytes) || used > kMostBytesKept) {
        space.arena.reset();
        space.streams.reset(m_pattern.nodes().size() + 1);
        space.noEnds = space.streams.add(space.arena);
        space.noEnds->finished = true;
    }
}

std::optional<std::vector<CaptureRecord>> EndStreams::firstMatch(std::uint32_t part,
                                                                 std::uint32_t start) {
    Stream* stream = streamAt(part, start);
    require(stream, 0);
    if (stream->size == 0) return std::nullopt;
    return Derivation::records(stream->ends[0].derivation, start, stream->ends[0].position);
}

EndStreams::Stream* EndStreams::streamAt(std::uint32_t part, std::uint32_t start) {
    // Where a list is another's list, the other stream stands for it: a call for its definition, a
    // sequence whose first part has a single plain end for the rest from there, a choice where one
    // alternative alone can match for that alternative. Followed in a loop, since with a grammar
    // that calls itself behind a parenthesis such a chain can be as long as the text.
    auto& keys = m_space->aliases;
    keys.clear();
    Stream* stream = nullptr;
    while (stream == nullptr) {
        // Most parts tried at a position cannot even begin there; they get no stream of their own.
        if (m_lookahead.plainlyWithoutEnds(part, start, m_space->depths)) {
            stream = keys.empty() ? m_space->noEnds : noEndsAt(start);
            break;
        }
        Stream* known = m_space->streams.find(part, start);
        if (known != nullptr && !known->stale) {
            stream = known;
            break;
        }
        keys.emplace_back(part, start);
        const PatternNode& node = m_pattern.nodes()[part];
        std::optional<std::uint32_t> headEnd;
        std::optional<std::uint32_t> alternative;
        if (node.kind == Kind::Call) {
            part = node.first;
        } else if (node.kind == Kind::Sequence &&
                   m_lookahead.headKnownWithoutWork(node, start, headEnd)) {
            if (!headEnd) {
                stream =
                    noEndsAt(start + m_lookahead.runLength(m_pattern.nodes()[node.first], start));
            }
            part = node.second;
            start = headEnd.value_or(start);
        } else if (node.kind == Kind::Choice &&
                   (alternative = m_lookahead.soleAlternative(node, start))) {
            part = *alternative;
        } else {
            stream = newStream(part, start);
        }
    }
    for (const auto& [aliasPart, aliasStart] : keys) {
        m_space->streams.insert(aliasPart, aliasStart, *stream, m_space->arena);
    }
    return stream;
}

// The stream of a part at a position, for a stream that goes on from there: asking reads the text
// (whether the part can begin there, the depth range from the next position), and the answer
// depends on that as much as on the list.
EndStreams::Stream* EndStreams::consult(Stream& stream, std::uint32_t part,
                                        std::uint32_t position) {
    stream.reach = std::max(stream.reach, plainReach(position));
    return streamAt(part, position);
}

// What a part at the position reads before any work, and what each way of standing for another
// stream there reads, lies before the position after it (the character that may begin a part, the
// depth range from the next position, a run up to the next start).
std::uint32_t EndStreams::plainReach(std::uint32_t position) const {
    return position < m_reachLimit - 1 ? position + 2 : m_reachLimit;
}

// An empty list for a chain of stand-ins that ends at the position: one stream per position
// carries the reach of what decided it for every key of such chains.
EndStreams::Stream* EndStreams::noEndsAt(std::uint32_t position) {
    const auto noEnds = static_cast<std::uint32_t>(m_pattern.nodes().size());
    Stream* stream = m_space->streams.find(noEnds, position);
    if (stream != nullptr && !stream->stale) return stream;
    stream = m_space->streams.add(m_space->arena);
    stream->part = noEnds;
    stream->start = position;
    stream->reach = plainReach(position);
    stream->finished = true;
    m_space->streams.insert(noEnds, position, *stream, m_space->arena);
    return stream;
}

EndStreams::Stream* EndStreams::newStream(std::uint32_t part, std::uint32_t start) {
    Stream* stream = m_space->streams.add(m_space->arena);
    stream->part = part;
    stream->start = start;
    stream->reach = plainReach(start);
    const PatternNode& node = m_pattern.nodes()[part];
    if (node.kind == Kind::Empty) {
        append(*stream, start, nullptr);
        stream->finished = true;
    } else if (node.kind == Kind::Run) {
        // Greedy: the longest run first, then one character fewer at a time.
        const std::uint32_t length = m_lookahead.runLength(node, start);
        for (std::uint32_t n = length + 1; n-- > node.minCount;) {
            append(*stream, start + n, nullptr);
        }
        stream->reach = std::max(stream->reach, std::min(start + length + 1, m_reachLimit));
        stream->finished = true;
    }
    return stream;
}

void EndStreams::require(Stream* stream, std::uint32_t index) {
    std::vector<Request>& work = m_space->work;
    work.clear();
    work.push_back({stream, index});
    stream->waiting = true;
    while (!work.empty()) {
        const Request top = work.back();
        if (top.stream->size > top.index || top.stream->finished) {
            top.stream->waiting = false;
            work.pop_back();
            continue;
        }
        const Request next = advance(*top.stream);
        if (next.stream == nullptr) continue;
        // GrammarPattern refuses left recursion, the only way a list could wait for itself.
        if (next.stream->waiting) throw std::logic_error("grammar part waits for itself");
        next.stream->waiting = true;
        work.push_back(next);
    }
}

// One step of a stream: it gains an end, or finishes, or names the list and index that it has to
// wait for.
EndStreams::Request EndStreams::advance(Stream& stream) {
    const PatternNode& part = m_pattern.nodes()[stream.part];
    switch (part.kind) {
        case Kind::Sequence:
            return advanceSequence(stream, part);
        case Kind::Choice:
            return advanceChoice(stream, part);
        case Kind::Star:
            return advanceStar(stream, part);
        case Kind::History:
            return advanceHistory(stream, part);
        case Kind::Empty:
        case Kind::Run:
        case Kind::Call:
            break;
    }
    stream.finished = true;
    return {};
}

EndStreams::Request EndStreams::advanceSequence(Stream& stream, const PatternNode& part) {
    if (stream.outer == nullptr) stream.outer = streamAt(part.first, stream.start);
    return advanceConcatenation(stream, part.second);
}

// Greedy: every way that takes one more round comes before stopping here. Unfolded, the list from
// p is that of a depth-first walk over the rounds: from a position, each end of the body in order
// leads to the next position, a position is entered only the first time it is reached, and it
// joins the list when everything reached from it has (that is, last). A position reached again
// adds nothing: everything reachable from it is on the list already, which is what dropping
// duplicates in "for each end q of the body, the list from q, then p" does. Walking instead of
// asking the repetition's own list at each q keeps a long chain of rounds linear; the lists from
// each q would each copy the rest of the chain.
EndStreams::Request EndStreams::advanceStar(Stream& stream, const PatternNode& part) {
    if (stream.rounds == nullptr) pushRound(stream, stream.start, nullptr);
    while (stream.roundCount > 0) {
        Round& round = stream.rounds[stream.roundCount - 1];
        if (round.body == nullptr) round.body = consult(stream, part.first, round.position);
        Stream& body = *round.body;
        if (round.next >= body.size) {
            if (!body.finished) return {&body, round.next};
            absorb(stream, body);
            --stream.roundCount;
            append(stream, round.position, round.derivation);
            return {};
        }
        const End end = body.ends[round.next++];
        // The rounds still open lie before the end (the body never matches the empty text), so
        // the ends listed so far are all the positions entered before.
        if (!claim(stream, end.position)) continue;
        pushRound(stream, end.position,
                  Derivation::concatenation(m_space->arena, round.derivation, end.derivation));
    }
    stream.finished = true;
    return {};
}

void EndStreams::pushRound(Stream& stream, std::uint32_t position, const Derivation* derivation) {
    if (stream.roundCount == stream.roundCapacity) {
        const std::uint32_t capacity = std::max<std::uint32_t>(1, stream.roundCapacity * 2);
        Round* rounds = m_space->arena.allocate<Round>(capacity);
        if (stream.roundCount > 0) {
            std::memcpy(rounds, stream.rounds, stream.roundCount * sizeof(Round));
        }
        stream.rounds = rounds;
        stream.roundCapacity = capacity;
    }
    stream.rounds[stream.roundCount++] = {position, nullptr, 0, derivation};
}

// The current inner list read one end further. Without an end: `wait` names the list when it has
// to be worked out further first, and when it is done the stream moves on to its next outer end
// or alternative.
std::optional<EndStreams::End> EndStreams::nextInnerEnd(Stream& stream, Request& wait) {
    Stream& inner = *stream.inner;
    if (stream.innerIndex < inner.size) return inner.ends[stream.innerIndex++];
    if (!inner.finished) {
        wait = {&inner, stream.innerIndex};
    } else {
        absorb(stream, inner);
        stream.inner = nullptr;
        ++stream.outerIndex;
    }
    return std::nullopt;
}

// For each end of the outer list in turn, the ends of the tail part from there.
EndStreams::Request EndStreams::advanceConcatenation(Stream& stream, std::uint32_t tailPart) {
    for (;;) {
        if (stream.inner == nullptr) {
            Stream& outer = *stream.outer;
            if (stream.outerIndex >= outer.size) {
                if (outer.finished) {
                    absorb(stream, outer);
                    stream.finished = true;
                    return {};
                }
                return {&outer, stream.outerIndex};
            }
            stream.inner = consult(stream, tailPart, outer.ends[stream.outerIndex].position);
            stream.innerIndex = 0;
        }
        Request wait;
        const std::optional<End> tail = nextInnerEnd(stream, wait);
        if (!tail) {
            if (wait.stream) return wait;
            continue;
        }
        if (!claim(stream, tail->position)) continue;
        const Derivation* head = stream.outer->ends[stream.outerIndex].derivation;
        append(stream, tail->position,
               Derivation::concatenation(m_space->arena, head, tail->derivation));
        return {};
    }
}

EndStreams::Request EndStreams::advanceChoice(Stream& stream, const PatternNode& part) {
    for (;;) {
        if (stream.inner == nullptr) {
            if (stream.outerIndex == part.second) {
                stream.finished = true;
                return {};
            }
            const std::uint32_t alternative =
                m_pattern.alternatives()[part.first + stream.outerIndex];
            stream.inner = streamAt(alternative, stream.start);
            stream.innerIndex = 0;
        }
        Request wait;
        const std::optional<End> end = nextInnerEnd(stream, wait);
        if (!end) {
            if (wait.stream) return wait;
            continue;
        }
        if (!claim(stream, end->position)) continue;
        append(stream, end->position, end->derivation);
        return {};
    }
}

// The body's ends are distinct already; each becomes a capture around the body's way there.
EndStreams::Request EndStreams::advanceHistory(Stream& stream, const PatternNode& part) {
    if (stream.outer == nullptr) stream.outer = streamAt(part.first, stream.start);
    Stream& body = *stream.outer;
    if (stream.outerIndex >= body.size) {
        if (body.finished) {
            absorb(stream, body);
            stream.finished = true;
            return {};
        }
        return {&body, stream.outerIndex};
    }
    const End end = body.ends[stream.outerIndex++];
    append(stream, end.position,
           Derivation::capture(m_space->arena, end.derivation, part.group, stream.start,
                               end.position));
    return {};
}

// A stream done with a list it consulted depends on whatever that list depended on.
void EndStreams::absorb(Stream& stream, const Stream& consulted) {
    stream.reach = std::max(stream.reach, consulted.reach);
}

// Marks the position as an end of the stream; false when it was one already.
bool EndStreams::claim(Stream& stream, std::uint32_t position) {
    if (stream.seen == nullptr) {
        for (std::uint32_t i = 0; i < stream.size; ++i) {
            if (stream.ends[i].position == position) return false;
        }
        if (stream.size < kScanLimit) return true;
        const std::size_t words = (m_text.size() - stream.start) / 64 + 1;
        stream.seen = m_space->arena.allocate<std::uint64_t>(words);
        for (std::uint32_t i = 0; i < stream.size; ++i) claim(stream, stream.ends[i].position);
    }
    const std::uint32_t bit = position - stream.start;
    std::uint64_t& word = stream.seen[bit / 64];
    const std::uint64_t mask = std::uint64_t{1} << (bit % 64);
    if ((word & mask) != 0) return false;
    word |= mask;
    return true;
}

void EndStreams::append(Stream& stream, std::uint32_t position, const Derivation* derivation) {
    if (stream.size == stream.capacity) {
        const std::uint32_t capacity = std::max<std::uint32_t>(1, stream.capacity * 2);
        End* ends = m_space->arena.allocate<End>(capacity);
        if (stream.size > 0) std::memcpy(ends, stream.ends, stream.size * sizeof(End));
        stream.ends = ends;
        stream.capacity = capacity;
    }
    stream.ends[stream.size++] = {position, derivation};
}

}  // namespace vantrel
