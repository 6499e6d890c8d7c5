#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vantrel {

/// How deep in parentheses each position of a text lies, and the lowest and highest depth from
/// each position to the end. A part of the pattern that reads a fixed count of "(" less ")" can
/// only end where the depth differs from its start's by that count; since the depth moves by at
/// most one a character, a depth between the lowest and the highest after a position is reached
/// somewhere after it. In a long text with unclosed parentheses this rules out, without any
/// matching, every parenthesised part that begins before the last one still open.
class BracketDepths {
public:
    void index(std::string_view text) {
        const std::size_t size = text.size();
        m_depth.resize(size + 1);
        m_lowest.resize(size + 1);
        m_highest.resize(size + 1);
        m_depth[0] = 0;
        for (std::size_t i = 0; i < size; ++i) {
            m_depth[i + 1] = m_depth[i] + (text[i] == '(') - (text[i] == ')');
        }
        m_lowest[size] = m_highest[size] = m_depth[size];
        for (std::size_t i = size; i-- > 0;) {
            m_lowest[i] = std::min(m_depth[i], m_lowest[i + 1]);
            m_highest[i] = std::max(m_depth[i], m_highest[i + 1]);
        }
    }

    /// The first position where the depth ranges of the two texts differ, or the end of the
    /// shorter.
    std::size_t firstDifference(const BracketDepths& other) const {
        const std::size_t size = std::min(m_depth.size(), other.m_depth.size());
        std::size_t position = 0;
        while (position < size && m_lowest[position] == other.m_lowest[position] &&
               m_highest[position] == other.m_highest[position]) {
            ++position;
        }
        return position;
    }

    /// Whether some position from `from` on lies `balance` deeper than `start`.
    bool reachable(std::uint32_t start, std::uint32_t from, std::int32_t balance) const {
        if (from >= m_depth.size()) return false;
        const std::int32_t depth = m_depth[start] + balance;
        return m_lowest[from] <= depth && depth <= m_highest[from];
    }

private:
    std::vector<std::int32_t> m_depth;
    std::vector<std::int32_t> m_lowest;
    std::vector<std::int32_t> m_highest;
};

}  // namespace vantrel
