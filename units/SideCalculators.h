#pragma once

#include <string>

// The two side calculators: what an uncompressed image sequence of a number of frames takes on
// disk and over a link, and how much film holds it. Plain functions of their inputs, shared by the
// window and vantrel-calc; the row numbers are those of the tables in CaptionTables.h.
namespace vantrel::side_calculators {

struct DiskChoice {
    int resolution = 3;
    int aspectRatio = 2;
    int bitDepth = 0;
    int transferSpeed = 4;
};

struct DiskFigures {
    std::string diskSpace;
    std::string transferTime;
};

/// A number of bytes in decimal units, "1000 kB" to "999.9 PB", or " ∞" beyond (NaN included).
std::string storageText(double bytes);

/// A number of seconds, "0.02 sec" to "1653.4 wk", or " ∞" from 1000 weeks on (NaN included).
std::string durationText(double seconds);

/// "14.6 GB" and "24.3 min" for 1500 frames of 2K at 1.85:1, RGB 10 bit, over 100 MBit Ethernet.
/// Units are decimal; figures beyond the last unit show " ∞".
DiskFigures diskSpaceAndTransferTime(double frames, const DiskChoice& choice);

/// "28.85 m" for 1500 frames of 35 mm 4 perf in metres (system 0) or "93.75 ft" in feet
/// (system 1); "∞" or "-∞" from 999999 units on, and for a gauge outside the table.
std::string filmLength(double frames, int film, int system);

/// The three lines the log receives for the disk-space figures of an evaluated frame count.
std::string diskSpaceLogEntry(const std::string& frames, const DiskFigures& figures,
                              const DiskChoice& choice);

/// The two lines the log receives for a film length.
std::string filmLengthLogEntry(const std::string& frames, const std::string& length, int film);

}  // namespace vantrel::side_calculators
