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

/// The closed pop-ups show these shorter captions; the lists and the log keep the full ones.
inline constexpr std::array<const char*, 8> kTransferSpeedCompact{"Modem",
                                                                  "DSL/Cable",
                                                                  "Fast Internet",
                                                                  "54 MBit WLAN",
                                                                  "100 MBit Ethernet",
                                                                  "1 GBit Ethernet",
                                                                  "2 GBit FibreChannel",
                                                                  "4 GBit FibreChannel"};

// The rows a first start chooses.
inline constexpr int kFirstStartResolution = 3;
inline constexpr int kFirstStartBitDepth = 0;
inline constexpr int kFirstStartAspectRatio = 2;
inline constexpr int kFirstStartTransferSpeed = 4;
inline constexpr int kFirstStartFilm = 0;
inline constexpr int kFirstStartSystem = 0;

/// Stored indexes are kept as they are; where one is used, an index outside its table (from a
/// hand-edited or damaged preferences file) stands for the row a first start would choose.
template <typename Table>
constexpr int usableRow(const Table& table, int index, int firstStartRow) {
    return index >= 0 && static_cast<std::size_t>(index) < table.size() ? index : firstStartRow;
}

}  // namespace vantrel::captions
