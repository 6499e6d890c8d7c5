#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Arena.h"

namespace vantrel {

// The streams of a search, numbered, and where to find each by part and start position. A search
// asks about positions near the ones it asked about just before, as its work moves along the
// text, so each part asked about gets a column over the text, kept in pages of kPagePositions
// stream numbers that are allocated when first written. Lookups stay within a few pages, where a
// hash table spread them over all of its memory (on a long paste most of a keystroke's time went
// to waiting for it), and positions where a part is never asked about cost nothing. Numbers take
// half the room of pointers; the streams live in chunks, so a number finds its stream at once.
template <typename Stream>
class StreamIndex {
public:
    // Starts over; the pages and chunks of the last search went with the arena's reset.
    void reset(std::size_t partCount) {
        for (std::size_t column = 0; column < m_columnCount; ++column) m_pages[column].clear();
        m_columnCount = 0;
        m_columnOf.assign(partCount, kNoColumn);
        m_chunks.clear();
        m_count = 0;
    }

    // A new stream, numbered in its `id`.
    Stream* add(Arena& arena) {
        if (m_count % kChunkStreams == 0) m_chunks.push_back(arena.allocate<Stream>(kChunkStreams));
        Stream* stream = &m_chunks.back()[m_count % kChunkStreams];
        stream->id = m_count++;
        return stream;
    }

    Stream* find(std::uint32_t part, std::uint32_t start) const {
        const std::uint32_t column = m_columnOf[part];
        if (column == kNoColumn) return nullptr;
        const std::vector<std::uint32_t*>& pages = m_pages[column];
        const std::size_t page = start / kPagePositions;
        if (page >= pages.size() || pages[page] == nullptr) return nullptr;
        const std::uint32_t entry = pages[page][start % kPagePositions];
        return entry == kUnknown ? nullptr : &stream(entry - 1);
    }

    void insert(std::uint32_t part, std::uint32_t start, const Stream& stream, Arena& arena) {
        std::uint32_t& column = m_columnOf[part];
        if (column == kNoColumn) {
            column = static_cast<std::uint32_t>(m_columnCount++);
            if (m_pages.size() < m_columnCount) m_pages.resize(m_columnCount);
        }
        std::vector<std::uint32_t*>& pages = m_pages[column];
        const std::size_t page = start / kPagePositions;
        if (page >= pages.size()) pages.resize(page + 1, nullptr);
        if (pages[page] == nullptr) pages[page] = arena.allocate<std::uint32_t>(kPagePositions);
        pages[page][start % kPagePositions] = stream.id + 1;
    }

    // Every stream so far, in the order of their numbers.
    template <typename Visit>
    void forEach(Visit visit) {
        for (std::uint32_t id = 0; id < m_count; ++id) visit(stream(id));
    }

private:
    static constexpr std::uint32_t kPagePositions = 256;
    static constexpr std::uint32_t kChunkStreams = 1024;
    static constexpr std::uint32_t kNoColumn = UINT32_MAX;
    static constexpr std::uint32_t kUnknown = 0;

    Stream& stream(std::uint32_t id) const {
        return m_chunks[id / kChunkStreams][id % kChunkStreams];
    }

    std::vector<std::uint32_t> m_columnOf;
    std::vector<std::vector<std::uint32_t*>> m_pages;
    std::size_t m_columnCount = 0;
    std::vector<Stream*> m_chunks;
    std::uint32_t m_count = 0;
};

}  // namespace vantrel
