#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vantrel {

// Streams by part and start position: open addressing with linear probing, three quarters full
// at most. A slot belongs to the current search only when it carries the current generation, so
// starting a search over does not have to clear the table. A slot packs generation, part and start
// into one word beside the stream: a long text asks for hundreds of thousands of streams, and the
// table is the largest thing a search keeps.
template <typename Stream>
class StreamTable {
public:
    Stream* find(std::uint64_t key) const {
        const std::uint64_t tagged = tag(key);
        for (std::size_t i = slotOf(key);; i = (i + 1) & m_mask) {
            const Slot& slot = m_slots[i];
            if (slot.tag >> kGenerationShift != m_generation) return nullptr;
            if (slot.tag == tagged) return slot.stream;
        }
    }

    void insert(std::uint64_t key, Stream* stream) {
        if (4 * (m_used + 1) > 3 * m_slots.size()) grow();
        std::size_t i = slotOf(key);
        while (m_slots[i].tag >> kGenerationShift == m_generation) i = (i + 1) & m_mask;
        m_slots[i] = {tag(key), stream};
        ++m_used;
    }

    void reset() {
        m_used = 0;
        if (m_slots.size() > kKeptSlots) {
            m_slots.assign(kFirstSlots, Slot());
            m_mask = kFirstSlots - 1;
        }
        if (++m_generation > kLastGeneration) {
            std::fill(m_slots.begin(), m_slots.end(), Slot());
            m_generation = 1;
        }
    }

private:
    static constexpr std::size_t kFirstSlots = 512;
    static constexpr std::size_t kKeptSlots = 1 << 18;
    // Keys are a part (below 2^16, which EndStreams checks) and a start position (32 bits).
    static constexpr int kGenerationShift = 48;
    static constexpr std::uint64_t kLastGeneration = 0xFFFF;

    struct Slot {
        std::uint64_t tag = 0;
        Stream* stream = nullptr;
    };

    std::uint64_t tag(std::uint64_t key) const { return (m_generation << kGenerationShift) | key; }

    std::size_t slotOf(std::uint64_t key) const {
        return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15ull) >> 32) & m_mask;
    }

    void grow() {
        std::vector<Slot> old = std::move(m_slots);
        m_slots.assign(old.size() * 2, Slot());
        m_mask = m_slots.size() - 1;
        const std::uint64_t generation = m_generation;
        m_generation = 1;
        m_used = 0;
        constexpr std::uint64_t kKeyBits = (std::uint64_t{1} << kGenerationShift) - 1;
        for (const Slot& slot : old) {
            if (slot.tag >> kGenerationShift == generation)
                insert(slot.tag & kKeyBits, slot.stream);
        }
    }

    std::vector<Slot> m_slots = std::vector<Slot>(kFirstSlots);
    std::size_t m_mask = kFirstSlots - 1;
    std::size_t m_used = 0;
    std::uint64_t m_generation = 1;
};

}  // namespace vantrel
