#pragma once

#include <string_view>

#include "Cut.h"
#include "RateChoice.h"

namespace vantrel::timeline {

/// Reads a Final Cut Pro X project (FCPXML 1.8 to 1.13, the Info.fcpxml of a bundle too): the
/// first project's sequence, its primary storyline on V1, connected clips and secondary
/// storylines on the tracks of their lanes (V2 for lane 1, A1 for lane -1), compound, multicam
/// and synchronised clips as one event each. Times are rational seconds, placed exactly and
/// rounded to whole frames of the sequence's format once. A library without a project is read as
/// a list of its clips.
Cut readFcpxml(std::string_view bytes, const RateRequest& request);

}  // namespace vantrel::timeline
