#pragma once

#include <string_view>

#include "Cut.h"
#include "RateChoice.h"

namespace vantrel::timeline {

/// Reads a cut from any of the files editing systems exchange, recognised from the content, not
/// the name: FCPXML, xmeml (Final Cut Pro 7, Premiere Pro, Resolve), OpenTimelineIO, Avid Log
/// Exchange, and otherwise an edit decision list.
Cut readTimeline(std::string_view bytes, const RateRequest& request);

}  // namespace vantrel::timeline
