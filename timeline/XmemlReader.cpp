#include "XmemlReader.h"

#include <charconv>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "FrameRate.h"
#include "XmlFile.h"

namespace vantrel::timeline {

namespace {

// A count of frames as xmeml writes it, sometimes with decimals: the nearest whole frame, halves
// upward; -1 (inside a transition) stays -1.
std::int64_t framesOf(const pugi::xml_node& node) {
    const std::string_view text = node.text().get();
    double value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc() ||
        !std::isfinite(value) || std::fabs(value) > 1e15) {
        return 0;
    }
    return static_cast<std::int64_t>(std::floor(value + 0.5));
}

bool isTrue(const pugi::xml_node& node) {
    const std::string_view text = node.text().get();
    return text == "TRUE" || text == "true" || text == "1";
}

// timebase 24 with ntsc TRUE is 24000/1001.
std::optional<int> codeOfRate(const pugi::xml_node& rate, bool dropFrame) {
    const std::int64_t timebase = framesOf(rate.child("timebase"));
    if (timebase <= 0) return std::nullopt;
    return isTrue(rate.child("ntsc")) ? codeOfExactRate(timebase * 1000, 1001, dropFrame)
                                      : codeOfExactRate(timebase, 1, dropFrame);
}

class Reader {
public:
    Reader(const pugi::xml_node& root, const RateRequest& request) : m_request(request) {
        m_cut.format = "xmeml";
        // Files and nested sequences are written in full once and by their id after that.
        for (const char* kind : {"file", "sequence"}) {
            for (const pugi::xpath_node& node :
                 root.select_nodes((std::string("//") + kind + "[@id]").c_str())) {
                if (node.node().first_child())
                    m_defined.emplace(kind + std::string(":") + node.node().attribute("id").value(),
                                      node.node());
            }
        }
        for (const pugi::xpath_node& node :
             root.select_nodes("//sequence[not(ancestor::clipitem)]")) {
            if (node.node().first_child()) m_sequences.push_back(node.node());
        }
    }

    Cut read() {
        if (m_sequences.empty()) return fail("no sequence in the file");
        if (m_sequences.size() > 1) {
            std::vector<std::string> names;
            for (const pugi::xml_node& sequence : m_sequences) {
                names.emplace_back(sequence.child_value("name"));
            }
            warnOfOthersNotRead(m_cut, "sequences", names);
        }
        const pugi::xml_node sequence = m_sequences.front();
        m_cut.title = sequence.child_value("name");
        const pugi::xml_node timecode = sequence.child("timecode");
        const bool dropFrame = std::string_view(timecode.child_value("displayformat")) == "DF";
        const auto code = codeOfRate(sequence.child("rate"), dropFrame);
        if (!code) return fail("the sequence has no rate Vantrel counts in");
        m_cut.rate = statedRate(*code, m_request);
        m_start = framesOf(timecode.child("frame"));
        const pugi::xml_node media = sequence.child("media");
        int number = 0;
        for (const pugi::xml_node& track : media.child("video").children("track")) {
            readTrack(track, "V" + std::to_string(++number));
        }
        number = 0;
        for (const pugi::xml_node& track : media.child("audio").children("track")) {
            // Premiere writes each channel of a stereo track as a track of its own.
            if (track.attribute("currentExplodedTrackIndex").as_int() > 0) continue;
            readTrack(track, "A" + std::to_string(++number));
        }
        if (m_cut.events.empty()) markUnreadable(m_cut, "the sequence holds no clips");
        return std::move(m_cut);
    }

private:
    Cut fail(std::string message) {
        markUnreadable(m_cut, std::move(message));
        return std::move(m_cut);
    }

    // The cut inside a transition: at its start, its end, or (centred, the default) the frame at
    // its middle, a half frame rounded down.
    static std::int64_t cutPoint(const pugi::xml_node& transition) {
        const std::int64_t start = framesOf(transition.child("start"));
        const std::int64_t end = framesOf(transition.child("end"));
        const std::string_view alignment = transition.child_value("alignment");
        if (alignment.find("start") != std::string_view::npos) return start;
        if (alignment.find("end") != std::string_view::npos) return end;
        return (start + end) / 2;
    }

    void readTrack(const pugi::xml_node& track, const std::string& name) {
        pugi::xml_node transition;
        for (const pugi::xml_node& item : track.children()) {
            const std::string_view kind = item.name();
            if (kind == "transitionitem") {
                transition = item;
                continue;
            }
            if (kind != "clipitem" && kind != "generatoritem") continue;
            std::int64_t start = framesOf(item.child("start"));
            std::int64_t end = framesOf(item.child("end"));
            if (start < 0 && transition) start = cutPoint(transition);
            if (end < 0) {
                const pugi::xml_node next = item.next_sibling("transitionitem");
                if (next) end = cutPoint(next);
            }
            addEvent(item, name, start, end, transition);
            transition = pugi::xml_node();
        }
    }

    void addEvent(const pugi::xml_node& item, const std::string& track, std::int64_t start,
                  std::int64_t end, const pugi::xml_node& transition) {
        Event& event = m_cut.events.emplace_back();
        event.number = eventNumber(m_cut.events.size());
        event.track = track;
        event.clipName = item.child_value("name");
        event.reel = reelOf(item);
        event.transition =
            transition
                ? dissolve(framesOf(transition.child("end")) - framesOf(transition.child("start")))
                : "C";
        event.recordIn = static_cast<double>(m_start + start);
        event.recordOut = static_cast<double>(m_start + std::max(start, end));
        event.sourceRateCode = codeOfRate(item.child("rate"), false).value_or(m_cut.rate.code);
        event.sourceIn = static_cast<double>(framesOf(item.child("in")));
        event.sourceOut = static_cast<double>(framesOf(item.child("out")));
    }

    // An element written in full, or by the id of its full definition elsewhere in the file.
    pugi::xml_node defined(const pugi::xml_node& node, const char* kind) const {
        if (!node || node.first_child()) return node;
        const auto found = m_defined.find(kind + std::string(":") + node.attribute("id").value());
        return found != m_defined.end() ? found->second : node;
    }

    // The tape's name, else the file's, else the clip's; a nested sequence goes by its name.
    std::string reelOf(const pugi::xml_node& item) const {
        if (const pugi::xml_node nested = defined(item.child("sequence"), "sequence")) {
            const std::string_view name = nested.child_value("name");
            return std::string(name.empty() ? item.child_value("name") : name);
        }
        const pugi::xml_node file = defined(item.child("file"), "file");
        const std::string_view reel = file.child("timecode").child("reel").child_value("name");
        if (!reel.empty()) return std::string(reel);
        const std::string_view name = file.child_value("name");
        return std::string(name.empty() ? item.child_value("name") : name);
    }

    RateRequest m_request;
    std::vector<pugi::xml_node> m_sequences;  // the file's own, not those nested in clips
    std::map<std::string, pugi::xml_node, std::less<>> m_defined;  // "file:ID", "sequence:ID"
    std::int64_t m_start = 0;
    Cut m_cut;
};

}  // namespace

Cut readXmeml(std::string_view bytes, const RateRequest& request) {
    const XmlFile file(bytes, "xmeml");
    if (!file.problem().empty()) return file.failed("xmeml", request);
    return Reader(file.root(), request).read();
}

}  // namespace vantrel::timeline
