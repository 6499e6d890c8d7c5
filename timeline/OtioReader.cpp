#include "OtioReader.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "FrameRate.h"
#include "NumberText.h"

namespace vantrel::timeline {

namespace {

using Json = nlohmann::json;

bool startsWord(std::string_view text, std::size_t at, std::string_view word) {
    if (text.substr(at, word.size()) != word) return false;
    const std::size_t end = at + word.size();
    return end == text.size() || !std::isalnum(static_cast<unsigned char>(text[end]));
}

// Python's JSON writer puts the non-finite floats of OpenTimelineIO as bare words, which JSON
// lacks: outside strings they become null, so that nlohmann-json reads the rest.
std::string withoutNonFiniteWords(std::string_view text) {
    std::string cleaned;
    cleaned.reserve(text.size());
    bool inString = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (inString) {
            cleaned += c;
            if (c == '\\' && at + 1 < text.size()) cleaned += text[++at];
            if (c == '"') inString = false;
            continue;
        }
        if (c == '"') inString = true;
        bool replaced = false;
        for (const std::string_view word : {"-Infinity", "Infinity", "-Inf", "Inf", "NaN"}) {
            if (startsWord(text, at, word)) {
                cleaned += "null";
                at += word.size() - 1;
                replaced = true;
                break;
            }
        }
        if (!replaced) cleaned += c;
    }
    return cleaned;
}

std::string schemaOf(const Json& node) {
    if (!node.is_object()) return {};
    const auto schema = node.find("OTIO_SCHEMA");
    return schema != node.end() && schema->is_string() ? schema->get<std::string>() : std::string();
}

bool hasSchema(const Json& node, std::string_view name) {
    const std::string schema = schemaOf(node);
    return schema.size() > name.size() && schema.starts_with(name) && schema[name.size()] == '.';
}

std::string text(const Json& node, const char* key) {
    if (!node.is_object()) return {};
    const auto found = node.find(key);
    return found != node.end() && found->is_string() ? found->get<std::string>() : std::string();
}

const Json& member(const Json& node, const char* key) {
    static const Json none;
    if (!node.is_object()) return none;
    const auto found = node.find(key);
    return found != node.end() ? *found : none;
}

double number(const Json& node, const char* key) {
    const Json& value = member(node, key);
    return value.is_number() ? value.get<double>() : 0.0;
}

// The code of a rate written as a float: 23.976023976023978 is 24000/1001.
std::optional<int> codeOfFloatRate(double rate) {
    for (const FrameRate& candidate : kFrameRates) {
        if (candidate.dropFrame == DropFrame::None &&
            std::fabs(candidate.exact.value() - rate) < 0.001) {
            return candidate.code;
        }
    }
    return std::nullopt;
}

class Reader {
public:
    Reader(const Json& root, const RateRequest& request) : m_root(root), m_request(request) {
        m_cut.format = "OTIO";
    }

    Cut read() {
        const Json* timeline = &m_root;
        if (hasSchema(m_root, "SerializableCollection")) {
            timeline = firstTimelineOfCollection();
            if (!timeline) return readCollectionClips();
        } else if (!hasSchema(m_root, "Timeline")) {
            return fail("an OpenTimelineIO file whose root is " +
                        (schemaOf(m_root).empty() ? std::string("no schema") : schemaOf(m_root)) +
                        ", not a Timeline or a SerializableCollection");
        }
        m_cut.title = text(*timeline, "name");
        const Json& tracks = member(*timeline, "tracks");
        const Json& start = member(*timeline, "global_start_time");
        if (!setRate(start.is_object() ? number(start, "rate") : firstClipRate(tracks))) {
            return std::move(m_cut);
        }
        const double startFrames = start.is_object() ? exactFrames(start) : 0.0;
        int video = 0;
        int audio = 0;
        for (const Json& track : member(tracks, "children")) {
            if (!hasSchema(track, "Track") && !hasSchema(track, "Sequence")) continue;
            const bool isAudio = text(track, "kind") == "Audio";
            readTrack(track, (isAudio ? "A" : "V") + std::to_string(isAudio ? ++audio : ++video),
                      startFrames);
        }
        if (m_cut.events.empty()) markUnreadable(m_cut, "the timeline holds no clips");
        return std::move(m_cut);
    }

private:
    Cut fail(std::string message) {
        markUnreadable(m_cut, std::move(message));
        return std::move(m_cut);
    }

    const Json* firstTimelineOfCollection() {
        const Json* first = nullptr;
        std::string others;
        for (const Json& child : member(m_root, "children")) {
            if (!hasSchema(child, "Timeline")) continue;
            if (!first) {
                first = &child;
            } else {
                const std::string name = text(child, "name");
                others += (others.empty() ? "" : ", ") + (name.empty() ? "an unnamed one" : name);
            }
        }
        if (!others.empty()) {
            addProblem(m_cut,
                       {0,
                        {},
                        "the collection holds more timelines; the first is read, not " + others,
                        ProblemKind::Warning});
        }
        return first;
    }

    // A collection of clips and no timeline: a clip list, end to end.
    Cut readCollectionClips() {
        m_cut.clipList = true;
        for (const Json& child : member(m_root, "children")) {
            if (!hasSchema(child, "Clip")) continue;
            if (m_cut.events.empty() && !setRate(durationRate(child))) return std::move(m_cut);
            addEvent(child, "clips", 0.0, "C");
        }
        if (m_cut.events.empty()) return fail("the collection holds no timeline and no clips");
        placeEndToEnd(m_cut);
        return std::move(m_cut);
    }

    // The rate of a clip's range, or of its media's where the clip uses the media whole.
    static double durationRate(const Json& item) {
        const Json& range = member(item, "source_range");
        return number(member(range.is_object() ? range : member(reference(item), "available_range"),
                             "duration"),
                      "rate");
    }

    // Without a global start time, the timeline counts at its first clip's rate, which may sit
    // in a nested stack.
    static double firstClipRate(const Json& stack, int depth = 0) {
        constexpr int kDeepest = 64;
        if (depth > kDeepest) return 0.0;
        for (const Json& track : member(stack, "children")) {
            for (const Json& item : member(track, "children")) {
                if (hasSchema(item, "Clip")) return durationRate(item);
                if (hasSchema(item, "Stack")) {
                    if (const double rate = firstClipRate(item, depth + 1); rate > 0) return rate;
                }
            }
        }
        return 0.0;
    }

    bool setRate(double rate) {
        const auto code = codeOfFloatRate(rate);
        if (!code) {
            markUnreadable(m_cut, "a rate of " + number_text::fixed(rate, 3) +
                                      " frames a second, which Vantrel does not count in");
            return false;
        }
        m_cut.rate = statedRate(*code, m_request);
        m_rate = frameRateForCode(*code)->exact.value();
        return true;
    }

    // A rational time in frames of the timeline's rate, not yet rounded: items at other rates
    // are added up exactly and only the places of events are rounded, so that they do not drift.
    double exactFrames(const Json& time) const {
        const double rate = number(time, "rate");
        const double value = number(time, "value");
        if (rate <= 0 || !std::isfinite(value)) return 0.0;
        const double exact = std::fabs(rate - m_rate) < 0.001 ? value : value * m_rate / rate;
        // Far beyond any cut; the reader's check of places turns such an event away.
        constexpr double kFarthest = 1e15;
        return std::clamp(exact, -kFarthest, kFarthest);
    }

    // The nearest whole frame, halves upward.
    static double wholeFrames(double exact) { return std::floor(exact + 0.5); }

    // A nested stack deeper than editing systems write is taken to last nothing.
    double durationOf(const Json& item, int depth = 0) const {
        constexpr int kDeepest = 64;
        if (depth > kDeepest) return 0.0;
        const Json& range = member(item, "source_range");
        if (range.is_object()) return exactFrames(member(range, "duration"));
        if (hasSchema(item, "Clip")) {
            return exactFrames(member(member(reference(item), "available_range"), "duration"));
        }
        // A nested stack without a range lasts as long as its longest track.
        double longest = 0.0;
        for (const Json& track : member(item, "children")) {
            double length = 0.0;
            for (const Json& child : member(track, "children")) {
                if (!hasSchema(child, "Transition")) length += durationOf(child, depth + 1);
            }
            longest = std::max(longest, length);
        }
        return longest;
    }

    static const Json& reference(const Json& clip) {
        const Json& references = member(clip, "media_references");
        if (references.is_object()) {
            const std::string key = text(clip, "active_media_reference_key");
            return member(references, key.empty() ? "DEFAULT_MEDIA" : key.c_str());
        }
        return member(clip, "media_reference");
    }

    // The reference's name, or the file name of its address without extension, or the clip's.
    static std::string reelOf(const Json& item) {
        const Json& media = reference(item);
        if (const std::string name = text(media, "name"); !name.empty()) return name;
        std::string url = text(media, "target_url");
        if (!url.empty()) {
            url = url.substr(url.find_last_of('/') + 1);
            return url.substr(0, url.find_last_of('.'));
        }
        return text(item, "name");
    }

    void readTrack(const Json& track, const std::string& name, double start) {
        double place = 0.0;
        std::string transition = "C";
        for (const Json& item : member(track, "children")) {
            if (hasSchema(item, "Transition")) {
                transition = dissolve(static_cast<std::int64_t>(
                    wholeFrames(exactFrames(member(item, "in_offset")) +
                                exactFrames(member(item, "out_offset")))));
                continue;
            }
            if (hasSchema(item, "Clip") || hasSchema(item, "Stack")) {
                addEvent(item, name, start + place, transition);
            }
            // A transition into a gap is a fade, not the way into the clip after the gap.
            transition = "C";
            place += durationOf(item);
        }
    }

    void addEvent(const Json& item, const std::string& track, double place,
                  const std::string& transition) {
        Event& event = m_cut.events.emplace_back();
        event.number = eventNumber(m_cut.events.size());
        event.track = track;
        event.transition = transition;
        event.clipName = text(item, "name");
        event.reel = hasSchema(item, "Stack") ? event.clipName : reelOf(item);
        event.recordIn = wholeFrames(place);
        event.recordOut = wholeFrames(place + durationOf(item));
        const Json& range = member(item, "source_range");
        const Json& sourceStart = member(range, "start_time");
        if (sourceStart.is_object()) {
            event.sourceRateCode =
                codeOfFloatRate(number(sourceStart, "rate")).value_or(m_cut.rate.code);
            const double value = number(sourceStart, "value");
            const double length = number(member(range, "duration"), "value");
            event.sourceIn = value;
            event.sourceOut = value + length;
        }
    }

    const Json& m_root;
    RateRequest m_request;
    double m_rate = 24.0;
    Cut m_cut;
};

}  // namespace

Cut readOtio(std::string_view bytes, const RateRequest& request) {
    const Json root = Json::parse(withoutNonFiniteWords(bytes), nullptr, false);
    if (root.is_discarded()) {
        Cut cut;
        cut.format = "OTIO";
        cut.rate = chooseRate({}, request);
        addProblem(cut, {0,
                         {},
                         "not well-formed JSON: an OpenTimelineIO file expected",
                         ProblemKind::Unreadable});
        return cut;
    }
    return Reader(root, request).read();
}

}  // namespace vantrel::timeline
