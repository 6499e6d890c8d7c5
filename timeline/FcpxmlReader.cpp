#include "FcpxmlReader.h"

#include <array>
#include <charconv>
#include <map>
#include <pugixml.hpp>

#include "FrameRate.h"
#include "Rational.h"
#include "XmlFile.h"

namespace vantrel::timeline {

namespace {

constexpr std::array<std::string_view, 8> kClipElements{
    "asset-clip", "clip", "ref-clip", "mc-clip", "sync-clip", "video", "title", "audio"};

bool isClip(const pugi::xml_node& node) {
    const std::string_view name = node.name();
    for (const std::string_view clip : kClipElements) {
        if (name == clip) return true;
    }
    return false;
}

Rational timeOf(const pugi::xml_node& node, const char* attribute) {
    return parseRational(node.attribute(attribute).value()).value_or(Rational{});
}

// "1.10" as 110, "1.8" as 108, so that versions compare as numbers; anything else as -1.
int versionNumber(std::string_view version) {
    const auto point = version.find('.');
    int major = 0;
    int minor = 0;
    if (point == std::string_view::npos ||
        std::from_chars(version.data(), version.data() + point, major).ec != std::errc() ||
        std::from_chars(version.data() + point + 1, version.data() + version.size(), minor).ec !=
            std::errc() ||
        major < 0 || major > 99 || minor < 0 || minor > 99) {
        return -1;
    }
    return major * 100 + minor;
}

// The clip an item stands for in the cut: itself, or an audition's active pick, its first clip.
pugi::xml_node pickedClip(const pugi::xml_node& item) {
    if (isClip(item)) return item;
    if (std::string_view(item.name()) != "audition") return {};
    for (const pugi::xml_node& child : item.children()) {
        if (isClip(child)) return child;
    }
    return {};
}

// Lane 1 is V2, lane 2 V3; lane -1 is A1.
std::string trackOfLane(int lane) {
    return lane > 0 ? "V" + std::to_string(lane + 1) : "A" + std::to_string(-lane);
}

class Reader {
public:
    Reader(const pugi::xml_node& root, const RateRequest& request)
        : m_root(root), m_request(request) {
        m_cut.format = "FCPXML";
        for (const pugi::xml_node& resource : root.child("resources").children()) {
            m_resources[resource.attribute("id").value()] = resource;
        }
    }

    Cut read() {
        const int version = versionNumber(m_root.attribute("version").value());
        if (version < 108 || version > 113) {
            return fail("FCPXML version " + std::string(m_root.attribute("version").value()) +
                        ": 1.8 to 1.13 expected");
        }
        const std::vector<pugi::xml_node> projects = elementsNamed("project");
        if (projects.empty()) return readClipList();
        if (projects.size() > 1) {
            std::vector<std::string> names;
            for (const pugi::xml_node& project : projects) {
                names.emplace_back(project.attribute("name").value());
            }
            warnOfOthersNotRead(m_cut, "projects", names);
        }
        const pugi::xml_node project = projects.front();
        m_cut.title = project.attribute("name").value();
        const pugi::xml_node sequence = project.child("sequence");
        if (!setRate(m_resources[sequence.attribute("format").value()],
                     std::string_view(sequence.attribute("tcFormat").value()) == "DF")) {
            return std::move(m_cut);
        }
        readContainer(sequence.child("spine"), Rational{}, Rational{}, "V1");
        if (m_cut.events.empty()) markUnreadable(m_cut, "the project's sequence holds no clips");
        return std::move(m_cut);
    }

private:
    // Every element of that name in document order.
    std::vector<pugi::xml_node> elementsNamed(const char* name) const {
        std::vector<pugi::xml_node> found;
        for (const pugi::xpath_node& node :
             m_root.select_nodes((std::string("//") + name).c_str())) {
            found.push_back(node.node());
        }
        return found;
    }

    Cut fail(std::string message) {
        markUnreadable(m_cut, std::move(message));
        return std::move(m_cut);
    }

    void warn(std::string message) {
        addProblem(m_cut, {0, {}, std::move(message), ProblemKind::Warning});
    }

    // The rate of a format resource; false, with the reason, when it has none Vantrel counts in.
    bool setRate(const pugi::xml_node& format, bool dropFrame) {
        const auto frameDuration = parseRational(format.attribute("frameDuration").value());
        if (!frameDuration || frameDuration->numerator <= 0) {
            markUnreadable(m_cut, "no frame duration for the sequence's format");
            return false;
        }
        const auto code =
            codeOfExactRate(frameDuration->denominator, frameDuration->numerator, dropFrame);
        if (!code) {
            markUnreadable(m_cut, "a frame duration of " +
                                      std::string(format.attribute("frameDuration").value()) +
                                      ", a rate Vantrel does not count in");
            return false;
        }
        m_cut.rate = statedRate(*code, m_request);
        m_sequenceIsDropFrame = dropFrame;
        const ExactRate& exact = frameRateForCode(*code)->exact;
        m_framesPerSecond = fraction(exact.numerator, exact.denominator);
        return true;
    }

    std::int64_t frames(Rational seconds) {
        const Rational exact = seconds * m_framesPerSecond;
        if (!exact.isWhole() && !m_warnedOfFractions) {
            m_warnedOfFractions = true;
            warn(
                "times between frames (audio edited finer than a frame) are rounded to whole "
                "frames");
        }
        return exact.rounded();
    }

    // The children of a storyline: clips one after another, their anchored items on their lanes.
    // A child's place is the container's place plus its offset from the container's start.
    void readContainer(const pugi::xml_node& container, Rational place, Rational start,
                       const std::string& track, int depth = 0) {
        std::string transition = "C";
        for (const pugi::xml_node& child : container.children()) {
            const std::string_view name = child.name();
            if (name == "transition") {
                transition = dissolve(frames(timeOf(child, "duration")));
                continue;
            }
            const pugi::xml_node clip = pickedClip(child);
            if (!clip && name != "gap") continue;
            const Rational childPlace = place + (timeOf(child, "offset") - start);
            if (clip) addEvent(clip, childPlace, track, transition);
            // A transition into a gap is a fade, not the way into the clip after the gap.
            transition = "C";
            readAnchored(clip ? clip : child, childPlace, depth + 1);
        }
    }

    // Connected clips and secondary storylines, each on the track of its lane. Editing systems
    // nest a few levels; a file nested deeper than kDeepest is not followed further.
    void readAnchored(const pugi::xml_node& parent, Rational parentPlace, int depth) {
        constexpr int kDeepest = 64;
        if (depth > kDeepest) {
            if (!m_warnedOfDepth) warn("clips connected more than 64 levels deep are left out");
            m_warnedOfDepth = true;
            return;
        }
        const Rational parentStart = timeOf(parent, "start");
        for (const pugi::xml_node& child : parent.children()) {
            const pugi::xml_attribute lane = child.attribute("lane");
            if (!lane) continue;
            const std::string track = trackOfLane(lane.as_int());
            const Rational childPlace = parentPlace + (timeOf(child, "offset") - parentStart);
            if (std::string_view(child.name()) == "spine") {
                readContainer(child, childPlace, timeOf(child, "start"), track, depth + 1);
            } else if (const pugi::xml_node clip = pickedClip(child)) {
                addEvent(clip, childPlace, track, "C");
                readAnchored(clip, childPlace, depth + 1);
            }
        }
    }

    void addEvent(const pugi::xml_node& clip, Rational place, const std::string& track,
                  const std::string& transition) {
        Event& event = m_cut.events.emplace_back();
        event.number = eventNumber(m_cut.events.size());
        event.track = track;
        event.transition = transition;
        event.clipName = clip.attribute("name").value();
        const pugi::xml_node resource = m_resources[clip.attribute("ref").value()];
        const std::string_view kind = resource.name();
        event.reel = (kind == "asset" || kind == "media") ? resource.attribute("name").value()
                                                          : event.clipName;
        const Rational duration = timeOf(clip, "duration");
        event.recordIn = static_cast<double>(frames(place));
        event.recordOut = static_cast<double>(frames(place + duration));
        // The source counts at its media's rate, a 59.94 camera file in a 29.97 project too.
        event.sourceRateCode = sourceRateOf(clip);
        const ExactRate& sourceRate = frameRateForCode(event.sourceRateCode)->exact;
        const Rational framesPerSecond = fraction(sourceRate.numerator, sourceRate.denominator);
        const Rational start = timeOf(clip, "start");
        event.sourceIn = static_cast<double>((start * framesPerSecond).rounded());
        event.sourceOut = static_cast<double>(((start + duration) * framesPerSecond).rounded());
    }

    // The code of the clip's own format, drop frame as its tcFormat says; the sequence's where
    // the clip has no format of its own (audio) or one Vantrel does not count in.
    int sourceRateOf(const pugi::xml_node& clip) {
        const auto frameDuration = parseRational(formatOf(clip).attribute("frameDuration").value());
        if (!frameDuration || frameDuration->numerator <= 0) return m_cut.rate.code;
        const pugi::xml_attribute tcFormat = clip.attribute("tcFormat");
        const bool dropFrame =
            tcFormat ? std::string_view(tcFormat.value()) == "DF" : m_sequenceIsDropFrame;
        return codeOfExactRate(frameDuration->denominator, frameDuration->numerator, dropFrame)
            .value_or(m_cut.rate.code);
    }

    // A library of clips and no project: each clip of each event once, end to end. Clips may
    // also stand right under the root, as a file of a few clips dragged out of a browser.
    Cut readClipList() {
        m_cut.clipList = true;
        std::vector<pugi::xml_node> clips;
        std::vector<pugi::xml_node> holders = elementsNamed("event");
        holders.insert(holders.begin(), m_root);
        for (const pugi::xml_node& holder : holders) {
            for (const pugi::xml_node& child : holder.children()) {
                if (const pugi::xml_node clip = pickedClip(child)) clips.push_back(clip);
            }
        }
        if (clips.empty()) return fail("no project and no clips");
        const pugi::xml_node first = clips.front();
        if (!setRate(formatOf(first),
                     std::string_view(first.attribute("tcFormat").value()) == "DF")) {
            return std::move(m_cut);
        }
        for (const pugi::xml_node& clip : clips) addEvent(clip, Rational{}, "clips", "C");
        placeEndToEnd(m_cut);
        return std::move(m_cut);
    }

    // A clip's format: its own, its asset's, or, for a compound or multicam clip, that of the
    // sequence or multicam inside its media.
    pugi::xml_node formatOf(const pugi::xml_node& clip) {
        if (const pugi::xml_node own = m_resources[clip.attribute("format").value()]) return own;
        const pugi::xml_node resource = m_resources[clip.attribute("ref").value()];
        if (const pugi::xml_node format = m_resources[resource.attribute("format").value()]) {
            return format;
        }
        for (const pugi::xml_node& inner : resource.children()) {
            if (const pugi::xml_node format = m_resources[inner.attribute("format").value()]) {
                return format;
            }
        }
        return {};
    }

    pugi::xml_node m_root;
    RateRequest m_request;
    std::map<std::string, pugi::xml_node, std::less<>> m_resources;
    Rational m_framesPerSecond{24, 1};
    bool m_sequenceIsDropFrame = false;
    bool m_warnedOfFractions = false;
    bool m_warnedOfDepth = false;
    Cut m_cut;
};

}  // namespace

Cut readFcpxml(std::string_view bytes, const RateRequest& request) {
    const XmlFile file(bytes, "fcpxml");
    if (!file.problem().empty()) return file.failed("FCPXML", request);
    return Reader(file.root(), request).read();
}

}  // namespace vantrel::timeline
