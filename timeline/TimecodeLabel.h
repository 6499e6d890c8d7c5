#pragma once

#include <optional>
#include <string>
#include <string_view>

// Timecode labels as files write them, "01:00:10:12", "01:00:10;12", "01;00;10;12" or
// "01:00:10.12", read into real frame counts at a rate, drop-frame counting included.
namespace vantrel::timeline {

struct LabelFields {
    int hours = 0;
    int minutes = 0;
    int seconds = 0;
    int frames = 0;
    bool semicolon = false;  // some separator is ';', the drop-frame habit
};

/// The four fields of a label (one to three digits each, separated by ':', ';' or '.'), or
/// nothing when the text is no label.
std::optional<LabelFields> labelFields(std::string_view text);

struct LabelReading {
    double frames = 0;
    std::string error;  // why the text is no label at the rate; empty when it is one
};

/// The real frame count of a label at the code, or why it has none there: fields out of range,
/// a frame beyond the rate's labels, or a label drop-frame counting skips.
LabelReading framesOfLabel(std::string_view text, int code);

}  // namespace vantrel::timeline
