#!/usr/bin/python3
"""Writes the timeline fixtures: cuts as Final Cut Pro (FCPXML), Premiere Pro / Final Cut Pro 7
(xmeml), OpenTimelineIO and Avid Log Exchange files are exported, and the report
`vantrel-calc --timeline` must give for each, worked out here from the clips each file is written
from. Nothing here comes from Vantrel's output.

    scripts/make-timeline-golden.py tests/golden

writes tests/golden/timeline-NAME.{fcpxml,xml,otio,ale,edl} and tests/golden/timeline-NAME.out
(plus timeline-NAME-json.out and a few other runs), and prints the vantrel_golden() lines for
tests/CMakeLists.txt.

The label counting, the report rows and the EDL writing are make-edl-dialects.py's (loaded with
importlib, the file name having hyphens), so that an EDL and a timeline file of the same cut are
summed up by one recipe.

One cut, four files. abstract_cut() is a 23.976 reel from 01:00:00:00: twelve shots on V1 with two
dissolves and a hole, three graphics on V2 (one over the hole), sound effects on A1 (no two
overlapping: an xmeml or OTIO track cannot hold that) and two music cues on A2, the second ringing
out past the last picture frame. It is written as an EDL (cut-edl, read with -r 23n: an EDL does
not state 23.976), as FCPXML 1.10 (cut-fcpxml: graphics and sound as clips connected on lanes 1, -1
and -2, the hole and the music's tail as gaps), as xmeml (cut-xmeml: Premiere Pro, timebase 24 with
<ntsc>TRUE</ntsc>, stereo tracks written twice, centred dissolves with -1 at the cut) and as OTIO
(cut-otio: Clip.2, gaps, transitions). The four reports differ in event numbers (each format has
its own reading order) and in the EDL's track names, never in a figure: the script checks that they
give the same events and the same running time.

Each file is also read back here by a small reader of its own format (check_* below), which must
find exactly the events the report is worked out from: a slip in the writing shows up here rather
than as a false failure of Vantrel.

The fixtures and what they copy:

cut-edl             The cut as an EDL (CMX 3600, FCM: NON-DROP FRAME, dissolves as a zero-length
                    cut line and a D line), read as --timeline with -r 23n.
cut-fcpxml          The cut as FCPXML 1.10 (1001/24000s, tcStart 01:00:00:00, media-rep assets,
                    transitions with their filters, markers, smart collections). Also read with
                    --json (cut-fcpxml-json) and with -r 25 (cut-fcpxml-r25: the stated rate is
                    kept, the reason says the rate given differs).
cut-xmeml           The cut as Premiere Pro xmeml (version 4): 24 + NTSC, sequence timecode
                    01:00:00:00 after the <media>, V1 V2 A1 A2 with each stereo track written as
                    two <track>s, the second currentExplodedTrackIndex="1"; transitionitems with
                    -1 at the cut; a stale sequence <duration>; clipitem <duration> = media length.
cut-otio            The cut as OTIO: Timeline.1 at 23.976 from 86400, Clip.2 with
                    media_references, Gap.1, Transition.1. Also with --json (cut-otio-json).
fcpxml-df           FCPXML 1.8 (asset src attributes), 29.97 drop frame (tcFormat="DF", tcStart
                    01:00:00;00 as 107999892/30000s), a leading gap (the running time starts at
                    the first clip), a dissolve, a clip connected on lane 1 and a voice-over on
                    lane -1, a 59.94 clip conformed to 29.97 and slowed with a timeMap (its
                    asset's format is not the sequence's); crosses two minute marks. Also with
                    --notation smpte (fcpxml-df-smpte).
fcpxml-25           FCPXML 1.13, 25 fps, tcStart="3600s": a compound clip (ref-clip; its media's
                    own <sequence> comes before the project in the file) and a multicam (mc-clip)
                    as one event each, a gap start="3600s" carrying a title, a secondary storyline
                    (spine lane="1", its clips from offset 0s) with a dissolve inside, a generator
                    on lane 2 (V3), ambience on lane -1 starting half a frame late (halves up)
                    and music on lane -2 whose start and end fall between frames, ending 0.4 frame
                    past the last picture frame; a dissolve in the spine.
fcpxml-two-projects FCPXML 1.11: browser clips and a 23.976 project without tcStart in the first
                    event, a 25 fps project in the second: the first project is read.
fcpxml-clip-list    FCPXML 1.9 library with clips in two events and no project: a clip list.
fcpxml-1-5          FCPXML 1.5: not read, exit 1, nothing on stdout.
fcpxml-rate-15      FCPXML 1.12 at frameDuration 1/15s: not a rate of ours, exit 1.
xmeml-df            Final Cut Pro 7 xmeml (version 5): 30 + NTSC, DF display format, sequence
                    timecode 01:00:00;00 before the <media>; dissolves aligned at the start, at the
                    end and at the centre with an odd length (the half frame rounds down); <in>
                    and <out> written as decimals on a speed-changed clip; a Slug generatoritem;
                    mono A1 A2; reels from <file><timecode><reel>; crosses minute marks.
xmeml-24            Premiere Pro xmeml: 24 without NTSC from 10:00:00:00; a clip of a 25 fps file
                    (its own <rate>, its <start>/<end> still sequence frames); a nested sequence
                    clipitem (the nested <sequence> with its own tracks and timecode inside it);
                    a Color Matte generatoritem; a file used twice (the second time as
                    <file id="..."/>); A1 mono, A2 stereo (two <track>s), A3 mono.
otio-24             OTIO: Timeline.1 with global_start_time 86400 at 24; Clip.1 with
                    media_reference (external with a name, external with an empty name and a
                    target_url, missing, generator); Gap.1; Transition.1; a nested Stack in a
                    track; an old `Sequence.1` track; video and audio tracks interleaved in the
                    stack; a clip and a gap whose times are at 48; bare Inf, -Infinity and NaN in
                    available_range; a 39-digit integer in the metadata.
otio-collection     OTIO SerializableCollection.1 holding two timelines: the first is read; it has
                    no global_start_time, so its rate is its first clip's (25) and it starts at 0.
otio-unknown        An OTIO file whose root is "Foo.1": exit 1, nothing on stdout.
ale-2398            Avid ALE: CRLF, a tab after every row, several heading pairs on one line,
                    FPS 23.98, columns "Source File" and "Clip Name", some rows with an empty
                    Duration (End - Start), some with an empty End (the Duration), some without
                    Tape (the reel is the Name).
ale-23976           ALE with LF, FPS 23.976 and no Duration column. Also read with -r 23n
                    (ale-23976-r23n: same code, plain reason).
ale-2997df          ALE at FPS 29.97 with ';' timecodes (29d), durations crossing minute marks
                    for the rows whose Duration is empty. Also with --json (ale-2997df-json).
ale-no-fps          ALE without an FPS line: exit 1, nothing on stdout.

Where the rules for reading these files leave room, what a post-production user would expect,
and how the fixtures keep out of the question where they can:

- A time between frames: the record in and the record out are each rounded from the exact
  rational time (halves up); the duration is out - in, not a rounded duration. (fcpxml-25's
  ambience and music tell the two apart.)
- OTIO rates are floats: 23.976023976023978 is 23n, 24.0 is 24, 25.0 is 25, 48.0 is 48.
- OTIO media reference "name": "" counts as no name (OTIO writes the key always), so the reel
  falls to the target_url's last segment without extension, then to the clip's name.
- xmeml <file id="file-5"/> (a file already written in full): the fixture's file has no reel and
  its name equals the clipitem's name, so "look the file up" and "fall back to the clipitem's
  name" give the same reel.
- JSON sourceIn/sourceOut: FCPXML the clip's start and start + duration, at the asset's format's
  rate (the fixture's video assets share the sequence's format; audio assets have none, so the
  timeline's); OTIO source_range start and start + duration at its own rate; ALE Start and End at
  the file's rate. No xmeml file is read with --json: whether its <in>/<out> count from the file's
  timecode or from its first frame is not settled.
- ALE clipName = the Name column; the only file with a "Clip Name" column is not read with
  --json. ALE durations in the drop-frame file stay under a minute, where a Duration counted as
  a drop-frame label and as a frame count agree.
- An FCPXML clip list takes its rate from its clips' format: the fixture's formats share one
  frame duration. No reel metadata (com.apple.proapps.studio.reel) is written: the reel is the
  asset's name. No sync-clip and no <clip> with lanes inside (whether their insides count is not
  settled).
- "-r R differs": only -r 25 is given, written "25".
"""
import hashlib
import importlib.machinery
import json
import math
import pathlib
import re
import sys
import types
import xml.etree.ElementTree as ET
from fractions import Fraction as F


def _load(name):
    """A sibling script as a module: its file name has hyphens, so it cannot be imported."""
    path = pathlib.Path(__file__).resolve().parent / (name + ".py")
    loader = importlib.machinery.SourceFileLoader(name.replace("-", "_"), str(path))
    module = types.ModuleType(loader.name)
    module.__file__ = str(path)
    loader.exec_module(module)
    return module


dialects = _load("make-edl-dialects")
edl_golden = _load("make-edl-golden")
RATES = dialects.RATES
lengths = dialects.lengths

# The duration of one frame at each code: what FCPXML's frameDuration says.
FRAME = {"24": F(1, 24), "23n": F(1001, 24000), "23d": F(1001, 24000), "25": F(1, 25),
         "30": F(1, 30), "29n": F(1001, 30000), "29d": F(1001, 30000), "48": F(1, 48),
         "47n": F(1001, 48000), "50": F(1, 50), "60": F(1, 60), "59n": F(1001, 60000),
         "59d": F(1001, 60000), "72": F(1, 72), "96": F(1, 96), "95n": F(1001, 96000),
         "100": F(1, 100), "119n": F(1001, 120000), "119d": F(1001, 120000), "120": F(1, 120)}
DROP_OF = {"23n": "23d", "29n": "29d", "59n": "59d", "119n": "119d"}
STATED = "stated by the file"


# --- Counting -------------------------------------------------------------------------------

def nearest(seconds, code):
    """The frame a time falls on at `code`: the nearest, halves up."""
    return math.floor(F(seconds) / FRAME[code] + F(1, 2))


def at(text, code):
    """The real frame of a label at `code` (make-edl-dialects' counting)."""
    frame = dialects.frame_of(text, *RATES[code])
    assert frame is not None, (text, code)
    return frame


def timecode(frame, code, smpte=False, separators=None):
    """A frame count as the report writes it: '.' before the frames, or ':'/';' with smpte."""
    nominal, drop = RATES[code]
    if separators is None:
        separators = "::" + ((";" if drop else ":") if smpte else ".")
    return dialects.written(frame, nominal, drop, separators)


def label(frame, code):
    """A label as the files write it: ':' throughout, ';' before the frames at drop frame."""
    return timecode(frame, code, separators="::;" if RATES[code][1] else ":::")


def code_of_duration(duration, drop=False):
    code = next(c for c, d in FRAME.items() if d == duration and not RATES[c][1])
    return DROP_OF.get(code, code) if drop else code


def code_of_rate(rate):
    """An OTIO rate (a float) to a code."""
    for code, duration in FRAME.items():
        if not RATES[code][1] and abs(1 / duration - F(rate)) < F(1, 1000):
            return code
    raise ValueError(rate)


def check_counting():
    dialects.check_counting()
    for code in RATES:
        nominal, drop = RATES[code]
        for frame in (0, 1799, 1800, 17982, 107892, 86400, 90000, 863999):
            assert edl_golden.label(frame, nominal, drop) == dialects.label(frame, nominal, drop)
            assert at(label(frame, code), code) == frame
    assert label(107892, "29d") == "01:00:00;00" and at("01:00:00;00", "29d") == 107892
    assert timecode(1800, "29d") == "00:01:00.02" and timecode(1800, "29d", True) == "00:01:00;02"
    assert nearest(F(86486400, 24000), "23n") == 86400 and nearest(3600, "29d") == 107892
    assert nearest(F(107999892, 30000), "29d") == 107892
    assert nearest(F(1, 50), "25") == 1 and nearest(F(49, 2500), "25") == 0  # half a frame rounds up
    assert code_of_rate(24000 / 1001) == "23n" and code_of_rate(48.0) == "48"


# --- The report ----------------------------------------------------------------------------

class Event:
    def __init__(self, number, reel, track, rin, rout, transition=0, source=None, clip=None):
        assert rout >= rin, (reel, rin, rout)
        self.number, self.reel, self.track, self.rin, self.rout = number, reel, track, rin, rout
        self.transition, self.source, self.clip = transition, source, clip


class Expected:
    """The events a reader must find, in its reading order, and the report they give."""

    def __init__(self, code, reason=STATED):
        self.code, self.reason, self.events = code, reason, []

    def add(self, reel, track, rin, rout, transition=0, source=None, clip=None, number=None):
        event = Event(number or "%03d" % (len(self.events) + 1), reel, track, rin, rout,
                      transition, source, clip)
        self.events.append(event)
        return event

    def rows(self, smpte=False, reason=None):
        edl = dialects.Edl(*RATES[self.code])
        edl.kept = [(e.number, e.reel, e.track, e.rin, e.rout) for e in self.events]
        return edl.report(self.code, reason or self.reason, smpte)

    def tracks(self):
        tracks = {}
        for event in self.events:
            tracks.setdefault(event.track, []).append(event)
        return {name: sorted(events, key=lambda e: e.rin) for name, events in tracks.items()}

    def total(self):
        return max(e.rout for e in self.events) - min(e.rin for e in self.events)

    def json(self, reason=None):
        """The lines --json prints: the key order of TimelineReport.cpp's printJson."""
        tc = lambda frames: timecode(frames, self.code)
        objects = []
        for e in self.events:
            source_code, source_in, source_out = e.source or (None, None, None)
            objects.append({
                "event": e.number, "reel": e.reel, "track": e.track, "recordIn": tc(e.rin),
                "recordOut": tc(e.rout), "duration": tc(e.rout - e.rin),
                "durationFrames": e.rout - e.rin,
                "transition": "D %03d" % e.transition if e.transition else "C",
                "sourceIn": None if source_in is None else timecode(source_in, source_code),
                "sourceOut": None if source_out is None else timecode(source_out, source_code),
                "clipName": e.clip or None})
        for name, events in self.tracks().items():
            seams = []
            for before, after in zip(events, events[1:]):
                if after.rin != before.rout:
                    kind = "gap" if after.rin > before.rout else "overlap"
                    seams.append({kind: abs(after.rin - before.rout), "after": before.number,
                                  "before": after.number})
            durations = sum(e.rout - e.rin for e in events)
            objects.append({"track": name, "events": len(events), "duration": tc(durations),
                            "durationFrames": durations, "recordIn": tc(events[0].rin),
                            "recordOut": tc(max(e.rout for e in events)), "seams": seams})
        objects.append({"events": len(self.events), "totalFrames": self.total(),
                        "total": tc(self.total()), "rate": self.code,
                        "rateReason": reason or self.reason})
        return "".join(json.dumps(o, ensure_ascii=False, separators=(",", ":")) + "\n"
                       for o in objects)

    def placed(self):
        return [(e.track, e.reel, e.rin, e.rout) for e in self.events]


def differs(given):
    return STATED + "; the rate given %s differs" % given


# --- Writing XML as the tools do -------------------------------------------------------------

def esc(text):
    return (str(text).replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")
            .replace('"', "&quot;"))


class Xml:
    def __init__(self, head, indent="    "):
        self.lines, self.depth, self.indent = list(head), 0, indent

    def _attrs(self, attrs):
        return "".join(' %s="%s"' % (k, esc(v)) for k, v in (attrs or {}).items() if v is not None)

    def open(self, tag, attrs=None):
        self.lines.append(self.indent * self.depth + "<%s%s>" % (tag, self._attrs(attrs)))
        self.depth += 1

    def close(self, tag):
        self.depth -= 1
        opening = self.indent * self.depth + "<%s" % tag
        if self.lines[-1].startswith(opening) and self.lines[-1].endswith(">") and not \
                self.lines[-1].endswith("/>") and "</" not in self.lines[-1]:
            self.lines[-1] = self.lines[-1][:-1] + "/>"  # nothing inside: written as one tag
        else:
            self.lines.append(self.indent * self.depth + "</%s>" % tag)

    def empty(self, tag, attrs=None):
        self.lines.append(self.indent * self.depth + "<%s%s/>" % (tag, self._attrs(attrs)))

    def leaf(self, tag, text, attrs=None):
        self.lines.append(self.indent * self.depth + "<%s%s>%s</%s>" % (
            tag, self._attrs(attrs), esc(text), tag))

    def data(self, ending="\n"):
        return (ending.join(self.lines) + ending).encode("utf-8")


def uid(text):
    return hashlib.md5(text.encode("utf-8")).hexdigest().upper()


def rt(seconds, denominator=None):
    """A time as FCPXML writes it: '3600s', '1001/24000s'."""
    seconds = F(seconds)
    if seconds.denominator == 1:
        return "%ds" % seconds.numerator
    if denominator and (seconds * denominator).denominator == 1:
        return "%d/%ds" % (seconds * denominator, denominator)
    return "%d/%ds" % (seconds.numerator, seconds.denominator)


def version_tuple(version):
    return tuple(int(part) for part in version.split("."))


FCP_HEAD = ['<?xml version="1.0" encoding="UTF-8"?>', "<!DOCTYPE fcpxml>", ""]
DISSOLVE_UID = "FxPlug:4731E73A-8DAC-4113-9A30-AE85B1761265"
TITLE_UID = (".../Titles.localized/Lower Thirds.localized/Basic Lower Third.localized/"
             "Basic Lower Third.moti")
CUSTOM_UID = ".../Generators.localized/Solids.localized/Custom.localized/Custom.motn"


class Fcpxml:
    """An FCPXML document written top down; `den` is the denominator times are written over."""

    def __init__(self, version, den):
        self.x = Xml(FCP_HEAD)
        self.version, self.den = version, den
        self.x.open("fcpxml", {"version": version})

    def t(self, seconds):
        return rt(seconds, self.den)

    def format(self, id, name, duration, width=1920, height=1080):
        self.x.empty("format", {"id": id, "name": name, "frameDuration": rt(duration),
                                "width": width, "height": height,
                                "colorSpace": "1-1-1 (Rec. 709)"})

    def effect(self, id, name, effect_uid):
        self.x.empty("effect", {"id": id, "name": name, "uid": effect_uid})

    def asset(self, id, name, start, duration, path, fmt=None, audio=True, camera=None,
              den=None):
        """A media file: `fmt` None for a sound file; `den` its own timebase where it differs."""
        attrs = {"id": id, "name": name, "uid": uid(name)}
        if version_tuple(self.version) < (1, 9):
            attrs["src"] = path  # media-rep arrived with 1.9
        attrs.update({"start": rt(start, den or self.den), "duration": rt(duration, den or self.den)})
        if fmt:
            attrs.update({"hasVideo": "1", "format": fmt})
        if audio:
            attrs.update({"hasAudio": "1"})
        if fmt:
            attrs["videoSources"] = "1"
        if audio:
            attrs.update({"audioSources": "1", "audioChannels": "2", "audioRate": "48000"})
        self.x.open("asset", attrs)
        if version_tuple(self.version) >= (1, 9):
            self.x.open("media-rep", {"kind": "original-media", "sig": uid(name), "src": path})
            self.x.leaf("bookmark", "Ym9va" + uid(path + "bookmark")[:40] + "AAAAAAQQAAA=")
            self.x.close("media-rep")
        self.x.open("metadata")
        if camera:
            self.x.empty("md", {"key": "com.apple.proapps.mio.cameraName", "value": camera})
        self.x.empty("md", {"key": "com.apple.proapps.studio.metadataDeliveredByPlugIn",
                            "value": "0"})
        self.x.close("metadata")
        self.x.close("asset")

    def transition(self, offset, duration):
        self.x.open("transition", {"name": "Cross Dissolve", "offset": self.t(offset),
                                   "duration": self.t(duration)})
        self.x.open("filter-video", {"ref": "r2", "name": "Cross Dissolve"})
        self.x.empty("param", {"name": "Look", "key": "1", "value": "11 (Video)"})
        self.x.empty("param", {"name": "Amount", "key": "2", "value": "50"})
        self.x.empty("param", {"name": "Ease", "key": "50", "value": "2 (In & Out)"})
        self.x.empty("param", {"name": "Ease Amount", "key": "51", "value": "0"})
        self.x.close("filter-video")
        self.x.empty("filter-audio", {"ref": "r3", "name": "Audio Crossfade"})
        self.x.close("transition")

    def smart_collections(self):
        for name, match, rules in (
                ("Projects", "all", [("match-clip", {"rule": "is", "type": "project"})]),
                ("All Video", "any", [("match-media", {"rule": "is", "type": "videoOnly"}),
                                      ("match-media", {"rule": "is", "type": "videoWithAudio"})]),
                ("Audio Only", "all", [("match-media", {"rule": "is", "type": "audioOnly"})]),
                ("Favorites", "all", [("match-ratings", {"value": "favorites"})])):
            self.x.open("smart-collection", {"name": name, "match": match})
            for tag, attrs in rules:
                self.x.empty(tag, attrs)
            self.x.close("smart-collection")

    def data(self):
        self.x.close("fcpxml")
        return self.x.data()


# --- Reading the files back (self-checks of the writing) -------------------------------------

CLIP_TAGS = ("asset-clip", "clip", "ref-clip", "mc-clip", "sync-clip", "video", "title", "audio")


def parse_time(text):
    assert text.endswith("s"), text
    number = text[:-1]
    if "/" in number:
        a, b = number.split("/")
        return F(int(a), int(b))
    return F(number)


def check_fcpxml(data):
    """Reads an FCPXML file by the rules the fixtures are written for: (code, events) with
    events as (track, reel, in, out, transition)."""
    root = ET.fromstring(data)
    assert version_tuple("1.8") <= version_tuple(root.get("version")) <= version_tuple("1.13")
    resources = root.find("resources")
    formats = {e.get("id"): e for e in resources.iter("format")}
    names = {e.get("id"): e.get("name") for e in resources if e.tag in ("asset", "media")}
    project = next(root.iter("project"), None)
    out = []

    def reel_of(element):
        if element.tag in ("asset-clip", "ref-clip", "mc-clip") and element.get("ref") in names:
            return names[element.get("ref")]
        return element.get("name")

    if project is None:  # a clip list
        clips = [e for event in root.iter("event") for e in event if e.tag in CLIP_TAGS]
        code = code_of_duration(parse_time(formats[clips[0].get("format")].get("frameDuration")),
                                clips[0].get("tcFormat") == "DF")
        position = 0
        for clip in clips:
            length = nearest(parse_time(clip.get("duration")), code)
            out.append(("clips", reel_of(clip), position, position + length, 0))
            position += length
        return code, out
    sequence = project.find("sequence")
    code = code_of_duration(parse_time(formats[sequence.get("format")].get("frameDuration")),
                            sequence.get("tcFormat") == "DF")
    after_transition = {}

    def lane_track(lane):
        return "V%d" % (lane + 1) if lane > 0 else "A%d" % -lane

    def item(element, place, track):
        if element.tag in CLIP_TAGS:
            end = place + parse_time(element.get("duration"))
            out.append((track, reel_of(element), nearest(place, code), nearest(end, code),
                        after_transition.pop(track, 0)))
        anchored(element, place)

    def anchored(parent, place):
        start = parse_time(parent.get("start", "0s"))
        for child in parent:
            if child.get("lane") is None:
                continue
            track = lane_track(int(child.get("lane")))
            child_place = place + parse_time(child.get("offset", "0s")) - start
            if child.tag == "spine":
                storyline(child, child_place, track)
            else:
                item(child, child_place, track)

    def storyline(spine, place, track):
        start = parse_time(spine.get("start", "0s"))
        for child in spine:
            child_place = place + parse_time(child.get("offset", "0s")) - start
            if child.tag == "transition":
                after_transition[track] = nearest(parse_time(child.get("duration")), code)
            elif child.tag == "gap":
                anchored(child, child_place)
            else:
                item(child, child_place, track)

    storyline(sequence.find("spine"), F(0), "V1")
    return code, out


def check_xmeml(data):
    root = ET.fromstring(data)
    sequence = next(root.iter("sequence"))
    rate = sequence.find("rate")
    base, ntsc = int(rate.find("timebase").text), rate.find("ntsc").text == "TRUE"
    code = {(24, False): "24", (24, True): "23n", (25, False): "25", (30, False): "30",
            (30, True): "29n", (60, True): "59n"}[(base, ntsc)]
    tc = sequence.find("timecode")
    start = 0
    if tc is not None:
        start = int(tc.find("frame").text)
        if tc.find("displayformat").text == "DF":
            code = DROP_OF.get(code, code)
    number = lambda text: math.floor(F(text) + F(1, 2))
    media = sequence.find("media")
    tracks = [("V%d" % (i + 1), t) for i, t in enumerate(media.find("video").findall("track"))]
    audio = [t for t in media.find("audio").findall("track")
             if int(t.get("currentExplodedTrackIndex", "0")) == 0]
    tracks += [("A%d" % (i + 1), t) for i, t in enumerate(audio)]
    out = []

    def cut(transition):
        a, b = number(transition.find("start").text), number(transition.find("end").text)
        alignment = transition.findtext("alignment", "center")
        return a if alignment == "start" else b if alignment == "end" else (a + b) // 2

    for name, track in tracks:
        items = [e for e in track if e.tag in ("clipitem", "generatoritem", "transitionitem")]
        for i, element in enumerate(items):
            if element.tag == "transitionitem":
                continue
            a, b = number(element.find("start").text), number(element.find("end").text)
            before = items[i - 1] if i and items[i - 1].tag == "transitionitem" else None
            if a == -1:
                a = cut(before)
            if b == -1:
                b = cut(items[i + 1])
            file = element.find("file")
            reel = None
            if file is not None:
                reel = file.findtext("timecode/reel/name") or file.findtext("name")
            if reel is None and element.find("sequence") is not None:
                reel = element.find("sequence").findtext("name")
            reel = reel or element.findtext("name")
            length = 0
            if before is not None:
                length = number(before.find("end").text) - number(before.find("start").text)
            out.append((name, reel, start + a, start + b, length))
    return code, out


def otio_loads(data):
    text = re.sub(r"(:\s*)(-?)Inf\b(?!inity)", r"\1\2Infinity", data.decode("utf-8"))
    return json.loads(text)


def check_otio(data):
    root = otio_loads(data)
    if root["OTIO_SCHEMA"] == "SerializableCollection.1":
        root = next(c for c in root["children"] if c["OTIO_SCHEMA"] == "Timeline.1")
    assert root["OTIO_SCHEMA"] == "Timeline.1"

    def clips(item):
        if item["OTIO_SCHEMA"].startswith("Clip."):
            yield item
        for child in item.get("children", []):
            yield from clips(child)

    start = root.get("global_start_time")
    rate = start["rate"] if start else next(clips(root["tracks"]))["source_range"]["duration"]["rate"]
    code = code_of_rate(rate)
    frames = lambda t: math.floor(F(t["value"]) * F(rate) / F(t["rate"]) + F(1, 2))
    origin = frames(start) if start else 0

    def length(item):
        if item.get("source_range"):
            return frames(item["source_range"]["duration"])
        return max(sum(length(i) for i in track["children"] if i["OTIO_SCHEMA"] != "Transition.1")
                   for track in item["children"])

    def reel(item):
        if item["OTIO_SCHEMA"] == "Clip.2":
            reference = item["media_references"][item["active_media_reference_key"]]
        else:
            reference = item.get("media_reference") or {}
        if reference.get("name"):
            return reference["name"]
        if reference.get("target_url"):
            return reference["target_url"].rsplit("/", 1)[-1].rsplit(".", 1)[0]
        return item["name"]

    out, counts = [], {}
    for track in root["tracks"]["children"]:
        letter = "V" if track["kind"] == "Video" else "A"
        counts[letter] = counts.get(letter, 0) + 1
        name = "%s%d" % (letter, counts[letter])
        position, transition = 0, 0
        for item in track["children"]:
            schema = item["OTIO_SCHEMA"]
            if schema == "Transition.1":
                transition = frames(item["in_offset"]) + frames(item["out_offset"])
                continue
            size = length(item)
            if schema.startswith("Clip.") or schema == "Stack.1":
                out.append((name, reel(item), origin + position, origin + position + size,
                            transition))
            position += size
            transition = 0
    return code, out


ALE_FPS = {"23.976": "23n", "23.98": "23n", "24": "24", "25": "25", "29.97": "29n", "30": "30",
           "47.95": "47n", "47.952": "47n", "48": "48", "50": "50", "59.94": "59n", "60": "60"}


def check_ale(data):
    lines = data.decode("utf-8").replace("\r\n", "\n").split("\n")
    section, heading, columns, rows = None, {}, None, []
    for line in lines:
        if line.strip() in ("Heading", "Column", "Data"):
            section = line.strip()
            continue
        if not line.strip():
            continue
        fields = line.split("\t")
        if section == "Heading":
            fields = [f for f in fields if f != ""]
            heading.update(zip(fields[::2], fields[1::2]))
        elif section == "Column":
            columns = [f for f in fields if f != ""]
        elif section == "Data":
            rows.append(dict(zip(columns, fields)))
    if "FPS" not in heading:
        return None, []
    code = ALE_FPS[heading["FPS"]]
    if any(";" in row.get("Start", "") for row in rows):
        code = DROP_OF.get(code, code)
    out, position = [], 0
    for row in rows:
        if row.get("Duration"):
            length = at(row["Duration"], code)
        else:
            length = at(row["End"], code) - at(row["Start"], code)
        out.append(("clips", row.get("Tape") or row["Name"], position, position + length, 0))
        position += length
    return code, out


def same(read, expected, name):
    code, events = read
    assert code == expected.code, (name, code, expected.code)
    want = [(e.track, e.reel, e.rin, e.rout, e.transition) for e in expected.events]
    if events != want:
        for got, wanted in zip(events + [None] * len(want), want + [None] * len(events)):
            if got != wanted:
                print(name, "read back", got, "written as", wanted, file=sys.stderr)
        raise AssertionError(name)


# --- The one cut -----------------------------------------------------------------------------

class Shot:
    def __init__(self, track, reel, clip, rin, length, source, media_start, transition=0):
        self.track, self.reel, self.clip = track, reel, clip
        self.rin, self.rout, self.length = rin, rin + length, length
        self.source, self.media_start, self.transition = source, media_start, transition
        self.media_length = source + length - media_start + 480

    @property
    def path(self):
        folder = {"V1": "CAMERA", "V2": "GFX", "A1": "SFX", "A2": "MUSIC"}[self.track]
        extension = {"V1": "mov", "V2": "mov", "A1": "wav", "A2": "wav"}[self.track]
        return "/Volumes/RAID/R2_FEATURE/%s/%s.%s" % (folder, self.reel, extension)


CUT_CODE = "23n"
CUT_TRACKS = ("V1", "V2", "A1", "A2")


def abstract_cut():
    """The reel every format writes: a list of shots with their places at 23.976."""
    start = at("01:00:00:00", CUT_CODE)
    takes = ["Zoë – interview wide", "SC12 TK3", "SC12 TK5", "harbour GV dawn", "SC14 TK1",
             "SC14 TK2 pickup", "SC15 TK4", "market handheld", "SC16 TK2", "SC16 TK6",
             "Zoë – interview close", "harbour GV dusk"]
    v1, record = [], start
    for i, length in enumerate(lengths(12, 40, 150, 37)):
        if i == 6:
            record += 12  # a hole left in the cut
        transition = {4: 24, 9: 16}.get(i, 0)
        reel = "A%03dC%03d_2304%02d_R2KT" % (i % 4 + 1, 3 + 2 * i, 15 + i % 3)
        source = at("14:22:31:12", CUT_CODE) + 2111 * i + 7 * i * i
        v1.append(Shot("V1", reel, takes[i], record, length, source, source - 300 - 11 * i,
                       transition))
        record += length
    hole = v1[5].rout
    assert v1[6].rin == hole + 12
    v2 = [Shot("V2", "GFX_LOWER3_ZOE_v2", "Lower third – Zoë Adjei", v1[0].rin + 10, 60, 0, 0),
          Shot("V2", "GFX_MAP_ACCRA_v5", "map Accra", hole + 4, v1[6].rin + 30 - hole - 4,
               at("00:00:10:00", CUT_CODE), at("00:00:00:00", CUT_CODE)),
          Shot("V2", "GFX_CAPTION_1957", "caption 1957", v1[10].rin, v1[10].length - 6, 0, 0)]
    a2_start = v1[3].rout - 30
    a1 = [Shot("A1", "SFX_GULLS_01", "gulls", v1[0].rin + 20, 50, 4800, 0),
          Shot("A1", "SFX_DOOR_SLAM_03", "door slam", a2_start, v1[4].rin + 40 - a2_start, 960, 0),
          Shot("A1", "SFX_CROWD_WALLA", "walla", v1[4].rin + 50, 40, 12000, 0),
          Shot("A1", "SFX_TRUCK_PASS", "truck pass", v1[7].rin + 12, 90, 30000, 0),
          Shot("A1", "SFX_BELL_02", "bell", v1[11].rin + 3, 30, 2400, 0)]
    music_out = v1[-1].rout + 60  # the music rings out past the last picture frame
    a2 = [Shot("A2", "MX_1M1_HIGHLIFE_v3", "1M1 Highlife", start + 48, v1[5].rout - start - 48,
               at("00:00:02:00", CUT_CODE), 0),
          Shot("A2", "MX_1M2_HARBOUR_v2", "1M2 Harbour", v1[8].rin, music_out - v1[8].rin,
               at("00:00:00:12", CUT_CODE), 0)]
    return start, v1 + v2 + a1 + a2


def cut_expected(order, tracks=None):
    """The report of the cut for a reading order: `order` the shots as the reader meets them."""
    expected = Expected(CUT_CODE)
    for shot in order:
        expected.add(shot.reel, (tracks or {}).get(shot.track, shot.track), shot.rin, shot.rout,
                     shot.transition, (CUT_CODE, shot.source, shot.source + shot.length),
                     shot.clip)
    return expected


def cut_edl():
    _, shots = abstract_cut()
    edl = dialects.Edl(24, 0)
    edl.note("TITLE: R2_LOCK_v12")
    edl.fcm("FCM: NON-DROP FRAME")
    edl.note("")
    names = {"V1": "V", "V2": "V2", "A1": "A", "A2": "A2"}
    order = sorted(shots, key=lambda s: (s.rin, CUT_TRACKS.index(s.track)))
    previous = {}
    for i, shot in enumerate(order):
        number = "%03d" % (i + 1)
        if shot.transition:
            before = previous[shot.track]
            edl.dissolve(number, names[shot.track], shot.rin, shot.length, before.reel,
                         before.source + before.length, shot.reel, shot.source, shot.transition)
            edl.note("* EFFECT NAME: CROSS DISSOLVE")
            edl.note("* FROM CLIP NAME:  %s" % before.clip)
            edl.note("* TO CLIP NAME:  %s" % shot.clip)
        else:
            edl.cut(number, shot.reel, names[shot.track], shot.rin, shot.length, shot.source)
            edl.note("* FROM CLIP NAME:  %s" % shot.clip)
        previous[shot.track] = shot
    code, reason = edl.rate("23n")
    assert (code, reason) == ("23n", "the rate given")
    expected = Expected(code, reason)
    for number, reel, track, a, b in edl.kept:
        expected.add(reel, track, a, b, number=number)
    return edl.data("utf-8", "\r\n"), expected


def cut_fcpxml():
    start, shots = abstract_cut()
    frame = FRAME[CUT_CODE]
    doc = Fcpxml("1.10", 24000)
    x = doc.x
    v1 = [s for s in shots if s.track == "V1"]
    others = sorted((s for s in shots if s.track != "V1"),
                    key=lambda s: (s.rin, CUT_TRACKS.index(s.track)))
    x.open("resources")
    doc.format("r1", "FFVideoFormat1080p2398", frame)
    doc.effect("r2", "Cross Dissolve", DISSOLVE_UID)
    doc.effect("r3", "Audio Crossfade", "FFAudioTransition")
    refs = {}
    for shot in v1 + sorted(others, key=lambda s: CUT_TRACKS.index(s.track)):
        refs[shot.reel] = "r%d" % (len(refs) + 4)
        video = shot.track.startswith("V")
        doc.asset(refs[shot.reel], shot.reel, shot.media_start * frame,
                  shot.media_length * frame, "file://" + shot.path, "r1" if video else None,
                  audio=shot.track != "V2", camera="A CAM" if shot.track == "V1" else None)
    x.close("resources")

    # The spine: the V1 shots, gaps where V1 has none (the hole, the music's tail), dissolves.
    spine, place = [], start
    end = max(s.rout for s in shots)
    for shot in v1:
        if shot.rin > place:
            spine.append(("gap", place, shot.rin, None))
        spine.append(("clip", shot.rin, shot.rout, shot))
        place = shot.rout
    if end > place:
        spine.append(("gap", place, end, None))
    children = {i: [] for i in range(len(spine))}
    for shot in others:
        i = next(i for i, (_, a, b, _) in enumerate(spine) if a <= shot.rin < b)
        children[i].append(shot)
    lanes = {"V2": 1, "A1": -1, "A2": -2}

    x.open("library", {"location": "file:///Users/editor/Movies/R2_FEATURE.fcpbundle/"})
    x.open("event", {"name": "Reel 2", "uid": uid("Reel 2 event")})
    x.open("project", {"name": "R2_LOCK_v12", "uid": uid("R2_LOCK_v12"),
                       "modDate": "2023-05-10 14:02:11 +0200"})
    x.open("sequence", {"format": "r1", "duration": doc.t((end - start) * frame),
                        "tcStart": doc.t(start * frame), "tcFormat": "NDF",
                        "audioLayout": "stereo", "audioRate": "48k"})
    x.open("spine")
    order = []
    for i, (kind, a, b, shot) in enumerate(spine):
        parent_start = 3600 if kind == "gap" else shot.source * frame
        if kind == "gap":
            x.open("gap", {"name": "Gap", "offset": doc.t(a * frame), "start": "3600s",
                           "duration": doc.t((b - a) * frame)})
        else:
            if shot.transition:
                doc.transition((shot.rin * 2 - shot.transition) * frame / 2,
                               shot.transition * frame)
            x.open("asset-clip", {"ref": refs[shot.reel], "offset": doc.t(a * frame),
                                  "name": shot.clip, "start": doc.t(shot.source * frame),
                                  "duration": doc.t(shot.length * frame), "format": "r1",
                                  "tcFormat": "NDF", "audioRole": "dialogue"})
            order.append(shot)
        for child in children[i]:
            attrs = {"ref": refs[child.reel], "lane": str(lanes[child.track]),
                     "offset": doc.t(parent_start + (child.rin - a) * frame), "name": child.clip,
                     "start": doc.t(child.source * frame),
                     "duration": doc.t(child.length * frame)}
            if child.track == "V2":
                attrs.update({"format": "r1", "tcFormat": "NDF"})
            else:
                attrs["audioRole"] = "effects" if child.track == "A1" else "music"
            x.empty("asset-clip", attrs)
            order.append(child)
        if kind == "clip" and shot.clip == "SC14 TK1":
            x.empty("marker", {"start": doc.t((shot.source + 20) * frame), "duration": doc.t(frame),
                               "value": "VFX 012 – remove rig"})
        x.close(kind if kind == "gap" else "asset-clip")
    x.close("spine")
    x.close("sequence")
    x.close("project")
    x.close("event")
    doc.smart_collections()
    x.close("library")
    data = doc.data()
    expected = cut_expected(order)
    for event in expected.events:
        if event.track != "V1":
            event.transition = 0
    same(check_fcpxml(data), expected, "cut-fcpxml")
    return data, expected


PPRO_TICKS = 254016000000  # Premiere's ticks a second


def xmeml_rate(x, timebase, ntsc, fcp7=False):
    x.open("rate")
    if fcp7:
        x.leaf("ntsc", "TRUE" if ntsc else "FALSE")
        x.leaf("timebase", timebase)
    else:
        x.leaf("timebase", timebase)
        x.leaf("ntsc", "TRUE" if ntsc else "FALSE")
    x.close("rate")


def xmeml_video_format(x, timebase, ntsc, fcp7=False):
    x.open("format")
    x.open("samplecharacteristics")
    xmeml_rate(x, timebase, ntsc, fcp7)
    x.open("codec")
    x.leaf("name", "Apple ProRes 422 HQ")
    x.close("codec")
    x.leaf("width", "1920")
    x.leaf("height", "1080")
    x.leaf("anamorphic", "FALSE")
    x.leaf("pixelaspectratio", "square")
    x.leaf("fielddominance", "none")
    x.leaf("colordepth", "24")
    x.close("samplecharacteristics")
    x.close("format")


def xmeml_file(x, id, name, path, timebase, ntsc, duration, tc_frame=None, tc_code=None,
               reel=None, audio_only=False, fcp7=False):
    x.open("file", {"id": id})
    x.leaf("name", name)
    x.leaf("pathurl", "file://localhost" + path)
    xmeml_rate(x, timebase, ntsc, fcp7)
    x.leaf("duration", duration)
    if tc_frame is not None:
        x.open("timecode")
        xmeml_rate(x, timebase, ntsc, fcp7)
        x.leaf("string", label(tc_frame, tc_code))
        x.leaf("frame", tc_frame)
        x.leaf("displayformat", "DF" if RATES[tc_code][1] else "NDF")
        if reel:
            x.open("reel")
            x.leaf("name", reel)
            x.close("reel")
        x.close("timecode")
    x.open("media")
    if not audio_only:
        x.open("video")
        x.open("samplecharacteristics")
        xmeml_rate(x, timebase, ntsc, fcp7)
        x.leaf("width", "3840" if not fcp7 else "1920")
        x.leaf("height", "2160" if not fcp7 else "1080")
        x.leaf("anamorphic", "FALSE")
        x.leaf("pixelaspectratio", "square")
        x.leaf("fielddominance", "none")
        x.close("samplecharacteristics")
        x.close("video")
    x.open("audio")
    x.open("samplecharacteristics")
    x.leaf("depth", "24")
    x.leaf("samplerate", "48000")
    x.close("samplecharacteristics")
    x.leaf("channelcount", "2")
    x.close("audio")
    x.close("media")
    x.close("file")


def dissolve_item(x, start, end, alignment, timebase, ntsc, fcp7=False, audio=False):
    x.open("transitionitem")
    if fcp7:
        xmeml_rate(x, timebase, ntsc, fcp7)
    x.leaf("start", start)
    x.leaf("end", end)
    x.leaf("alignment", alignment)
    if not fcp7:
        x.leaf("cutPointTicks", (end - start) // 2 * 10594584000)
        xmeml_rate(x, timebase, ntsc, fcp7)
    x.open("effect")
    name = "Cross Fade (+3dB)" if audio else "Cross Dissolve"
    x.leaf("name", name)
    x.leaf("effectid", "KGAudioTransCrossFade3dB" if audio else "Cross Dissolve")
    x.leaf("effectcategory", "Dissolve")
    x.leaf("effecttype", "transition")
    x.leaf("mediatype", "audio" if audio else "video")
    if not audio:
        x.leaf("wipecode", "0")
        x.leaf("wipeaccuracy", "100")
        x.leaf("startratio", "0")
        x.leaf("endratio", "1")
        x.leaf("reverse", "FALSE")
    x.close("effect")
    x.close("transitionitem")


PPRO_VIDEO_TRACK = {"TL.SQTrackShy": "0", "TL.SQTrackExpandedHeight": "25",
                    "TL.SQTrackExpanded": "0", "MZ.TrackTargeted": "1"}


def ppro_audio_track(index, stereo):
    attrs = {"TL.SQTrackAudioKeyframeStyle": "0", "TL.SQTrackShy": "0",
             "TL.SQTrackExpandedHeight": "25", "TL.SQTrackExpanded": "0",
             "MZ.TrackTargeted": "1", "PannerCurrentValue": "0.5", "PannerIsInverted": "true",
             "PannerStartKeyframe": "-91445760000000000,0.5,0,0,0,0,0,0",
             "PannerName": "Balance"}
    if stereo:
        attrs.update({"currentExplodedTrackIndex": str(index), "totalExplodedTrackCount": "2",
                      "premiereTrackType": "Stereo"})
    else:
        attrs.update({"currentExplodedTrackIndex": "0", "totalExplodedTrackCount": "1",
                      "premiereTrackType": "Mono"})
    return attrs


def ppro_clipitem(x, id, name, duration, timebase, ntsc, start, end, source_in, source_out,
                  ticks, audio=False, channel=1, master=None):
    x.open("clipitem", {"id": id, "premiereChannelType": "stereo" if audio else None})
    x.leaf("masterclipid", master or "masterclip-" + id.split("-")[1])
    x.leaf("name", name)
    x.leaf("enabled", "TRUE")
    x.leaf("duration", duration)
    xmeml_rate(x, timebase, ntsc)
    x.leaf("start", start)
    x.leaf("end", end)
    x.leaf("in", source_in)
    x.leaf("out", source_out)
    x.leaf("pproTicksIn", int(source_in * ticks))
    x.leaf("pproTicksOut", int(source_out * ticks))
    if not audio:
        x.leaf("alphatype", "none")
        x.leaf("pixelaspectratio", "square")
        x.leaf("anamorphic", "FALSE")


def ppro_clipitem_end(x, audio=False, channel=1, label="Iris"):
    if audio:
        x.open("sourcetrack")
        x.leaf("mediatype", "audio")
        x.leaf("trackindex", channel)
        x.close("sourcetrack")
    x.open("logginginfo")
    for tag in ("description", "scene", "shottake", "lognote", "good", "originalvideofilename",
                "originalaudiofilename"):
        x.lines.append(x.indent * x.depth + "<%s></%s>" % (tag, tag))
    x.close("logginginfo")
    x.open("colorinfo")
    x.leaf("lut", "")
    x.leaf("lut1", "")
    x.leaf("asc_sop", "")
    x.leaf("asc_sat", "")
    x.leaf("lut2", "")
    x.close("colorinfo")
    x.open("labels")
    x.leaf("label2", label)
    x.close("labels")
    x.close("clipitem")


def ppro_sequence_tail(x, timebase, ntsc, start, code):
    x.open("timecode")
    xmeml_rate(x, timebase, ntsc)
    x.leaf("string", label(start, code))
    x.leaf("frame", start)
    x.leaf("displayformat", "DF" if RATES[code][1] else "NDF")
    x.close("timecode")
    x.open("labels")
    x.leaf("label2", "Forest")
    x.close("labels")
    x.open("logginginfo")
    for tag in ("description", "scene", "shottake", "lognote", "good", "originalvideofilename",
                "originalaudiofilename"):
        x.lines.append(x.indent * x.depth + "<%s></%s>" % (tag, tag))
    x.close("logginginfo")


def ppro_audio_head(x):
    x.leaf("numOutputChannels", "2")
    x.open("format")
    x.open("samplecharacteristics")
    x.leaf("depth", "16")
    x.leaf("samplerate", "48000")
    x.close("samplecharacteristics")
    x.close("format")
    x.open("outputs")
    for index in (1, 2):
        x.open("group")
        x.leaf("index", index)
        x.leaf("numchannels", "1")
        x.leaf("downmix", "0")
        x.open("channel")
        x.leaf("index", index)
        x.close("channel")
        x.close("group")
    x.close("outputs")


def cut_xmeml():
    start, shots = abstract_cut()
    x = Xml(['<?xml version="1.0" encoding="UTF-8"?>', "<!DOCTYPE xmeml>"], "\t")
    x.open("xmeml", {"version": "4"})
    end = max(s.rout for s in shots)
    x.open("sequence", {"id": "sequence-1", "TL.SQAudioVisibleBase": "0",
                        "TL.SQVideoVisibleBase": "0", "TL.SQVisibleBaseTime": "0",
                        "TL.SQAVDividerPosition": "0.5", "TL.SQHideShyTracks": "0",
                        "TL.SQHeaderWidth": "236", "Monitor.ProgramZoomOut": "1235536128000000",
                        "Monitor.ProgramZoomIn": "0", "TL.SQTimePerPixel": "0.2",
                        "MZ.EditLine": "0", "MZ.Sequence.PreviewFrameSizeHeight": "1080",
                        "MZ.Sequence.PreviewFrameSizeWidth": "1920",
                        "MZ.Sequence.AudioTimeDisplayFormat": "200",
                        "MZ.Sequence.PreviewRenderingClassID": "1297106761",
                        "MZ.Sequence.PreviewRenderingPresetCodec": "1297107278",
                        "MZ.Sequence.PreviewRenderingPresetPath":
                            "EncoderPresets\\SequencePreview\\795454d9-d3c2-429d-9474-923ab13b7018\\QuickTime.epr",
                        "MZ.Sequence.PreviewUseMaxRenderQuality": "false",
                        "MZ.Sequence.PreviewUseMaxBitDepth": "false",
                        "MZ.Sequence.EditingModeGUID": "795454d9-d3c2-429d-9474-923ab13b7018",
                        "MZ.Sequence.VideoTimeDisplayFormat": "110", "MZ.WorkOutPoint": "0",
                        "MZ.WorkInPoint": "0", "explodedTracks": "true"})
    x.leaf("uuid", "a3c4b1d2-5e6f-4a7b-8c9d-0e1f2a3b4c5d")
    # The duration Premiere cached before the last trim: not the cut's.
    x.leaf("duration", end - start + 240)
    xmeml_rate(x, 24, True)
    x.leaf("name", "R2_LOCK_v12")
    x.open("media")
    ticks = PPRO_TICKS * 1001 // 24000
    order, files, clip_id = [], {}, [0]

    def track(shots, audio, channel=1):
        for i, shot in enumerate(shots):
            nxt = shots[i + 1] if i + 1 < len(shots) else None
            a, b = shot.rin - start, shot.rout - start
            if shot.transition:
                a = -1
            if nxt is not None and nxt.transition:
                b = -1
            if shot.transition:
                cut = shot.rin - start
                dissolve_item(x, cut - shot.transition // 2, cut + shot.transition // 2, "center",
                              24, True)
            clip_id[0] += 1
            source_in = shot.source - shot.media_start
            name = shot.reel + (".wav" if audio else ".mov")
            ppro_clipitem(x, "clipitem-%d" % clip_id[0], name, shot.media_length, 24, True, a, b,
                          source_in, source_in + shot.length, ticks, audio, channel,
                          "masterclip-%s" % shot.reel)
            if shot.reel in files:
                # Premiere writes a file in full once, then refers to it by id.
                x.empty("file", {"id": files[shot.reel]})
            else:
                files[shot.reel] = "file-%d" % (len(files) + 1)
                xmeml_file(x, files[shot.reel], name, shot.path, 24, True, shot.media_length,
                           shot.media_start, CUT_CODE, shot.reel, audio_only=audio)
            ppro_clipitem_end(x, audio, channel, "Cerulean" if audio else "Iris")
            if channel == 1:
                order.append(shot)

    x.open("video")
    xmeml_video_format(x, 24, True)
    for name in ("V1", "V2"):
        x.open("track", PPRO_VIDEO_TRACK)
        track([s for s in shots if s.track == name], False)
        x.leaf("enabled", "TRUE")
        x.leaf("locked", "FALSE")
        x.close("track")
    x.close("video")
    x.open("audio")
    ppro_audio_head(x)
    for name in ("A1", "A2"):
        for channel in (1, 2):  # a stereo track: its right channel as a track of its own
            x.open("track", ppro_audio_track(channel - 1, True))
            track([s for s in shots if s.track == name], True, channel)
            x.leaf("enabled", "TRUE")
            x.leaf("locked", "FALSE")
            x.leaf("outputchannelindex", channel)
            x.close("track")
    x.close("audio")
    x.close("media")
    ppro_sequence_tail(x, 24, True, start, CUT_CODE)
    x.close("sequence")
    x.close("xmeml")
    data = x.data()
    expected = cut_expected(order)
    same(check_xmeml(data), expected, "cut-xmeml")
    return data, expected


def rational(value, rate):
    return {"OTIO_SCHEMA": "RationalTime.1", "rate": rate, "value": float(value)}


def time_range(start, duration, rate):
    return {"OTIO_SCHEMA": "TimeRange.1", "duration": rational(duration, rate),
            "start_time": rational(start, rate)}


def otio_gap(length, rate):
    return {"OTIO_SCHEMA": "Gap.1", "metadata": {}, "name": "",
            "source_range": time_range(0, length, rate), "effects": [], "markers": [],
            "enabled": True}


def otio_transition(length, rate, name="Cross Dissolve"):
    return {"OTIO_SCHEMA": "Transition.1", "metadata": {}, "name": name,
            "in_offset": rational(length // 2, rate), "out_offset": rational(length - length // 2, rate),
            "transition_type": "SMPTE_Dissolve"}


def otio_track(name, kind, children, schema="Track.1"):
    return {"OTIO_SCHEMA": schema, "metadata": {}, "name": name, "source_range": None,
            "effects": [], "markers": [], "enabled": True, "children": children, "kind": kind}


def otio_text(root):
    """OTIO's own layout: four-space indents; Inf and NaN as bare words, as its writer does."""
    text = json.dumps(root, indent=4, ensure_ascii=False)
    text = text.replace('"@Inf@"', "Inf").replace('"@-Infinity@"', "-Infinity")
    return (text.replace('"@NaN@"', "NaN") + "\n").encode("utf-8")


def cut_otio():
    start, shots = abstract_cut()
    rate = 24000 / 1001
    tracks, order = [], []
    for name in CUT_TRACKS:
        children, position = [], start
        for shot in [s for s in shots if s.track == name]:
            if shot.rin > position:
                children.append(otio_gap(shot.rin - position, rate))
            if shot.transition:
                children.append(otio_transition(shot.transition, rate))
            reference = {"OTIO_SCHEMA": "ExternalReference.1",
                         "metadata": {"Resolve_OTIO": {"Clip Color": "Orange"}},
                         "name": shot.reel + (".mov" if name.startswith("V") else ".wav"),
                         "available_range": time_range(shot.media_start, shot.media_length, rate),
                         "available_image_bounds": None, "target_url": "file://" + shot.path}
            children.append({
                "OTIO_SCHEMA": "Clip.2", "metadata": {"Resolve_OTIO": {"Link Group ID": 1}},
                "name": shot.clip, "source_range": time_range(shot.source, shot.length, rate),
                "effects": [], "markers": [], "enabled": True,
                "media_references": {"DEFAULT_MEDIA": reference},
                "active_media_reference_key": "DEFAULT_MEDIA"})
            order.append(shot)
            position = shot.rout
        kind = "Video" if name.startswith("V") else "Audio"
        tracks.append(otio_track({"V1": "Video 1", "V2": "Video 2", "A1": "Audio 1",
                                  "A2": "Audio 2"}[name], kind, children))
    root = {"OTIO_SCHEMA": "Timeline.1",
            "metadata": {"Resolve_OTIO": {"Resolve OTIO Meta Version": "1.0"}},
            "name": "R2_LOCK_v12", "global_start_time": rational(start, rate),
            "tracks": {"OTIO_SCHEMA": "Stack.1", "metadata": {}, "name": "", "source_range": None,
                       "effects": [], "markers": [], "enabled": True, "children": tracks}}
    data = otio_text(root)
    expected = cut_expected(order)
    # The reel of an OTIO clip is its media reference's name, file extension and all.
    for event, shot in zip(expected.events, order):
        event.reel = shot.reel + (".mov" if shot.track.startswith("V") else ".wav")
    same(check_otio(data), expected, "cut-otio")
    return data, expected


# --- FCPXML as Final Cut Pro writes it ------------------------------------------------------

def fcpxml_df():
    code = "29d"
    frame = FRAME[code]
    start = at("01:00:00;00", code)
    doc = Fcpxml("1.8", 30000)
    x = doc.x
    sizes = [412, 655, 380, 512, 300, 731, 268, 540, 455]
    reels = ["A003C%03d_231102_Q4NB" % (7 + 3 * i) for i in range(len(sizes))]
    sources = [at("11:%02d:%02d;%02d" % (12 + i, (17 * i) % 60, (7 * i) % 28 + 2), code)
               for i in range(len(sizes))]
    lead = 150  # the leading gap: five seconds of black before the first picture
    x.open("resources")
    doc.format("r1", "FFVideoFormat1080p2997", frame)
    doc.effect("r2", "Cross Dissolve", DISSOLVE_UID)
    doc.effect("r3", "Audio Crossfade", "FFAudioTransition")
    doc.format("r4", "FFVideoFormat1080p5994", F(1001, 60000))
    for i, reel in enumerate(reels):
        fmt = "r4" if i == 5 else "r1"
        doc.asset("r%d" % (10 + i), reel, (sources[i] - 200) * frame, (sizes[i] + 900) * frame,
                  "file:///Volumes/NEWS_RAID/DOC_EP3/CARD_A003/%s.mov" % reel, fmt,
                  camera="A CAM")
    doc.asset("r20", "BUG_LOGO_v4", 0, 3000 * frame,
              "file:///Volumes/NEWS_RAID/DOC_EP3/GFX/BUG_LOGO_v4.mov", "r1", audio=False)
    doc.asset("r21", "VO_TK07", 0, 2400 * frame,
              "file:///Volumes/NEWS_RAID/DOC_EP3/VO/VO_TK07.wav", None)
    x.close("resources")
    expected = Expected(code)
    end = start + lead + sum(sizes)
    x.open("library", {"location": "file:///Volumes/NEWS_RAID/DOC_EP3/DOC_EP3.fcpbundle/"})
    x.open("event", {"name": "EP3 edit", "uid": uid("EP3 edit")})
    x.open("project", {"name": "EP3 ACT 2 v7", "uid": uid("EP3 ACT 2 v7"),
                       "modDate": "2023-11-14 09:41:55 -0500"})
    x.open("sequence", {"format": "r1", "duration": doc.t((end - start) * frame),
                        "tcStart": doc.t(start * frame), "tcFormat": "DF",
                        "audioLayout": "stereo", "audioRate": "48k"})
    x.open("spine")
    x.empty("gap", {"name": "Gap", "offset": doc.t(start * frame), "start": "3600s",
                    "duration": doc.t(lead * frame)})
    place = start + lead
    for i, size in enumerate(sizes):
        transition = 20 if i == 3 else 0
        if transition:
            doc.transition((place - transition // 2) * frame, transition * frame)
        source = sources[i]
        x.open("asset-clip", {"ref": "r%d" % (10 + i), "offset": doc.t(place * frame),
                              "name": "%s int %d" % (reels[i][:8], i + 1),
                              "start": doc.t(source * frame), "duration": doc.t(size * frame),
                              "format": "r4" if i == 5 else "r1", "tcFormat": "DF",
                              "audioRole": "dialogue"})
        expected.add(reels[i], "V1", place, place + size, transition)
        if i == 5:
            # Shot at 59.94 and played at 29.97 (half speed): the record is its offset and
            # duration; the timeMap and conform-rate only say where its source frames come from.
            x.empty("conform-rate", {"scaleEnabled": "0", "srcFrameRate": "59.94"})
            x.open("timeMap")
            x.empty("timept", {"time": doc.t(source * frame), "value": doc.t(source * frame),
                               "interp": "smooth2"})
            x.empty("timept", {"time": doc.t((source + size) * frame),
                               "value": doc.t((source * 2 + size) * frame / 2),
                               "interp": "smooth2"})
            x.close("timeMap")
        if i == 1:
            offset, length = 30, 400
            x.empty("asset-clip", {"ref": "r20", "lane": "1",
                                   "offset": doc.t((source + offset) * frame),
                                   "name": "BUG_LOGO_v4", "start": doc.t(0),
                                   "duration": doc.t(length * frame), "format": "r1",
                                   "tcFormat": "DF"})
            expected.add("BUG_LOGO_v4", "V2", place + offset, place + offset + length)
        if i == 4:
            offset, length = 12, 520
            x.empty("asset-clip", {"ref": "r21", "lane": "-1",
                                   "offset": doc.t((source + offset) * frame),
                                   "name": "VO take 7", "start": doc.t(90 * frame),
                                   "duration": doc.t(length * frame), "audioRole": "dialogue.VO"})
            expected.add("VO_TK07", "A1", place + offset, place + offset + length)
        if i == 7:
            x.empty("marker", {"start": doc.t((source + 100) * frame),
                               "duration": doc.t(frame), "value": "legal: blur plate"})
        x.close("asset-clip")
        place += size
    assert place == end and end > at("01:02:00;02", code)
    x.close("spine")
    x.close("sequence")
    x.close("project")
    x.close("event")
    doc.smart_collections()
    x.close("library")
    data = doc.data()
    same(check_fcpxml(data), expected, "fcpxml-df")
    assert min(e.rin for e in expected.events) == start + lead
    return data, expected


def fcpxml_25():
    code = "25"
    frame = FRAME[code]
    sample = F(1, 48000)
    start = 90000
    doc = Fcpxml("1.13", 25)
    x = doc.x
    at25 = lambda text: at(text, code)
    camera = {  # reel: (source in, media start)
        "C0012_HARBOUR": (at25("06:12:40:00"), at25("06:12:00:00")),
        "C0031_MARKET": (at25("09:03:11:05"), at25("09:02:50:00")),
        "C0044_HARBOUR": (at25("18:40:02:10"), at25("18:39:30:00")),
        "C0035_MARKET": (at25("09:20:00:00"), at25("09:19:40:00")),
        "C0036_MARKET": (at25("09:21:10:00"), at25("09:20:55:00")),
        "A_CAM_INT_01": (at25("13:00:00:00"), at25("13:00:00:00")),
        "B_CAM_INT_01": (at25("13:00:00:00"), at25("13:00:00:00")),
        "C0007_DAWN": (at25("05:40:00:00"), at25("05:40:00:00")),
        "C0008_DAWN": (at25("05:44:00:00"), at25("05:44:00:00"))}
    ids = {reel: "r%d" % (20 + i) for i, reel in enumerate(camera)}
    x.open("resources")
    doc.format("r1", "FFVideoFormat1080p25", frame)
    doc.effect("r2", "Cross Dissolve", DISSOLVE_UID)
    doc.effect("r3", "Audio Crossfade", "FFAudioTransition")
    doc.format("r4", "FFVideoFormat3840x2160p25", frame, 3840, 2160)
    doc.effect("r5", "Basic Lower Third", TITLE_UID)
    doc.effect("r6", "Custom", CUSTOM_UID)
    for reel, (source, media) in camera.items():
        doc.asset(ids[reel], reel, media * frame, (source - media + 3000) * frame,
                  "file:///Volumes/DOC_RAID/ACCRA/%s.MP4" % reel, "r4", camera="FX6 A")
    doc.asset("r40", "AMB_GULLS_PORT", 0, 4321987 * sample,
              "file:///Volumes/DOC_RAID/ACCRA/SOUND/AMB_GULLS_PORT.wav", None, den=48000)
    doc.asset("r41", "MX_HIGHLIFE_THEME", 0, 9600123 * sample,
              "file:///Volumes/DOC_RAID/ACCRA/MUSIC/MX_HIGHLIFE_THEME.wav", None, den=48000)
    # The compound clip and the multicam: media whose insides are not the project's.
    x.open("media", {"id": "r7", "name": "MONTAGE_OPEN", "uid": uid("MONTAGE_OPEN"),
                     "modDate": "2024-09-30 16:20:11 +0000"})
    x.open("sequence", {"format": "r1", "duration": doc.t(250 * frame), "tcStart": "0s",
                        "tcFormat": "NDF", "audioLayout": "stereo", "audioRate": "48k"})
    x.open("spine")
    x.empty("asset-clip", {"ref": ids["C0007_DAWN"], "offset": "0s", "name": "dawn 1",
                           "start": doc.t(camera["C0007_DAWN"][0] * frame),
                           "duration": doc.t(120 * frame), "format": "r4", "tcFormat": "NDF"})
    x.empty("asset-clip", {"ref": ids["C0008_DAWN"], "offset": doc.t(120 * frame),
                           "name": "dawn 2", "start": doc.t(camera["C0008_DAWN"][0] * frame),
                           "duration": doc.t(130 * frame), "format": "r4", "tcFormat": "NDF"})
    x.close("spine")
    x.close("sequence")
    x.close("media")
    x.open("media", {"id": "r8", "name": "INTERVIEW_MC", "uid": uid("INTERVIEW_MC"),
                     "modDate": "2024-09-30 16:22:40 +0000"})
    mc_start = at25("13:00:00:00")
    x.open("multicam", {"format": "r1", "tcStart": doc.t(mc_start * frame), "tcFormat": "NDF",
                        "renderFormat": "FFRenderFormatProRes422"})
    for angle, reel in (("A CAM", "A_CAM_INT_01"), ("B CAM", "B_CAM_INT_01")):
        x.open("mc-angle", {"name": angle, "angleID": uid(angle)[:22]})
        x.empty("asset-clip", {"ref": ids[reel], "offset": doc.t(mc_start * frame),
                               "name": reel, "start": doc.t(mc_start * frame),
                               "duration": doc.t(2400 * frame), "format": "r4",
                               "tcFormat": "NDF"})
        x.close("mc-angle")
    x.close("multicam")
    x.close("media")
    x.close("resources")

    expected = Expected(code)
    x.open("library", {"location": "file:///Volumes/DOC_RAID/ACCRA/ACCRA.fcpbundle/"})
    x.open("event", {"name": "Cut", "uid": uid("Accra cut")})
    x.open("project", {"name": "ACCRA 57 – fine cut 3", "uid": uid("ACCRA fine cut 3"),
                       "modDate": "2024-10-02 11:05:00 +0000"})
    lengths_v1 = {"C1": 180, "ref": 250, "gap": 75, "mc": 400, "C5": 300, "C6": 210}
    end = start + sum(lengths_v1.values())
    x.open("sequence", {"format": "r1", "duration": doc.t((end - start) * frame),
                        "tcStart": "3600s", "tcFormat": "NDF", "audioLayout": "stereo",
                        "audioRate": "48k"})
    x.open("spine")
    place = start

    def clip(reel, name, length, transition=0):
        source = camera[reel][0]
        x.open("asset-clip", {"ref": ids[reel], "offset": doc.t(place * frame), "name": name,
                              "start": doc.t(source * frame), "duration": doc.t(length * frame),
                              "format": "r4", "tcFormat": "NDF", "audioRole": "dialogue"})
        expected.add(reel, "V1", place, place + length, transition)
        return source

    # 1. A clip with a title on lane 1 and ambience on lane -1 that starts half a frame late.
    source = clip("C0012_HARBOUR", "Harbour – dawn wide", lengths_v1["C1"])
    x.open("title", {"ref": "r5", "lane": "1", "offset": doc.t((source + 20) * frame),
                     "name": "Kofi Mensah – fisherman", "start": "3600s",
                     "duration": doc.t(100 * frame)})
    x.empty("param", {"name": "Position", "key": "9999/10199/10201/1/100/101",
                      "value": "-1.67 -382.5"})
    x.open("text")
    x.leaf("text-style", "Kofi Mensah", {"ref": "ts1"})
    x.close("text")
    x.open("text-style-def", {"id": "ts1"})
    x.empty("text-style", {"font": "Helvetica Neue", "fontSize": "52", "fontFace": "Medium",
                           "fontColor": "1 1 1 1", "alignment": "left"})
    x.close("text-style-def")
    x.close("title")
    expected.add("Kofi Mensah – fisherman", "V2", place + 20, place + 120)
    ambience_in, ambience_length = F(81, 2), F(603, 4)  # 40.5 and 150.75 frames
    x.empty("asset-clip", {"ref": "r40", "lane": "-1",
                           "offset": rt(source * frame + ambience_in * frame, 48000),
                           "name": "gulls, port", "start": rt(F(3), 48000),
                           "duration": rt(ambience_length * frame, 48000),
                           "audioRole": "effects"})
    # In at 40.5 rounds up to 41; out at 191.25 rounds down to 191 (not 41 + 151).
    expected.add("AMB_GULLS_PORT", "A1", place + 41, place + 191)
    assert nearest((place + ambience_in) * frame, code) == place + 41
    assert nearest((place + ambience_in + ambience_length) * frame, code) == place + 191
    x.close("asset-clip")
    place += lengths_v1["C1"]

    # 2. The compound clip: one event, its reel the media's name.
    x.empty("ref-clip", {"ref": "r7", "offset": doc.t(place * frame), "name": "Opening montage v3",
                         "duration": doc.t(lengths_v1["ref"] * frame), "useAudioSubroles": "1"})
    expected.add("MONTAGE_OPEN", "V1", place, place + lengths_v1["ref"])
    place += lengths_v1["ref"]

    # 3. A gap (its own start 3600s) carrying a title.
    x.open("gap", {"name": "Gap", "offset": doc.t(place * frame), "start": "3600s",
                   "duration": doc.t(lengths_v1["gap"] * frame)})
    x.open("title", {"ref": "r5", "lane": "1", "offset": doc.t(3600 + 10 * frame),
                     "name": "Accra, 6 March 1957", "start": "3600s",
                     "duration": doc.t(50 * frame)})
    x.open("text")
    x.leaf("text-style", "Accra, 6 March 1957", {"ref": "ts2"})
    x.close("text")
    x.open("text-style-def", {"id": "ts2"})
    x.empty("text-style", {"font": "Helvetica Neue", "fontSize": "60", "fontColor": "1 1 1 1"})
    x.close("text-style-def")
    x.close("title")
    x.close("gap")
    expected.add("Accra, 6 March 1957", "V2", place + 10, place + 60)
    place += lengths_v1["gap"]

    # 4. The multicam: one event, its reel the media's name.
    x.open("mc-clip", {"ref": "r8", "offset": doc.t(place * frame), "name": "Interview Ama",
                       "start": doc.t((mc_start + 1500) * frame),
                       "duration": doc.t(lengths_v1["mc"] * frame)})
    x.empty("mc-source", {"angleID": uid("A CAM")[:22], "srcEnable": "video"})
    x.empty("mc-source", {"angleID": uid("B CAM")[:22], "srcEnable": "audio"})
    x.close("mc-clip")
    expected.add("INTERVIEW_MC", "V1", place, place + lengths_v1["mc"])
    place += lengths_v1["mc"]

    # 5. A clip with a secondary storyline (its clips from 0s, a dissolve inside) and a
    # generator on lane 2.
    source = clip("C0031_MARKET", "Market – handheld", lengths_v1["C5"])
    story = place + 50
    x.open("spine", {"lane": "1", "offset": doc.t((source + 50) * frame), "name": "Storyline"})
    for reel, name, offset, length, transition in (
            ("C0035_MARKET", "market – fish stall", 0, 80, 0),
            ("C0036_MARKET", "market – kente", 80, 90, 12)):
        if transition:
            doc.transition((offset - transition // 2) * frame, transition * frame)
        x.empty("asset-clip", {"ref": ids[reel], "offset": doc.t(offset * frame), "name": name,
                               "start": doc.t(camera[reel][0] * frame),
                               "duration": doc.t(length * frame), "format": "r4",
                               "tcFormat": "NDF"})
        expected.add(reel, "V2", story + offset, story + offset + length, transition)
    x.close("spine")
    x.open("video", {"ref": "r6", "lane": "2", "offset": doc.t((source + 260) * frame),
                     "name": "Colour wash", "start": "3600s", "duration": doc.t(40 * frame)})
    x.empty("param", {"name": "Color", "key": "9999/10001/1/1/5/1", "value": "0.9 0.6 0.2"})
    x.close("video")
    expected.add("Colour wash", "V3", place + 260, place + 300)
    x.close("asset-clip")
    place += lengths_v1["C5"]

    # 6. A dissolve in the spine, then the last clip with music on lane -2 that starts 0.3 frame
    # into a frame and ends 0.4 frame past the last picture frame.
    doc.transition((place - 12) * frame, 24 * frame)
    source = clip("C0044_HARBOUR", "Harbour – dusk", lengths_v1["C6"], 24)
    music_in, music_length = F(303, 10), F(1801, 10)  # 30.3 and 180.1 frames
    x.open("asset-clip", {"ref": "r41", "lane": "-2",
                          "offset": rt((source + music_in) * frame, 48000), "name": "Highlife theme",
                          "start": rt(F(12), 48000), "duration": rt(music_length * frame, 48000),
                          "audioRole": "music"})
    x.empty("adjust-volume", {"amount": "-9dB"})
    x.close("asset-clip")
    expected.add("MX_HIGHLIFE_THEME", "A2", place + 30, place + 210)
    assert nearest((place + music_in + music_length) * frame, code) == place + lengths_v1["C6"]
    x.close("asset-clip")
    place += lengths_v1["C6"]
    assert place == end
    x.close("spine")
    x.close("sequence")
    x.close("project")
    x.close("event")
    doc.smart_collections()
    x.close("library")
    data = doc.data()
    same(check_fcpxml(data), expected, "fcpxml-25")
    assert data.index(b"<sequence") < data.index(b"<project")  # the compound's comes first
    return data, expected


def fcpxml_two_projects():
    doc = Fcpxml("1.11", 24000)
    x = doc.x
    ntsc, pal = FRAME["23n"], FRAME["25"]
    first = [("B004C011_240611_R1AB", "SC3 TK2", 130, at("10:11:04:03", "23n")),
             ("B004C012_240611_R1AB", "SC3 TK4", 95, at("10:14:40:19", "23n")),
             ("B005C002_240612_R1AB", "SC4 TK1", 211, at("11:02:03:00", "23n")),
             ("B005C006_240612_R1AB", "SC4 TK3", 77, at("11:09:51:12", "23n")),
             ("B005C009_240612_R1AB", "SC4 TK5", 164, at("11:20:00:08", "23n"))]
    second = [("PAL_ARCHIVE_%02d" % i, "archive %d" % i, 100 + 40 * i, 90000 + 2000 * i)
              for i in range(4)]
    x.open("resources")
    doc.format("r1", "FFVideoFormat1080p2398", ntsc)
    doc.format("r2", "FFVideoFormat1080p25", pal)
    doc.effect("r3", "Cross Dissolve", DISSOLVE_UID)
    ids = {}
    for reel, _, length, source in first:
        ids[reel] = "r%d" % (len(ids) + 10)
        doc.asset(ids[reel], reel, (source - 500) * ntsc, (length + 2000) * ntsc,
                  "file:///Volumes/SHORT/RUSHES/%s.mov" % reel, "r1", camera="B CAM")
    for reel, _, length, source in second:
        ids[reel] = "r%d" % (len(ids) + 10)
        doc.asset(ids[reel], reel, source * pal, (length + 500) * pal,
                  "file:///Volumes/SHORT/ARCHIVE/%s.mxf" % reel, "r2", den=25)
    x.close("resources")
    x.open("library", {"location": "file:///Volumes/SHORT/SHORT.fcpbundle/"})
    x.open("event", {"name": "Edit", "uid": uid("short edit")})
    # Browser clips before the project: the project is what is read.
    for reel, name, length, source in first[:2]:
        x.open("asset-clip", {"ref": ids[reel], "name": name, "start": doc.t(source * ntsc),
                              "duration": doc.t((length + 500) * ntsc), "format": "r1",
                              "tcFormat": "NDF", "audioRole": "dialogue",
                              "modDate": "2024-06-13 10:00:00 +0100"})
        x.empty("keyword", {"start": doc.t(source * ntsc), "duration": doc.t(length * ntsc),
                            "value": "selects"})
        x.close("asset-clip")
    expected = Expected("23n")
    total = sum(length for _, _, length, _ in first)
    x.open("project", {"name": "SHORT v9", "uid": uid("SHORT v9"),
                       "modDate": "2024-06-20 18:30:12 +0100"})
    x.open("sequence", {"format": "r1", "duration": doc.t(total * ntsc), "tcFormat": "NDF",
                        "audioLayout": "stereo", "audioRate": "48k"})  # no tcStart: 0s
    x.open("spine")
    place = 0
    for reel, name, length, source in first:
        x.empty("asset-clip", {"ref": ids[reel], "offset": doc.t(place * ntsc), "name": name,
                               "start": doc.t(source * ntsc), "duration": doc.t(length * ntsc),
                               "format": "r1", "tcFormat": "NDF", "audioRole": "dialogue"})
        expected.add(reel, "V1", place, place + length)
        place += length
    x.close("spine")
    x.close("sequence")
    x.close("project")
    x.close("event")
    x.open("event", {"name": "Old versions", "uid": uid("short old")})
    x.open("project", {"name": "SHORT v2 (PAL)", "uid": uid("SHORT v2"),
                       "modDate": "2024-04-02 09:12:00 +0100"})
    x.open("sequence", {"format": "r2", "duration": doc.t(sum(l for _, _, l, _ in second) * pal),
                        "tcStart": "3600s", "tcFormat": "NDF", "audioLayout": "stereo",
                        "audioRate": "48k"})
    x.open("spine")
    place = 90000
    for reel, name, length, source in second:
        x.empty("asset-clip", {"ref": ids[reel], "offset": rt(place * pal, 25), "name": name,
                               "start": rt(source * pal, 25), "duration": rt(length * pal, 25),
                               "format": "r2", "tcFormat": "NDF"})
        place += length
    x.close("spine")
    x.close("sequence")
    x.close("project")
    x.close("event")
    doc.smart_collections()
    x.close("library")
    data = doc.data()
    same(check_fcpxml(data), expected, "fcpxml-two-projects")
    return data, expected


def fcpxml_clip_list():
    code = "29n"
    frame = FRAME[code]
    doc = Fcpxml("1.9", 30000)
    x = doc.x
    days = {"Day 03 – A cam": [("A003C%03d_231004_T9ZZ" % n, "int %d" % n, 300 + 97 * n)
                               for n in (1, 2, 4, 5)],
            "Day 03 – drone": [("DJI_%04d" % n, "drone %d" % n, 450 + 31 * (n - 300)) for n in (301, 302)]}
    x.open("resources")
    doc.format("r1", "FFVideoFormat1080p2997", frame)
    doc.format("r2", "FFVideoFormat3840x2160p2997", frame, 3840, 2160)
    ids = {}
    for event, clips in days.items():
        for reel, _, length in clips:
            ids[reel] = "r%d" % (len(ids) + 3)
            doc.asset(ids[reel], reel, 0, length * frame,
                      "file:///Volumes/DOCS/DAY03/%s.mov" % reel, "r2" if "DJI" in reel else "r1")
    x.close("resources")
    expected = Expected(code)
    position = 0
    x.open("library", {"location": "file:///Volumes/DOCS/DAY03.fcpbundle/"})
    for event, clips in days.items():
        x.open("event", {"name": event, "uid": uid(event)})
        for reel, name, length in clips:
            x.open("asset-clip", {"ref": ids[reel], "name": name, "duration": doc.t(length * frame),
                                  "start": "0s", "format": "r2" if "DJI" in reel else "r1",
                                  "tcFormat": "NDF",
                                  "audioRole": "dialogue", "modDate": "2023-10-05 08:14:00 +0200"})
            x.empty("keyword", {"start": "0s", "duration": doc.t(length * frame),
                                "value": "Day 03"})
            x.close("asset-clip")
            expected.add(reel, "clips", position, position + length)
            position += length
        x.empty("keyword-collection", {"name": "Day 03"})
        x.close("event")
    doc.smart_collections()
    x.close("library")
    data = doc.data()
    same(check_fcpxml(data), expected, "fcpxml-clip-list")
    return data, expected


def fcpxml_1_5():
    """A file of FCPXML 1.5: the same kind of project, a version not read."""
    doc = Fcpxml("1.5", 25)
    x = doc.x
    x.open("resources")
    doc.format("r1", "FFVideoFormat1080p25", FRAME["25"])
    x.empty("asset", {"id": "r2", "name": "OLD_PROJECT_CLIP", "uid": uid("OLD"),
                      "src": "file:///Volumes/OLD/OLD_PROJECT_CLIP.mov", "start": "0s",
                      "duration": "120s", "hasVideo": "1", "format": "r1", "hasAudio": "1",
                      "audioSources": "1", "audioChannels": "2", "audioRate": "48000"})
    x.close("resources")
    x.open("library", {"location": "file:///Users/editor/Movies/Old.fcpbundle/"})
    x.open("event", {"name": "2015", "uid": uid("2015")})
    x.open("project", {"name": "OLD", "uid": uid("OLD project")})
    x.open("sequence", {"format": "r1", "duration": "10s", "tcStart": "3600s", "tcFormat": "NDF",
                        "audioLayout": "stereo", "audioRate": "48k"})
    x.open("spine")
    x.empty("clip", {"name": "OLD_PROJECT_CLIP", "offset": "3600s", "duration": "10s",
                     "start": "5s", "format": "r1", "tcFormat": "NDF"})
    x.close("spine")
    x.close("sequence")
    x.close("project")
    x.close("event")
    x.close("library")
    return doc.data(), None


def fcpxml_rate_15():
    """A 15 fps screen recording cut: FCPXML of a version we read, at a rate we have no code for."""
    doc = Fcpxml("1.12", 15)
    x = doc.x
    frame = F(1, 15)
    x.open("resources")
    doc.format("r1", "FFVideoFormatRateUndefined", frame, 2880, 1800)
    doc.asset("r2", "Screen Recording 2024-02-01", 0, 9000 * frame,
              "file:///Users/editor/Desktop/Screen%20Recording%202024-02-01.mov", "r1")
    x.close("resources")
    x.open("library", {"location": "file:///Users/editor/Movies/Tutorial.fcpbundle/"})
    x.open("event", {"name": "Tutorial", "uid": uid("Tutorial")})
    x.open("project", {"name": "Tutorial 1", "uid": uid("Tutorial 1")})
    x.open("sequence", {"format": "r1", "duration": rt(900 * frame, 15), "tcStart": "0s",
                        "tcFormat": "NDF", "audioLayout": "stereo", "audioRate": "48k"})
    x.open("spine")
    for i in range(3):
        x.empty("asset-clip", {"ref": "r2", "offset": rt(300 * i * frame, 15),
                               "name": "part %d" % (i + 1), "start": rt(1000 * i * frame, 15),
                               "duration": rt(300 * frame, 15), "format": "r1"})
    x.close("spine")
    x.close("sequence")
    x.close("project")
    x.close("event")
    x.close("library")
    return doc.data(), None


# --- xmeml as Final Cut Pro 7 and Premiere Pro write it ----------------------------------------

def fcp7_clipitem(x, id, name, media_length, start, end, source_in, source_out, file_args,
                  audio=False):
    x.open("clipitem", {"id": id})
    x.leaf("name", name)
    x.leaf("duration", media_length)
    xmeml_rate(x, 30, True, True)
    x.leaf("in", source_in)
    x.leaf("out", source_out)
    x.leaf("start", start)
    x.leaf("end", end)
    x.leaf("masterclipid", name + " 1")
    x.leaf("ismasterclip", "FALSE")
    xmeml_file(x, *file_args, audio_only=audio, fcp7=True)
    x.open("sourcetrack")
    x.leaf("mediatype", "audio" if audio else "video")
    if audio:
        x.leaf("trackindex", "1")
    x.close("sourcetrack")
    if not audio:
        x.leaf("fielddominance", "none")
    x.close("clipitem")


def xmeml_df():
    code = "29d"
    start = at("01:00:00;00", code)
    x = Xml(['<?xml version="1.0" encoding="UTF-8"?>', "<!DOCTYPE xmeml>"], "\t")
    x.open("xmeml", {"version": "5"})
    x.open("sequence", {"id": "EP3 ACT 3 v4 "})
    x.leaf("uuid", "2C7A1B64-8F1E-4D0B-9E55-33A1C0B7D2F4")
    x.leaf("updatebehavior", "add")
    x.leaf("name", "EP3 ACT 3 v4")
    sizes = [390, 512, 433, 605, 288, 701, 350, 480]
    total = sum(sizes) + 45
    x.leaf("duration", total + 301)  # stale: the act was longer when this was cached
    xmeml_rate(x, 30, True, True)
    x.open("timecode")
    xmeml_rate(x, 30, True, True)
    x.leaf("string", label(start, code))
    x.leaf("frame", start)
    x.leaf("source", "source")
    x.leaf("displayformat", "DF")
    x.close("timecode")
    x.leaf("in", "-1")
    x.leaf("out", "-1")
    x.open("media")
    x.open("video")
    xmeml_video_format(x, 30, True, True)
    expected = Expected(code)
    # Cuts inside dissolves: (transition before the shot, its length, its alignment).
    dissolves = {2: (15, "center"), 4: (20, "start"), 6: (10, "end")}
    x.open("track")
    place, cuts = 0, []
    for i, size in enumerate(sizes):
        if i == 5:
            place += 45  # a gap before the sixth shot
        cuts.append((place, place + size))
        place += size
    assert place == total
    reels = ["A%03d" % (3 + i % 3) for i in range(len(sizes))]
    names = ["A%03dC%03d" % (3 + i % 3, 7 + 5 * i) for i in range(len(sizes))]
    for i, (a, b) in enumerate(cuts):
        length, alignment = dissolves.get(i, (0, None))
        written_a, written_b = a, b
        if length:
            # The transition as the editor placed it around the cut at `a`: centred (an odd
            # length leaves the cut half a frame early), starting at it, or ending at it.
            t0 = {"center": a - length // 2, "start": a, "end": a - length}[alignment]
            dissolve_item(x, t0, t0 + length, alignment, 30, True, fcp7=True)
            written_a = -1
        if i + 1 in dissolves:
            written_b = -1
        source_in = 1800 + 211 * i
        source_out = source_in + (b - a)
        if i == 3:  # a speed change: Final Cut's in and out fall between frames
            source_in, source_out = "%.1f" % (source_in + 0.5), "%.1f" % (source_in + 0.5 + (b - a) * 0.8)
        media = at("15:00:00;00", code) + 5000 * i
        fcp7_clipitem(x, "%s 2" % names[i], names[i], 9000, written_a, written_b, source_in,
                      source_out, ("%s 2" % names[i], names[i] + ".mov",
                                   "/Volumes/EP3_MEDIA/%s/%s.mov" % (reels[i], names[i]), 30, True,
                                   9000, media, code, reels[i]))
        expected.add(reels[i], "V1", start + a, start + b, length)
    x.leaf("enabled", "TRUE")
    x.leaf("locked", "FALSE")
    x.close("track")
    x.open("track")
    # A slug held over the gap, and a graphic.
    x.open("generatoritem", {"id": "Slug 1"})
    x.leaf("name", "Slug")
    x.leaf("duration", "3600")
    xmeml_rate(x, 30, True, True)
    x.leaf("in", "0")
    x.leaf("out", "90")
    slug_a = cuts[4][1] - 20
    x.leaf("start", slug_a)
    x.leaf("end", slug_a + 90)
    x.leaf("enabled", "TRUE")
    x.leaf("anamorphic", "FALSE")
    x.leaf("alphatype", "black")
    x.open("effect")
    x.leaf("name", "Slug")
    x.leaf("effectid", "Slug")
    x.leaf("effectcategory", "Matte")
    x.leaf("effecttype", "generator")
    x.leaf("mediatype", "video")
    x.close("effect")
    x.close("generatoritem")
    expected.add("Slug", "V2", start + slug_a, start + slug_a + 90)
    gfx_a = cuts[6][0] + 33
    fcp7_clipitem(x, "LOWER3_DR_OKAFOR 2", "LOWER3_DR_OKAFOR", 600, gfx_a, gfx_a + 150, 0, 150,
                  ("LOWER3_DR_OKAFOR 2", "LOWER3_DR_OKAFOR.mov",
                   "/Volumes/EP3_MEDIA/GFX/LOWER3_DR_OKAFOR.mov", 30, True, 600))
    expected.add("LOWER3_DR_OKAFOR.mov", "V2", start + gfx_a, start + gfx_a + 150)
    x.leaf("enabled", "TRUE")
    x.leaf("locked", "FALSE")
    x.close("track")
    x.close("video")
    x.open("audio")
    x.open("format")
    x.open("samplecharacteristics")
    x.leaf("depth", "24")
    x.leaf("samplerate", "48000")
    x.close("samplecharacteristics")
    x.close("format")
    for track, items in (("A1", [("NAT_MARKET_03", "SND_DAY3", 30, 980),
                                 ("NAT_RAIN_01", "SND_DAY3", 1000, 2100)]),
                         ("A2", [("MX_TENSION_2M4", "MUSIC", 200, 2900)])):
        x.open("track")
        for name, reel, a, b in items:
            media = at("08:00:00;00", code) + 100 * a
            fcp7_clipitem(x, "%s 2" % name, name, 6000, a, b, "%.1f" % 12.0, "%.1f" % (12 + b - a),
                          ("%s 2" % name, name + ".wav", "/Volumes/EP3_MEDIA/%s/%s.wav" % (reel, name),
                           30, True, 6000, media, code, reel), audio=True)
            expected.add(reel, track, start + a, start + b)
        x.leaf("enabled", "TRUE")
        x.leaf("locked", "FALSE")
        x.leaf("outputchannelindex", "1" if track == "A1" else "2")
        x.close("track")
    x.close("audio")
    x.close("media")
    x.close("sequence")
    x.close("xmeml")
    data = x.data()
    same(check_xmeml(data), expected, "xmeml-df")
    assert max(e.rout for e in expected.events) > at("01:01:00;02", code)
    # The centred dissolve of odd length: its cut is half a frame before its middle.
    assert b"<start>%d</start>" % (cuts[2][0] - 7) in data and b"<end>%d</end>" % (cuts[2][0] + 8) in data
    return data, expected


def xmeml_24():
    code = "24"
    start = at("10:00:00:00", code)
    ticks = PPRO_TICKS // 24
    x = Xml(['<?xml version="1.0" encoding="UTF-8"?>', "<!DOCTYPE xmeml>"], "\t")
    x.open("xmeml", {"version": "4"})
    x.open("sequence", {"id": "sequence-1", "TL.SQAudioVisibleBase": "0",
                        "TL.SQVideoVisibleBase": "0", "TL.SQVisibleBaseTime": "0",
                        "TL.SQAVDividerPosition": "0.5", "TL.SQHideShyTracks": "0",
                        "TL.SQHeaderWidth": "204", "MZ.EditLine": "914457600000000",
                        "explodedTracks": "true"})
    x.leaf("uuid", "7e1f0c9a-2b3d-4e5f-8a9b-c0d1e2f3a4b5")
    x.leaf("duration", "2000")  # stale
    xmeml_rate(x, 24, False)
    x.leaf("name", "TRAILER_v7")
    x.open("media")
    x.open("video")
    xmeml_video_format(x, 24, False)
    expected = Expected(code)
    x.open("track", PPRO_VIDEO_TRACK)
    # c1, a dissolve, c2 (a 25 fps file), the nested titles, stock, a gap, the stock again.
    c1 = (0, 120)
    c2 = (120, 216)
    nest = (216, 336)
    stock1 = (336, 400)
    stock2 = (424, 520)
    ppro_clipitem(x, "clipitem-1", "B012C003_240301_X7.mov", 4000, 24, False, c1[0], -1,
                  500, 500 + c1[1] - c1[0], ticks)
    xmeml_file(x, "file-1", "B012C003_240301_X7.mov", "/Volumes/TRAILER/B012/B012C003_240301_X7.mov",
               24, False, 4000, at("17:45:10:00", code), code, "B012")
    ppro_clipitem_end(x)
    expected.add("B012", "V1", start + c1[0], start + c1[1])
    dissolve_item(x, c2[0] - 8, c2[0] + 8, "center", 24, False)
    # A 25 fps clip: its in and out count its own frames, its start and end the sequence's.
    pal = lambda frames: frames * 25 // 24
    x.open("clipitem", {"id": "clipitem-2"})
    x.leaf("masterclipid", "masterclip-2")
    x.leaf("name", "ARCHIVE_1987_REEL4.mxf")
    x.leaf("enabled", "TRUE")
    x.leaf("duration", "60000")
    xmeml_rate(x, 25, False)
    x.leaf("start", "-1")
    x.leaf("end", c2[1])
    x.leaf("in", "31250")
    x.leaf("out", 31250 + pal(c2[1] - c2[0]))
    x.leaf("pproTicksIn", 31250 * (PPRO_TICKS // 25))
    x.leaf("pproTicksOut", (31250 + pal(c2[1] - c2[0])) * (PPRO_TICKS // 25))
    x.leaf("alphatype", "none")
    x.leaf("pixelaspectratio", "square")
    x.leaf("anamorphic", "FALSE")
    x.open("file", {"id": "file-2"})
    x.leaf("name", "ARCHIVE_1987_REEL4.mxf")
    x.leaf("pathurl", "file://localhost/Volumes/TRAILER/ARCHIVE/ARCHIVE_1987_REEL4.mxf")
    xmeml_rate(x, 25, False)
    x.leaf("duration", "60000")
    x.open("timecode")
    xmeml_rate(x, 25, False)
    x.leaf("string", "04:00:00:00")
    x.leaf("frame", "360000")
    x.leaf("displayformat", "NDF")
    x.open("reel")
    x.leaf("name", "BETA_0412")
    x.close("reel")
    x.close("timecode")
    x.open("media")
    x.open("video")
    x.open("samplecharacteristics")
    xmeml_rate(x, 25, False)
    x.leaf("width", "720")
    x.leaf("height", "576")
    x.leaf("anamorphic", "TRUE")
    x.leaf("pixelaspectratio", "PAL-CCIR-601")
    x.leaf("fielddominance", "upper")
    x.close("samplecharacteristics")
    x.close("video")
    x.close("media")
    x.close("file")
    ppro_clipitem_end(x, label="Mango")
    expected.add("BETA_0412", "V1", start + c2[0], start + c2[1], 16)
    # The nested sequence: a clipitem holding a <sequence> with tracks and a timecode of its own.
    x.open("clipitem", {"id": "clipitem-3"})
    x.leaf("masterclipid", "masterclip-3")
    x.leaf("name", "Titles Nest")
    x.leaf("enabled", "TRUE")
    x.leaf("duration", "480")
    xmeml_rate(x, 24, False)
    x.leaf("start", nest[0])
    x.leaf("end", nest[1])
    x.leaf("in", "48")
    x.leaf("out", 48 + nest[1] - nest[0])
    x.leaf("alphatype", "none")
    x.open("sequence", {"id": "sequence-2", "explodedTracks": "true"})
    x.leaf("uuid", "0b9d7c21-3f4e-4a5b-9c8d-7e6f5a4b3c2d")
    x.leaf("duration", "480")
    xmeml_rate(x, 24, False)
    x.leaf("name", "TITLES_NEST")
    x.open("media")
    x.open("video")
    x.open("track", PPRO_VIDEO_TRACK)
    ppro_clipitem(x, "clipitem-4", "TITLE_CARD_A.mov", 480, 24, False, 0, 240, 0, 240, ticks)
    xmeml_file(x, "file-3", "TITLE_CARD_A.mov", "/Volumes/TRAILER/GFX/TITLE_CARD_A.mov", 24,
               False, 480, 0, code, "GFX")
    ppro_clipitem_end(x)
    ppro_clipitem(x, "clipitem-5", "TITLE_CARD_B.mov", 480, 24, False, 240, 480, 0, 240, ticks)
    xmeml_file(x, "file-4", "TITLE_CARD_B.mov", "/Volumes/TRAILER/GFX/TITLE_CARD_B.mov", 24,
               False, 480, 0, code, "GFX")
    ppro_clipitem_end(x)
    x.leaf("enabled", "TRUE")
    x.leaf("locked", "FALSE")
    x.close("track")
    x.close("video")
    x.close("media")
    x.open("timecode")
    xmeml_rate(x, 24, False)
    x.leaf("string", "00:00:00:00")
    x.leaf("frame", "0")
    x.leaf("displayformat", "NDF")
    x.close("timecode")
    x.close("sequence")
    ppro_clipitem_end(x)
    expected.add("TITLES_NEST", "V1", start + nest[0], start + nest[1])
    # Stock footage: the file has a timecode but no reel; used again later by its id.
    stock = "STOCK_aerial_city_4k.mp4"
    ppro_clipitem(x, "clipitem-6", stock, 1440, 24, False, stock1[0], stock1[1], 100,
                  100 + stock1[1] - stock1[0], ticks)
    xmeml_file(x, "file-5", stock, "/Volumes/TRAILER/STOCK/" + stock, 24, False, 1440,
               at("00:00:00:00", code), code)
    ppro_clipitem_end(x)
    expected.add(stock, "V1", start + stock1[0], start + stock1[1])
    ppro_clipitem(x, "clipitem-7", stock, 1440, 24, False, stock2[0], stock2[1], 700,
                  700 + stock2[1] - stock2[0], ticks)
    x.empty("file", {"id": "file-5"})
    ppro_clipitem_end(x)
    expected.add(stock, "V1", start + stock2[0], start + stock2[1])
    x.leaf("enabled", "TRUE")
    x.leaf("locked", "FALSE")
    x.close("track")
    x.open("track", PPRO_VIDEO_TRACK)
    matte = (300, 372)
    x.open("generatoritem", {"id": "generatoritem-1"})
    x.leaf("name", "Color Matte")
    x.leaf("duration", "1080000")
    xmeml_rate(x, 24, False)
    x.leaf("start", matte[0])
    x.leaf("end", matte[1])
    x.leaf("in", "107892")
    x.leaf("out", 107892 + matte[1] - matte[0])
    x.leaf("enabled", "TRUE")
    x.leaf("anamorphic", "FALSE")
    x.leaf("alphatype", "black")
    x.open("effect")
    x.leaf("name", "Color")
    x.leaf("effectid", "Color")
    x.leaf("effectcategory", "Matte")
    x.leaf("effecttype", "generator")
    x.leaf("mediatype", "video")
    x.open("parameter", {"authoringApp": "PremierePro"})
    x.leaf("parameterid", "fillcolor")
    x.leaf("name", "Color")
    x.open("value")
    for tag, value in (("alpha", "0"), ("red", "12"), ("green", "10"), ("blue", "40")):
        x.leaf(tag, value)
    x.close("value")
    x.close("parameter")
    x.close("effect")
    x.close("generatoritem")
    expected.add("Color Matte", "V2", start + matte[0], start + matte[1])
    x.leaf("enabled", "TRUE")
    x.leaf("locked", "FALSE")
    x.close("track")
    x.close("video")
    x.open("audio")
    ppro_audio_head(x)
    clip_id = [20]

    def audio_clip(name, reel, a, b, channel, file_id, first):
        clip_id[0] += 1
        ppro_clipitem(x, "clipitem-%d" % clip_id[0], name, 24000, 24, False, a, b, 240,
                      240 + b - a, ticks, True, channel)
        if first:
            xmeml_file(x, file_id, name, "/Volumes/TRAILER/AUDIO/" + name, 24, False, 24000,
                       at("12:00:00:00", code), code, reel, audio_only=True)
        else:
            x.empty("file", {"id": file_id})
        ppro_clipitem_end(x, True, channel, "Caribbean")

    layout = [("A1", False, [("VO_TRAILER_v7.wav", "VO", 24, 300)]),
              ("A2", True, [("MX_TRAILER_HYBRID_v3.wav", "MX", 0, 480),
                            ("SFX_BRAAM_02.wav", "SFX", 500, 520)]),
              ("A3", False, [("SFX_RISER_01.wav", "SFX", 380, 500)])]
    file_number = 10
    for track, stereo, clips in layout:
        ids = {}
        for channel in ((1, 2) if stereo else (1,)):
            x.open("track", ppro_audio_track(channel - 1, stereo))
            for name, reel, a, b in clips:
                if name not in ids:
                    file_number += 1
                    ids[name] = "file-%d" % file_number
                    audio_clip(name, reel, a, b, channel, ids[name], True)
                else:
                    audio_clip(name, reel, a, b, channel, ids[name], False)
                if channel == 1:
                    expected.add(reel, track, start + a, start + b)
            x.leaf("enabled", "TRUE")
            x.leaf("locked", "FALSE")
            x.leaf("outputchannelindex", channel)
            x.close("track")
    x.close("audio")
    x.close("media")
    ppro_sequence_tail(x, 24, False, start, code)
    x.close("sequence")
    x.close("xmeml")
    data = x.data()
    same(check_xmeml(data), expected, "xmeml-24")
    return data, expected


# --- OpenTimelineIO -------------------------------------------------------------------------

def otio_clip1(name, source, length, rate, reference, metadata=None):
    return {"OTIO_SCHEMA": "Clip.1", "metadata": metadata or {}, "name": name,
            "source_range": time_range(source, length, rate), "effects": [], "markers": [],
            "enabled": True, "media_reference": reference}


def external(name, url, start, length, rate, duration_value=None, start_value=None):
    available = time_range(start, length, rate)
    if duration_value is not None:
        available["duration"]["value"] = duration_value
    if start_value is not None:
        available["start_time"]["value"] = start_value
    return {"OTIO_SCHEMA": "ExternalReference.1", "metadata": {}, "name": name,
            "available_range": available, "available_image_bounds": None, "target_url": url}


def otio_24():
    code, rate = "24", 24.0
    start = 86400
    expected = Expected(code)
    v1, position = [], start

    def add(track, reel, length, transition=0):
        expected.add(reel, track, position, position + length, transition)

    # V1: a clip, a dissolve, a clip whose reference has no name, a gap, a clip at 48, a nested
    # stack, a clip whose media is missing.
    v1.append(otio_clip1("SC21 TK2", at("09:12:00:00", code), 100, rate,
                         external("A014C002_240805_KT21", "file:///mnt/show/A014/A014C002_240805_KT21.mxf",
                                  at("09:11:00:00", code), 5000, rate),
                         {"Resolve_OTIO": {"Clip Color": "Blue", "Link Group ID": 3}}))
    add("V1", "A014C002_240805_KT21", 100)
    position += 100
    v1.append(otio_transition(12, rate))
    v1.append(otio_clip1("SC21 TK5", at("09:20:10:04", code), 140, rate,
                         external("", "file:///mnt/show/A014/A014C005_240805_KT21.mxf",
                                  at("09:20:00:00", code), 3000, rate, start_value="@-Infinity@")))
    add("V1", "A014C005_240805_KT21", 140, 12)
    position += 140
    v1.append(otio_gap(36, rate))
    position += 36
    # Times at 48: 96 of them make 48 frames at 24.
    v1.append(otio_clip1("HFR insert", 2 * at("02:00:00:00", code), 96, 48.0,
                         external("HFR_INSERT_0042", "file:///mnt/show/HFR/HFR_INSERT_0042.mov",
                                  2 * at("02:00:00:00", code), 4800, 48.0)))
    add("V1", "HFR_INSERT_0042", 48)
    position += 48
    nested = {"OTIO_SCHEMA": "Stack.1", "metadata": {}, "name": "VFX_0420 comp stack",
              "source_range": None, "effects": [], "markers": [], "enabled": True,
              "children": [
                  otio_track("plate", "Video", [
                      otio_clip1("plate", 1001, 70, rate,
                                 external("VFX_0420_plate", "file:///mnt/show/VFX/VFX_0420_plate.exr",
                                          1001, 200, rate))]),
                  otio_track("fg", "Video", [
                      otio_gap(10, rate),
                      otio_clip1("fg element", 1001, 50, rate,
                                 external("VFX_0420_fg", "file:///mnt/show/VFX/VFX_0420_fg.exr",
                                          1001, 200, rate)),
                      otio_transition(6, rate),
                      otio_clip1("fg element b", 1101, 25, rate,
                                 external("VFX_0420_fg_b", "file:///mnt/show/VFX/VFX_0420_fg_b.exr",
                                          1001, 200, rate))])]}
    v1.append(nested)
    add("V1", "VFX_0420 comp stack", 85)  # the longer track: 10 + 50 + 25
    position += 85
    v1.append(otio_clip1("SC22 TK1 (offline)", at("10:02:00:00", code), 120, rate,
                         {"OTIO_SCHEMA": "MissingReference.1", "metadata": {}, "name": "",
                          "available_range": None, "available_image_bounds": None}))
    add("V1", "SC22 TK1 (offline)", 120)
    position += 120
    v1_end = position

    # A1: a gap at 48, then a clip whose available range runs to Inf.
    position = start
    a1 = [otio_gap(60, 48.0)]
    position += 30
    a1.append(otio_clip1("dialogue SC21", 0, 260, rate,
                         external("SC21_SOUND_T02", "file:///mnt/show/SOUND/SC21_T02.wav", 0, 0,
                                  rate, duration_value="@Inf@")))
    add("A1", "SC21_SOUND_T02", 260)
    position += 260
    a1.append(otio_clip1("dialogue SC22", 480, 190, rate,
                         external("SC22_SOUND_T01", "file:///mnt/show/SOUND/SC22_T01.wav", 0, 0,
                                  rate, duration_value="@NaN@")))
    add("A1", "SC22_SOUND_T01", 190)
    position += 190

    # V2, written as an old Sequence.1: a gap, a generator clip, a gap, a clip.
    position = start
    v2 = [otio_gap(150, rate)]
    position += 150
    v2.append(otio_clip1("slate – VFX_0420", 0, 24, rate,
                         {"OTIO_SCHEMA": "GeneratorReference.1", "metadata": {}, "name": "",
                          "available_range": time_range(0, 0, rate),
                          "available_image_bounds": None, "generator_kind": "SMPTEBars",
                          "parameters": {}}))
    v2[-1]["media_reference"]["available_range"]["duration"]["value"] = "@Inf@"
    add("V2", "slate – VFX_0420", 24)
    position += 24
    v2.append(otio_gap(200, rate))
    position += 200
    v2.append(otio_clip1("burn-in title", 0, 72, rate,
                         external("TITLE_BURNIN", "file:///mnt/show/GFX/TITLE_BURNIN.mov", 0, 72, rate)))
    add("V2", "TITLE_BURNIN", 72)
    position += 72

    # A2: music to past the last picture.
    position = start + 40
    a2 = [otio_gap(40, rate),
          otio_clip1("temp score", 1000, v1_end - start - 40 + 30, rate,
                     external("MX_TEMP_07", "file:///mnt/show/MUSIC/MX_TEMP_07.wav", 0, 9000, rate))]
    add("A2", "MX_TEMP_07", v1_end - start - 40 + 30)

    big = 2 ** 128 + 1  # a 39-digit id some asset manager stores: beyond any 64-bit integer
    root = {"OTIO_SCHEMA": "Timeline.1",
            "metadata": {"asset_manager": {"project_id": big, "synced": True,
                                           "tags": ["trailer", "v7"]}},
            "name": "PROMO_30_v4", "global_start_time": rational(start, rate),
            "tracks": {"OTIO_SCHEMA": "Stack.1", "metadata": {}, "name": "tracks",
                       "source_range": None, "effects": [], "markers": [], "enabled": True,
                       "children": [otio_track("V1", "Video", v1), otio_track("A1", "Audio", a1),
                                    otio_track("V2", "Video", v2, "Sequence.1"),
                                    otio_track("A2", "Audio", a2)]}}
    data = otio_text(root)
    assert str(big).encode() in data and b": Inf" in data and b": -Infinity" in data
    assert b": NaN" in data and b'"Sequence.1"' in data
    same(check_otio(data), expected, "otio-24")
    return data, expected


def otio_collection():
    expected = Expected("25")
    children, position = [], 0
    for i, (reel, length) in enumerate((("INT_KWAME_A", 250), ("INT_KWAME_B", 175),
                                        ("GV_ROOFTOPS", 90), ("INT_KWAME_A", 330))):
        children.append(otio_clip1("interview part %d" % (i + 1), 2500 * i, length, 25.0,
                                   external(reel, "file:///media/INT/%s.mov" % reel, 0, 20000, 25.0)))
        expected.add(reel, "V1", position, position + length)
        position += length
    first = {"OTIO_SCHEMA": "Timeline.1", "metadata": {}, "name": "Interview select v3",
             "global_start_time": None,
             "tracks": {"OTIO_SCHEMA": "Stack.1", "metadata": {}, "name": "tracks",
                        "source_range": None, "effects": [], "markers": [], "enabled": True,
                        "children": [otio_track("Video 1", "Video", children)]}}
    second = {"OTIO_SCHEMA": "Timeline.1", "metadata": {}, "name": "Interview select v2",
              "global_start_time": rational(86400, 24.0),
              "tracks": {"OTIO_SCHEMA": "Stack.1", "metadata": {}, "name": "tracks",
                         "source_range": None, "effects": [], "markers": [], "enabled": True,
                         "children": [otio_track("Video 1", "Video", [
                             otio_clip1("old select", 0, 480, 24.0,
                                        external("INT_KWAME_A", "file:///media/INT/INT_KWAME_A.mov",
                                                 0, 20000, 24.0))])]}}
    root = {"OTIO_SCHEMA": "SerializableCollection.1", "metadata": {}, "name": "Interview selects",
            "children": [first, second]}
    data = otio_text(root)
    same(check_otio(data), expected, "otio-collection")
    return data, expected


def otio_unknown():
    root = {"OTIO_SCHEMA": "Foo.1", "metadata": {}, "name": "not a timeline",
            "children": [otio_clip1("a clip", 0, 48, 24.0, None)]}
    return otio_text(root), None


# --- Avid Log Exchange ------------------------------------------------------------------------

def ale_file(heading, columns, rows, ending, tail=""):
    lines = ["Heading"] + heading + [""]
    lines += ["Column", "\t".join(columns) + tail, ""]
    lines += ["Data"] + ["\t".join(row) + tail for row in rows]
    return ending.join(lines) + ending


def ale_2398():
    code = "23n"
    expected = Expected(code)
    columns = ["Name", "Tracks", "Start", "End", "Duration", "Tape", "Source File", "Clip Name",
               "Scene", "Take", "Camera"]
    rows, position = [], 0
    for i, length in enumerate(lengths(10, 60, 500, 131)):
        name = "A%03dC%03d_230802_R1CE" % (1 + i // 4, 3 + i)
        source = at("15:%02d:%02d:%02d" % (10 + i, (13 * i) % 60, (5 * i) % 24), code)
        tape = "" if i in (2, 7) else "A%03d" % (1 + i // 4)
        start_tc, end_tc, duration = label(source, code), label(source + length, code), label(length, code)
        if i in (1, 4, 8):
            duration = ""  # left empty: End - Start
        if i in (3, 6):
            end_tc = ""  # a logger that writes only the Duration
        rows.append([name, "VA1A2", start_tc, end_tc, duration, tape, name + ".mov",
                     "%s_take%d" % (name[:8], i % 3 + 1), "%d" % (40 + i // 3), "%d" % (i % 3 + 1),
                     "A"])
        expected.add(tape or name, "clips", position, position + length)
        position += length
    heading = ["FIELD_DELIM\tTABS\t", "VIDEO_FORMAT\t1080\tAUDIO_FORMAT\t48khz\tFPS\t23.98\t"]
    data = ale_file(heading, columns, rows, "\r\n", "\t").encode("utf-8")
    assert all(line.endswith(b"\t") for line in data.split(b"\r\n")
               if line and line not in (b"Heading", b"Column", b"Data"))
    same(check_ale(data), expected, "ale-2398")
    return data, expected


def ale_23976():
    code = "23n"
    expected = Expected(code)
    columns = ["Name", "Tape", "Start", "End", "Tracks", "Source File", "Audio Format"]
    rows, position = [], 0
    for i, length in enumerate(lengths(8, 100, 900, 277)):
        name = "B%03dC%03d_230803_R2CE" % (2, 10 + 2 * i)
        source = at("16:%02d:40:%02d" % (5 + 3 * i, (11 * i) % 24), code)
        rows.append([name, "B002", label(source, code), label(source + length, code), "VA1A2",
                     name + ".mov", "48khz"])
        expected.add("B002", "clips", position, position + length)
        position += length
    heading = ["FIELD_DELIM\tTABS", "VIDEO_FORMAT\t1080", "AUDIO_FORMAT\t48khz", "FPS\t23.976"]
    data = ale_file(heading, columns, rows, "\n").encode("utf-8")
    same(check_ale(data), expected, "ale-23976")
    return data, expected


def ale_2997df():
    code = "29d"
    expected = Expected(code)
    columns = ["Name", "Tracks", "Start", "End", "Duration", "Tape", "Source File"]
    rows, position = [], 0
    crossed = False
    for i, length in enumerate(lengths(9, 400, 1200, 347)):
        name = "INT_%02d" % (i + 1)
        source = at("02:%02d:%02d;%02d" % (14 + i, 50 + i % 8, 4 + i), code)
        end = source + length
        duration = label(length, code)
        assert length < 1800  # under a minute: a Duration label counts the same either way
        if i % 3 == 1:
            duration = ""
            # End - Start across a minute mark, where drop-frame labels skip: counted non-drop
            # the same labels would give another length.
            non_drop = (dialects.frame_of(label(end, code), 30, 0) -
                        dialects.frame_of(label(source, code), 30, 0))
            crossed = crossed or non_drop != length
        tape = "CARD_%02d" % (1 + i // 3) if i != 4 else ""
        rows.append([name, "VA1A2", label(source, code), label(end, code), duration, tape,
                     name + ".mxf"])
        expected.add(tape or name, "clips", position, position + length, 0,
                     (code, source, end), name)
        position += length
    assert crossed and position > at("00:01:00;02", code)
    heading = ["FIELD_DELIM\tTABS", "VIDEO_FORMAT\t1080", "AUDIO_FORMAT\t48khz", "FPS\t29.97"]
    data = ale_file(heading, columns, rows, "\r\n").encode("utf-8")
    same(check_ale(data), expected, "ale-2997df")
    return data, expected


def ale_no_fps():
    columns = ["Name", "Tracks", "Start", "End", "Tape"]
    rows = [["SHOT_%02d" % i, "V", "01:00:%02d:00" % (10 * i), "01:00:%02d:12" % (10 * i + 5), "T1"]
            for i in range(4)]
    heading = ["FIELD_DELIM\tTABS", "VIDEO_FORMAT\t1080", "AUDIO_FORMAT\t48khz"]
    data = ale_file(heading, columns, rows, "\r\n").encode("utf-8")
    assert check_ale(data)[0] is None
    return data, None


# --- The fixtures ---------------------------------------------------------------------------

TIMELINE = ["--timeline", "-"]


def runs_for(expected, extra=(), args=()):
    """The plain run (with `args`) plus `extra`: (suffix, arguments before --timeline -, output,
    exit status). A file that cannot be read prints nothing at all and exits with 1."""
    if expected is None:
        return [("", list(args), "", 1)]
    return [("", list(args), expected.rows(), 0)] + list(extra)


def fixtures():
    """name, extension, bytes, runs."""
    out = []

    def add(name, extension, built, extra=lambda expected: [], args=()):
        data, expected = built
        out.append((name, extension, data, expected,
                    runs_for(expected, extra(expected) if expected else [], args)))
        return expected

    cut = {}
    # An EDL does not state 23.976: the editor gives it, as for any EDL of that rate.
    cut["edl"] = add("cut-edl", "edl", cut_edl(), args=["-r", "23n"])
    cut["fcpxml"] = add("cut-fcpxml", "fcpxml", cut_fcpxml(), lambda e: [
        ("-json", ["--json"], e.json(), 0),
        ("-r25", ["-r", "25"], e.rows(reason=differs("25")), 0)])
    cut["xmeml"] = add("cut-xmeml", "xml", cut_xmeml())
    cut["otio"] = add("cut-otio", "otio", cut_otio(), lambda e: [("-json", ["--json"], e.json(), 0)])
    # One cut, four files: the same events and one running time.
    totals = {name: e.total() for name, e in cut.items()}
    assert len(set(totals.values())) == 1, totals
    edl_tracks = {"V": "V1", "V2": "V2", "A": "A1", "A2": "A2"}
    strip = lambda reel: re.sub(r"\.(mov|wav)$", "", reel)
    shapes = {name: sorted((edl_tracks.get(t, t), strip(r), a, b) for t, r, a, b in e.placed())
              for name, e in cut.items()}
    assert all(shape == shapes["edl"] for shape in shapes.values())
    rows = {name: e.rows().splitlines()[-1] for name, e in cut.items()}
    assert len(set(rows.values())) == 1, rows

    add("fcpxml-df", "fcpxml", fcpxml_df(), lambda e: [
        ("-smpte", ["--notation", "smpte"], e.rows(smpte=True), 0)])
    add("fcpxml-25", "fcpxml", fcpxml_25())
    add("fcpxml-two-projects", "fcpxml", fcpxml_two_projects())
    add("fcpxml-clip-list", "fcpxml", fcpxml_clip_list())
    add("fcpxml-1-5", "fcpxml", fcpxml_1_5())
    add("fcpxml-rate-15", "fcpxml", fcpxml_rate_15())
    add("xmeml-df", "xml", xmeml_df())
    add("xmeml-24", "xml", xmeml_24())
    add("otio-24", "otio", otio_24())
    add("otio-collection", "otio", otio_collection())
    add("otio-unknown", "otio", otio_unknown())
    add("ale-2398", "ale", ale_2398())
    add("ale-23976", "ale", ale_23976(), lambda e: [("-r23n", ["-r", "23n"], e.rows(), 0)])
    add("ale-2997df", "ale", ale_2997df(), lambda e: [("-json", ["--json"], e.json(), 0)])
    add("ale-no-fps", "ale", ale_no_fps())
    return out


def check_drop_frame_matters(expected):
    """At a drop-frame code, some figure of the report must differ from non-drop counting."""
    nominal, drop = RATES[expected.code]
    return any(dialects.written(f, nominal, drop) != dialects.written(f, nominal, 0)
               for e in expected.events for f in (e.rin, e.rout, e.rout - e.rin))


def main(folder):
    check_counting()
    for name, extension, data, expected, runs in fixtures():
        if expected is not None and RATES[expected.code][1]:
            assert check_drop_frame_matters(expected), name
        source = "timeline-%s.%s" % (name, extension)
        (folder / source).write_bytes(data)
        for suffix, args, output, status in runs:
            golden = "timeline-%s%s" % (name, suffix)
            (folder / (golden + ".out")).write_bytes(output.encode("utf-8"))
            print("vantrel_golden(%s %s %d %s)" % (golden, source, status,
                                                   " ".join(args + TIMELINE)))


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
