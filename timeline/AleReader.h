#pragma once

#include <string_view>

#include "Cut.h"
#include "RateChoice.h"

namespace vantrel::timeline {

/// Reads an Avid Log Exchange file: the rate from the FPS of its Heading (23.98 and 23.976 both
/// 24000/1001, drop frame where its timecodes are written with ';'), the columns of its Column
/// section by name, one clip a line of its Data section. A clip list, not a cut: the clips are
/// placed end to end, so that the running time is the sum of their durations, which is what the
/// dailies need on disk. A clip's duration is its Duration column, or End − Start (End exclusive)
/// where that is empty or missing.
Cut readAle(std::string_view bytes, const RateRequest& request);

/// Whether the text has the sections of an Avid Log Exchange file.
bool looksLikeAle(std::string_view text);

}  // namespace vantrel::timeline
