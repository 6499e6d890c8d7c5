#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <vector>

namespace vantrel {

// Bump allocation for everything of one search, released together. The blocks are kept for the
// next search on the thread: fresh memory costs a page fault per page, which would outweigh the
// matching itself. Up to kKeptBytes, which covers the costliest text the input field holds, so
// that each key typed after a long paste works in the memory of the key before.
class Arena {
public:
    template <typename T>
    T* allocate(std::size_t count) {
        static_assert(std::is_trivially_destructible_v<T>);
        constexpr std::size_t align = alignof(std::max_align_t);
        const std::size_t bytes = (count * sizeof(T) + align - 1) / align * align;
        if (bytes > m_left) nextBlock(bytes);
        T* first = std::launder(reinterpret_cast<T*>(m_next));
        m_next += bytes;
        m_left -= bytes;
        m_used += bytes;
        std::uninitialized_value_construct_n(first, count);
        return first;
    }

    /// Bytes handed out since the last reset.
    std::size_t used() const { return m_used; }

    // Starts over in the first block, keeping at most kKeptBytes of blocks.
    void reset() {
        m_used = 0;
        std::size_t kept = 0;
        std::size_t count = 0;
        while (count < m_blocks.size() && kept + m_blocks[count].size <= kKeptBytes) {
            kept += m_blocks[count++].size;
        }
        m_blocks.resize(count);
        m_current = 0;
        m_next = m_blocks.empty() ? nullptr : m_blocks.front().memory.get();
        m_left = m_blocks.empty() ? 0 : m_blocks.front().size;
    }

private:
    static constexpr std::size_t kFirstBlockBytes = 16 << 10;
    static constexpr std::size_t kLargestBlockBytes = 1 << 20;
    static constexpr std::size_t kKeptBytes = 64 << 20;

    struct Block {
        std::unique_ptr<std::byte[]> memory;
        std::size_t size;
    };

    void nextBlock(std::size_t bytes) {
        while (m_current + 1 < m_blocks.size()) {
            const Block& block = m_blocks[++m_current];
            if (block.size >= bytes) {
                m_next = block.memory.get();
                m_left = block.size;
                return;
            }
        }
        const std::size_t grown = m_blocks.empty()
                                      ? kFirstBlockBytes
                                      : std::min(m_blocks.back().size * 2, kLargestBlockBytes);
        const std::size_t size = std::max(bytes, grown);
        m_blocks.push_back({std::make_unique_for_overwrite<std::byte[]>(size), size});
        m_current = m_blocks.size() - 1;
        m_next = m_blocks.back().memory.get();
        m_left = size;
    }

    std::vector<Block> m_blocks;
    std::size_t m_current = 0;
    std::byte* m_next = nullptr;
    std::size_t m_left = 0;
    std::size_t m_used = 0;
};

}  // namespace vantrel
