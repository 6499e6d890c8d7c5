#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "Derivation.h"
#include "GrammarMatch.h"
#include "GrammarPattern.h"
#include "Lookahead.h"

namespace vantrel {

/// The working memory of the grammar matcher for one text: for each part of the pattern and each
/// start position, where the part can end, in the order in which a backtracking matcher reaches
/// those ends, each with the captures of the first way there. Lists are worked out only as far as
/// they are asked for, and kept for the whole text, so searching from every start position shares
/// them; the finished lists that do not depend on what changed are kept for the next text of the
/// pattern on the thread, so typing on a long text works out little more than what the key
/// changed. EndStreams.cpp explains why this gives exactly a backtracking matcher's first match.
class EndStreams {
public:
    EndStreams(const GrammarPattern& pattern, std::string_view text);
    ~EndStreams();
    EndStreams(const EndStreams&) = delete;
    EndStreams& operator=(const EndStreams&) = delete;

    /// The capture records (root first, depth first) of the first match of the part from the
    /// start position, or nothing when the part cannot match there.
    std::optional<std::vector<CaptureRecord>> firstMatch(std::uint32_t part, std::uint32_t start);

private:
    struct Workspace;
    struct End;
    struct Round;
    struct Stream;
    struct Request {
        Stream* stream = nullptr;
        std::uint32_t index = 0;
    };

    // Past this many bytes of arena, garbage included, a search starts afresh; below the smaller
    // figure, so much garbage is not worth it.
    static constexpr std::size_t kMostBytesKept = 64 << 20;
    static constexpr std::size_t kGarbageIgnoredBytes = 1 << 20;
    // Patterns whose streams a thread keeps at once (the engine searches with one).
    static constexpr std::size_t kWorkspacesKept = 4;

    void keepWhatStillHolds();
    Stream* consult(Stream& stream, std::uint32_t part, std::uint32_t position);
    Stream* streamAt(std::uint32_t part, std::uint32_t start);
    std::uint32_t plainReach(std::uint32_t position) const;
    Stream* noEndsAt(std::uint32_t position);
    Stream* newStream(std::uint32_t part, std::uint32_t start);

    void require(Stream* stream, std::uint32_t index);
    Request advance(Stream& stream);
    Request advanceSequence(Stream& stream, const PatternNode& part);
    Request advanceChoice(Stream& stream, const PatternNode& part);
    Request advanceStar(Stream& stream, const PatternNode& part);
    Request advanceHistory(Stream& stream, const PatternNode& part);
    Request advanceConcatenation(Stream& stream, std::uint32_t tailPart);
    std::optional<End> nextInnerEnd(Stream& stream, Request& wait);
    void pushRound(Stream& stream, std::uint32_t position, const Derivation* derivation);

    void absorb(Stream& stream, const Stream& consulted);
    bool claim(Stream& stream, std::uint32_t position);
    void append(Stream& stream, std::uint32_t position, const Derivation* derivation);

    const GrammarPattern& m_pattern;
    std::string_view m_text;
    Lookahead m_lookahead;
    std::uint32_t m_reachLimit;
    std::unique_ptr<Workspace> m_space;
};

}  // namespace vantrel
