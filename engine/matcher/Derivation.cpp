#include "Derivation.h"

namespace vantrel {

namespace {

// Group number 0 is the root, which is never a derivation node: it marks a concatenation.
constexpr std::uint32_t kConcatenation = 0;

}  // namespace

const Derivation* Derivation::concatenation(Arena& arena, const Derivation* first,
                                            const Derivation* second) {
    if (first == nullptr) return second;
    if (second == nullptr) return first;
    auto* both = arena.allocate<Derivation>(1);
    *both = {first, second, kConcatenation, 0, 0};
    return both;
}

const Derivation* Derivation::capture(Arena& arena, const Derivation* inner, std::uint32_t group,
                                      std::uint32_t begin, std::uint32_t end) {
    auto* captured = arena.allocate<Derivation>(1);
    *captured = {inner, nullptr, group, begin, end};
    return captured;
}

// Without recursion, since concatenations chain as long as the expression and captures nest as
// deep as its parentheses.
std::vector<CaptureRecord> Derivation::records(const Derivation* way, std::uint32_t begin,
                                               std::uint32_t end) {
    std::vector<CaptureRecord> result{{0, begin, end, 0}};
    struct Pending {
        const Derivation* derivation;
        std::uint32_t level;
    };
    std::vector<Pending> pending{{way, 1}};
    while (!pending.empty()) {
        const Pending current = pending.back();
        pending.pop_back();
        const Derivation* derivation = current.derivation;
        if (derivation == nullptr) continue;
        if (derivation->group == kConcatenation) {
            pending.push_back({derivation->next, current.level});
            pending.push_back({derivation->inner, current.level});
            continue;
        }
        result.push_back({derivation->group, derivation->begin, derivation->end, current.level});
        pending.push_back({derivation->inner, current.level + 1});
    }
    return result;
}

}  // namespace vantrel
