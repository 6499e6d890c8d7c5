#pragma once

#include <cstdint>
#include <vector>

#include "Arena.h"
#include "GrammarMatch.h"

namespace vantrel {

/// One way through a part of the pattern, as far as the capture history sees it: a capture of a
/// history group (`group`, `begin`, `end`, and in `inner` what the group matched), or the
/// concatenation of `inner` and `next`. A null derivation captured nothing. Ways share their
/// pieces, so the end streams keep the first way to every end without copying captures.
struct Derivation {
    const Derivation* inner;
    const Derivation* next;
    std::uint32_t group;
    std::uint32_t begin;
    std::uint32_t end;

    /// One way, then the other.
    static const Derivation* concatenation(Arena& arena, const Derivation* first,
                                           const Derivation* second);
    /// A capture of the group from `begin` to `end` around a way.
    static const Derivation* capture(Arena& arena, const Derivation* inner, std::uint32_t group,
                                     std::uint32_t begin, std::uint32_t end);
    /// The capture records of a match from `begin` to `end` that took this way: the root first,
    /// then depth first, each with its level.
    static std::vector<CaptureRecord> records(const Derivation* way, std::uint32_t begin,
                                              std::uint32_t end);
};

}  // namespace vantrel
