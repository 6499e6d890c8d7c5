#include "Lookahead.h"

namespace vantrel {

bool Lookahead::headKnownWithoutWork(const PatternNode& sequence, std::uint32_t start,
                                     std::optional<std::uint32_t>& end) const {
    const std::uint32_t head = sequence.first;
    const PatternNode& node = m_pattern.nodes()[head];
    if (node.kind == PatternNode::Kind::Run) {
        const std::uint32_t length = runLength(node, start);
        if (length > node.minCount && !sequence.headTakesAll) return false;
        if (length >= node.minCount) end = start + length;
        return true;
    }
    if (!m_pattern.nullable(head) || canStart(head, start) || m_pattern.capturesWhenEmpty(head)) {
        return false;
    }
    end = start;
    return true;
}

std::optional<std::uint32_t> Lookahead::soleAlternative(const PatternNode& choice,
                                                        std::uint32_t start) const {
    std::optional<std::uint32_t> sole;
    for (std::uint32_t i = 0; i < choice.second; ++i) {
        const std::uint32_t alternative = m_pattern.alternatives()[choice.first + i];
        if (!m_pattern.nullable(alternative) && !canStart(alternative, start)) continue;
        if (sole) return std::nullopt;
        sole = alternative;
    }
    return sole;
}

}  // namespace vantrel
