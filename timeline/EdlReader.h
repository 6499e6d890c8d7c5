#pragma once

#include <string_view>

#include "Cut.h"
#include "RateChoice.h"

namespace vantrel::timeline {

/// Reads an edit decision list in the CMX 3600 form editing systems export, as they really write
/// it: any line ends and encoding (TextDecoding.h), comments with or without "*", REM and other
/// lines kept as notes of the event before them, source fields as timecodes or frame numbers,
/// event numbers of up to six digits. The rate comes from the file and the request (RateChoice.h);
/// the FCM line before the first event fixes the record's counting, later FCM lines the sources'
/// of the events after them. An event whose record cannot be read is lost and said so; whatever
/// else is odd about a line is a warning, and its event stays.
Cut readEdl(std::string_view bytes, const RateRequest& request);

}  // namespace vantrel::timeline
