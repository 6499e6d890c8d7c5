#pragma once

#include <array>
#include <cstddef>

// The fixed choices of the side calculators. Each pop-up lists its table in order, so item i of a
// pop-up is row i of its table and the stored index is that row.
namespace vantrel::captions {

inline constexpr std::array<const char*, 10> kBitDepth{
    "RGB 8 bit", "RGB 10 bit",      "RGB 12 bit",       "RGB 16 bit",      "RGB float",
    "-",         "YUV 4:2:2 8 bit", "YUV 4:2:2 10 bit", "YUV 4:2:0 8 bit", "YUV 4:2:0 10 bit"};

/// Bytes per pixel of each bit depth; row 5 ("-") separates RGB from YUV and holds nothing.
inline constexpr std::array<float, 10> kBytesPerPixel{3.0f, 4.0f, 5.0f, 6.0f, 12.0f,
                                                      0.0f, 2.0f, 2.5f, 1.5f, 1.875f};

inline constexpr std::array<const char*, 7> kResolution{"PAL", "NTSC", "1920x1080", "1K",
                                                        "2K",  "4K",   "6K"};

inline constexpr std::array<const char*, 4> kAspectRatio{"1.33:1 (4:3)", "1.77:1 (16:9)", "1.85:1",
                                                         "2.35:1"};

inline constexpr std::array<const char*, 8> kTransferSpeed{
    "Slow Internet - Modem (~8 KByte/sec)", "Medium Internet - DSL/Cable (~200 KByte/sec)",
    "Fast Internet (~2 MByte/sec)",         "54 MBit WLAN (~5 MByte/sec)",
    "100 MBit Ethernet (~10 MByte/sec)",    "1 GBit Ethernet (~30 MByte/sec)",
    "2 GBit FibreChannel (~150 MByte/sec)", "4 GBit FibreChannel (~300 MByte/sec)"};

inline constexpr std::array<const char*, 6> kFilm{"Super8", "16 mm",        "16 mm 2 perf",
                                                  "35 mm",  "35 mm 4 perf", "65/70 mm"};

inline constexpr std::array<const char*, 2> kSystem{"m", "ft"};

/// Stored indexes are applied as they are; a table is only ever read through this, so an index
/// from a damaged preferences file can never read outside it.
template <typename Table>
constexpr std::size_t clampedRow(const Table& table, int index) {
    if (index < 0) return 0;
    const auto row = static_cast<std::size_t>(index);
    return row < table.size() ? row : table.size() - 1;
}

}  // namespace vantrel::captions
