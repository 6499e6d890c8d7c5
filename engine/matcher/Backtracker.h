#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "GrammarMatch.h"
#include "GrammarPattern.h"
#include "Lookahead.h"

namespace vantrel {

/// Oniguruma's own strategy over a parsed grammar: depth first, alternatives in written order,
/// repetitions greedy, every choice undone on failure, with a budget of steps. It is the cheapest
/// way through what people usually type; when the budget runs out it says so, and the grammar
/// matcher goes on with EndStreams, which finds the same match in polynomial time.
class Backtracker {
public:
    enum class Outcome { Match, NoMatch, OutOfSteps };

    /// `steps` is the budget for all calls of matchAt() together.
    Backtracker(const GrammarPattern& pattern, std::string_view text, std::size_t steps);
    ~Backtracker();
    Backtracker(const Backtracker&) = delete;
    Backtracker& operator=(const Backtracker&) = delete;

    /// Tries the root part at the start position. After OutOfSteps nothing is known about it.
    Outcome matchAt(std::uint32_t start);

    /// The capture records of the match that matchAt() last found, root first, depth first.
    std::vector<CaptureRecord> records() const;

private:
    struct Workspace;

    std::uint32_t push(std::uint32_t item, std::uint32_t next);
    std::uint32_t nextAlternative(const PatternNode& choice, std::uint32_t from,
                                  std::uint32_t position) const;

    const GrammarPattern& m_pattern;
    Lookahead m_lookahead;
    std::size_t m_stepsLeft;
    std::uint32_t m_start = 0;
    std::uint32_t m_end = 0;
    std::unique_ptr<Workspace> m_space;
};

}  // namespace vantrel
