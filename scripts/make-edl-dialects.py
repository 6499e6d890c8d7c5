#!/usr/bin/python3
"""Writes the EDL dialect fixtures: lists in the forms real tools write (line ends, encodings, FCM
habits, odd fields and stray lines) and the report `vantrel-calc --edl` must give for each, worked
out here from the events as they are written, with our own label counting and our own reading of
how the rate is chosen. Nothing here comes from Vantrel's output.

    scripts/make-edl-dialects.py tests/golden

writes tests/golden/dialect-NAME.edl and tests/golden/edl-dialect-NAME.out, and prints the
vantrel_golden() lines for tests/CMakeLists.txt. Every file is written as bytes: line ends and
encodings are what the fixtures are about.

The lists and the habit each one copies:

mac-cr              A classic Mac OS editing system: CR line ends only, Mac Roman text (curly
                    quotes, ellipses, Scandinavian and accented names in comments and reels),
                    FCM: NON-DROP FRAME, 30 fps labels. Most of its high bytes lie above 0x9F, so
                    only its CR line ends tell Mac Roman from Latin-1.
macroman-lf         A Mac OS X tool still writing Mac Roman but with LF ends: French and German
                    accents (bytes 0x80-0x9F) in reels and comments; 24 fps, FCM: NON-DROP FRAME.
win-bom-crlf        A Windows NLE: UTF-8 with a BOM straight before TITLE:, CRLF, FCM: DROP FRAME
                    and ';' before the frames, "AX" reels, a UTF-8 reel, dissolves written as a
                    zero-length cut line from the outgoing clip then a `D    030` line,
                    * FROM CLIP NAME: / * TO CLIP NAME: / * EFFECT NAME: comments, an M2 speed
                    change, an audio track. Read again with --notation smpte.
latin1-25           A European Windows tool writing ISO 8859-1 (bytes such as 0xE9, 0xF6, 0xD6) with
                    LF, FCM: NON-DROP FRAME, 25 fps from 10:00:00:00, labels up to 24.
notes               A music EDL for a cue sheet: `EP 107 MUSIC EDL` header, REM lines, AUD 3 4
                    lines, SPLIT: lines, >>> SOURCE lines, `FROM CLIP NAME:` and `SOURCE FILE:`
                    without a star, * LOC: locators. Its notes carry 29.97 drop-frame timecodes of
                    the composer's session; only its record fields (24 fps, no FCM) count.
frame-sources       An image-sequence conform tool: sources as plain frame numbers (`9  64`) on
                    some events, timecodes on others; record at 60 fps, no header.
avid-fcm-switch     Avid EDL Manager: header FCM: DROP FRAME with ':' everywhere, then
                    `FCM: NON-DROP FRAME` before events cut from non-drop archive sources (one at
                    00:01:00:00, a label drop frame skips), then `FCM: DROP FRAME` again, and
                    non-drop once more for the last picture event and the archive sound, so the
                    list's last FCM line says non-drop; trailing blanks on lines. Record stays drop
                    frame: events after a non-drop FCM cross minute marks, where the two countings
                    differ. Read again with -r 30.
unknown-fcm         A tool that writes its project rate into the FCM line (`FCM: 23.976 FRAMES`):
                    an unknown value, read as non-drop. Read again with -r 23d, which it turns
                    into 23n.
wide-fields         A tool padding event numbers to six digits, with file-name reels of 8, 32 and
                    128 characters, tracks V, V2, A, A2, AA, AA/V, B and NONE, and a blank
                    transition field before a duration (`V          012`).
events-past-999     Avid EDL Manager's start event number: a list of a later reel numbered from
                    995, whose numbers grow from three to four digits, with a dissolve at 1000.
source-bad-25       A 25 fps cut using an NTSC archive clip whose source label has frame 27: the
                    event is kept (source labels are not record labels) and exit is 0.
source-skipped-29d  A drop-frame cut with one source label drop frame skips (00:01:00;00): kept.
lost-events         A hand-edited list that was then cut short by a failed copy: a record out
                    before its in, an event line without its record out, a skipped drop-frame
                    record label, a 61st minute, a last line broken mid-field with no line end.
                    Those events are lost, the rest reported, exit 1.
mixed-line-ends     A list passed between Unix, Windows and classic Mac machines: LF, CRLF, CR
                    and CR CR LF (a CRLF file converted once more) in one file.
rate-24             A logging tool with no header: 23.976 material at 24 labels a second.
rate-25             No header, 25 fps, label 24 present.
rate-29d            FCM: DROP FRAME with '.' before the frames, as tools without ';' mark drop
                    frame.
rate-50             No header, 50 fps, labels to 49.
rate-59d            A BOM straight before FCM: DROP FRAME (no TITLE), ';', 59.94 drop frame.
rate-120            A high-frame-rate camera tool: no header, three-digit frame fields to 119.
rate-119d           FCM: DROP FRAME, ';', three-digit frame fields, 119.88 drop frame.
semicolons          No FCM line at all, ';' before the frames: drop frame by the separators.
                    Read again with -r 29n, which the separators turn into 29d.
r29n-fcm-drop       `FCM:  Drop Frame` (mixed case, two blanks) and ':' only, read with -r 29n.
r29d-fcm-nondrop    FCM: NON-DROP FRAME with a record label at 01:01:00:00 (which drop frame
                    skips), read with -r 29d.
ntsc-read-as-pal    A 30 fps list whose only label above 24 is its last record out, read with
                    -r 25: no output at all, exit 1.
gaps-overlaps       48 fps, V and A interleaved and out of record order: gaps, overlaps, an event
                    inside another, two events starting together (the sort must keep file order).
long-23976          A long 23.976 cut (a BL leader, 300 picture events with dissolves and a few
                    gaps, two audio tracks), FCM: NON-DROP FRAME, read with -r 23n --notation smpte.
"""
import pathlib
import re
import sys


# Labels a second and labels skipped at each minute but every tenth, for each rate code.
RATES = {
    "24": (24, 0), "23n": (24, 0), "23d": (24, 2), "25": (25, 0), "30": (30, 0), "29n": (30, 0),
    "29d": (30, 2), "48": (48, 0), "47n": (48, 0), "50": (50, 0), "60": (60, 0), "59n": (60, 0),
    "59d": (60, 4), "72": (72, 0), "96": (96, 0), "95n": (96, 0), "100": (100, 0),
    "120": (120, 0), "119n": (120, 0), "119d": (120, 8)}
FAMILIES = (24, 25, 30, 48, 50, 60, 72, 96, 100, 120)
DROP_FAMILY_CODE = {24: "23d", 30: "29d", 60: "59d", 120: "119d"}
DROP_TWIN = {"24": "23d", "23n": "23d", "30": "29d", "29n": "29d",
             "60": "59d", "59n": "59d", "120": "119d", "119n": "119d"}
NON_DROP_TWIN = {"23d": "23n", "29d": "29n", "59d": "59n", "119d": "119n"}


# --- Label counting -------------------------------------------------------------------------

def label(frame, nominal, drop):
    """The timecode label of a real frame: drop frame adds `drop` labels a minute but every tenth.
    (The same recipe as make-edl-golden.py's.)"""
    if not drop:
        return frame
    per_ten, per_minute = nominal * 600 - drop * 9, nominal * 60 - drop
    blocks, rest = divmod(frame, per_ten)
    return frame + drop * 9 * blocks + (drop * ((rest - drop) // per_minute) if rest > drop else 0)


def fields_of(frame, nominal, drop):
    seconds, frames = divmod(label(frame, nominal, drop), nominal)
    return seconds // 3600, seconds // 60 % 60, seconds % 60, frames


def written(frame, nominal, drop, separators=":::"):
    """A frame as an EDL writes it; three-digit frame fields at the 120 family."""
    hours, minutes, seconds, frames = fields_of(frame, nominal, drop)
    a, b, c = separators
    return "%02d%s%02d%s%02d%s%0*d" % (hours, a, minutes, b, seconds, c,
                                       3 if nominal == 120 else 2, frames)


def frame_of(text, nominal, drop):
    """The real frame of a label, counted the other way round from label(); None when the rate has
    no such label (a frame or second field too high, a 60th minute, a label drop frame skips)."""
    hours, minutes, seconds, frames = map(int, re.split(r"[:;.]", text))
    if minutes > 59 or seconds > 59 or frames >= nominal:
        return None
    if drop and seconds == 0 and frames < drop and minutes % 10:
        return None
    all_minutes = hours * 60 + minutes
    return (all_minutes * 60 + seconds) * nominal + frames - drop * (all_minutes - all_minutes // 10)


def check_counting():
    """label() and frame_of() worked out two ways must agree before any figure is trusted."""
    assert frame_of("01:00:00;00", 30, 2) == 107892
    assert frame_of("00:01:00;02", 30, 2) == 1800
    assert frame_of("00:01:00;00", 30, 2) is None and frame_of("00:10:00;00", 30, 2) == 17982
    assert frame_of("00:01:00;04", 60, 4) == 3600 and frame_of("00:01:00;03", 60, 4) is None
    assert frame_of("00:01:00;008", 120, 8) == 7200 and frame_of("00:01:00;007", 120, 8) is None
    assert frame_of("01:00:00:00", 30, 0) == 108000 and frame_of("10:00:00:00", 25, 0) == 900000
    assert written(107892, 30, 2, "::;") == "01:00:00;00"
    assert written(1800, 30, 2, "::;") == "00:01:00;02"
    assert written(1799, 30, 2) == "00:00:59:29"
    assert written(3600, 60, 4, "::;") == "00:01:00;04"
    assert written(7199, 120, 0) == "00:00:59:119"
    for nominal, drop in sorted(set(RATES.values())):
        per_hour = nominal * 3600 - drop * 54
        starts = (0, per_hour - nominal * 120, 9 * per_hour, 23 * per_hour + nominal * 3000)
        for start in starts:
            previous = None
            for frame in range(start, start + nominal * 60 * 11 + 7):
                text = written(frame, nominal, drop)
                assert frame_of(text, nominal, drop) == frame, (nominal, drop, frame, text)
                count = label(frame, nominal, drop)
                if previous is not None:
                    # Every label between two neighbours is one the rate has no frame for.
                    assert count > previous
                    for skipped in range(previous + 1, count):
                        s, f = divmod(skipped, nominal)
                        assert drop and f < drop and s % 60 == 0 and (s // 60) % 10
                        skipped_text = "%02d:%02d:%02d:%02d" % (s // 3600, s // 60 % 60, s % 60, f)
                        assert frame_of(skipped_text, nominal, drop) is None
                previous = count


# --- The rate the reader must choose ----------------------------------------------------------

def choose_rate(header_fcm, record_fields, given=None):
    """(code, reason) for a list whose header FCM is None/'drop'/'non-drop'/'unknown' and whose
    event lines hold `record_fields`; None when the rate given cannot hold the labels."""
    semicolons = any(";" in field for field in record_fields)
    max_label = max(int(re.split(r"[:;.]", field)[3]) for field in record_fields)
    drop_wanted = header_fcm == "drop" or (header_fcm is None and semicolons)
    by = "its FCM line" if header_fcm == "drop" else "its ';' separators"
    if given:
        nominal, drop = RATES[given]
        if nominal <= max_label:
            return None
        if drop_wanted and not drop and given in DROP_TWIN:
            return DROP_TWIN[given], "the rate given, drop frame by " + by
        if header_fcm in ("non-drop", "unknown") and drop:
            return NON_DROP_TWIN[given], "the rate given, non-drop by its FCM line"
        return given, "the rate given"
    family = min(n for n in FAMILIES if n > max_label and (not drop_wanted or n in DROP_FAMILY_CODE))
    code = DROP_FAMILY_CODE[family] if drop_wanted else str(family)
    if header_fcm is not None:
        return code, "from its FCM line and frame labels"
    if semicolons:
        return code, "from its ';' separators and frame labels"
    return code, "from its frame labels"


# --- Writing a list -------------------------------------------------------------------------

def cmx_line(number, reel, track, transition, fields):
    """The CMX 3600 columns most systems keep to (longer reels and numbers push the rest along)."""
    return "%-3s  %-8s %-5s %-8s %s" % (number, reel, track, transition, " ".join(fields))


class Edl:
    """A list as a tool writes it, line by line, and the events a reader must keep from it."""

    def __init__(self, nominal, drop, separators=":::", layout=cmx_line, tail=""):
        self.nominal, self.drop = nominal, drop      # the record labels are written at this rate
        self.source_drop = drop                      # FCM lines after events change the sources'
        self.separators, self.layout, self.tail = separators, layout, tail
        self.lines, self.kept, self.lost = [], [], []
        self.header_fcm, self.record_fields = None, []

    def at(self, text, drop=None):
        frame = frame_of(text, self.nominal, self.drop if drop is None else drop)
        assert frame is not None, text
        return frame

    def tc(self, frame, drop=None):
        return written(frame, self.nominal, self.drop if drop is None else drop, self.separators)

    def to_top(self, record_in, length):
        """`length` stretched by under a second so that the out label shows the last frame of its
        second: the list's labels then reach the top of its rate, which the rate is read from."""
        while fields_of(record_in + length, self.nominal, self.drop)[3] != self.nominal - 1:
            length += 1
        return length

    def drop_matters(self):
        """Whether counting the record labels the other way (drop for non-drop and back) would
        change some event's figures: where it would not, the list cannot tell the two apart."""
        other = 0 if self.drop else {24: 2, 30: 2, 60: 4, 120: 8}[self.nominal]
        for _, _, _, a, b in self.kept:
            a_other = frame_of(self.tc(a), self.nominal, other)
            b_other = frame_of(self.tc(b), self.nominal, other)
            if a_other is None or b_other is None or b_other - a_other != b - a:
                return True
        return False

    def note(self, text):
        self.lines.append(text)

    def fcm(self, text):
        """An FCM line: before the first event it is the list's; after, it counts the sources."""
        value = " ".join(text.split(":", 1)[1].split()).upper()
        kind = {"DROP FRAME": "drop", "NON-DROP FRAME": "non-drop"}.get(value, "unknown")
        if not self.kept and not self.lost:
            self.header_fcm = kind
        else:
            assert self.header_fcm is not None  # an FCM line only after events is not wanted here
            self.source_drop = self.drop if kind == "drop" else 0
        self.lines.append(text)

    def line(self, number, reel, track, transition, sources, record_in, record_out):
        """One event line; `sources` is the first source frame or the two fields as written."""
        if isinstance(sources, int):
            sources = (self.tc(sources, self.source_drop),
                       self.tc(sources + record_out - record_in, self.source_drop))
        record = (self.tc(record_in), self.tc(record_out))
        self.record_fields += record
        self.lines.append(self.layout(number, reel, track, transition, list(sources) + list(record))
                          + self.tail)

    def keep(self, number, reel, track, record_in, record_out):
        assert record_out >= record_in
        self.kept.append((number, reel, track, record_in, record_out))

    def cut(self, number, reel, track, record_in, length, source, transition="C"):
        self.line(number, reel, track, transition, source, record_in, record_in + length)
        self.keep(number, reel, track, record_in, record_in + length)
        return record_in + length

    def dissolve(self, number, track, record_in, length, out_reel, out_source, reel, source,
                 frames=30, lead=0):
        """A dissolve as two lines of one event: a cut line from the outgoing clip (`lead` frames
        long; 0 is the zero-length form NLEs write), then the `D nnn` line of the incoming clip."""
        self.line(number, out_reel, track, "C", out_source, record_in, record_in + lead)
        self.line(number, reel, track, "D    %03d" % frames, source, record_in + lead,
                  record_in + length)
        self.keep(number, reel, track, record_in, record_in + length)
        return record_in + length

    def broken(self, text, track, record_fields=()):
        """An event line the reader cannot read: the event is lost. `record_fields` are whatever
        record-like timecodes it still holds, which must not change the rate chosen."""
        assert any(track == kept[2] for kept in self.kept)
        self.lines.append(text)
        self.lost.append(tuple(record_fields))

    def rate(self, given=None):
        chosen = choose_rate(self.header_fcm, self.record_fields, given)
        with_lost = self.record_fields + [field for fields in self.lost for field in fields]
        assert choose_rate(self.header_fcm, with_lost, given) == chosen
        if chosen:
            # The fixture must be written at the rate the reader is to count it at.
            assert RATES[chosen[0]] == (self.nominal, self.drop), (chosen, self.nominal, self.drop)
            for field in self.record_fields:
                assert frame_of(field, self.nominal, self.drop) is not None, field
        return chosen

    def report(self, code, reason, smpte):
        """The rows `vantrel-calc --edl` prints for the kept events, at `code`."""
        nominal, drop = RATES[code]
        width = 3 if nominal == 120 else 2
        last = (";" if drop else ":") if smpte else "."

        def tc(frames):
            hours, minutes, seconds, rest = fields_of(frames, nominal, drop)
            return "%02d:%02d:%02d%s%0*d" % (hours, minutes, seconds, last, width, rest)

        rows = [["rate", code, reason]]
        rows += [["event", number, reel, track, tc(a), tc(b), tc(b - a), str(b - a)]
                 for number, reel, track, a, b in self.kept]
        tracks = {}
        for number, _, track, a, b in self.kept:
            tracks.setdefault(track, []).append((number, a, b))
        for track, events in tracks.items():
            events = sorted(events, key=lambda event: event[1])  # stable: file order on ties
            total = sum(b - a for _, a, b in events)
            rows.append(["track", track, str(len(events)), tc(total), str(total),
                         tc(events[0][1]), tc(max(b for _, _, b in events))])
            for (n1, _, out), (n2, start, _) in zip(events, events[1:]):
                if start != out:
                    rows.append(["gap" if start > out else "overlap", track, n1, n2,
                                 tc(min(out, start)), tc(max(out, start)), tc(abs(start - out)),
                                 str(abs(start - out))])
        first = min(event[3] for event in self.kept)
        end = max(event[4] for event in self.kept)
        rows.append(["total", tc(end - first), str(end - first)])
        return "".join("\t".join(row) + "\n" for row in rows)

    def data(self, encoding="ascii", ending="\n", bom=False, last_end=True):
        """The file's bytes; `ending` is one line end or a list of them taken in turn."""
        endings = ending if isinstance(ending, list) else [ending]
        text = "".join(line + endings[i % len(endings)] for i, line in enumerate(self.lines))
        if not last_end:
            text = text[:len(text) - len(endings[(len(self.lines) - 1) % len(endings)])]
        return (b"\xef\xbb\xbf" if bom else b"") + text.encode(encoding)


def high_bytes(data):
    """(bytes 0x80-0x9F, bytes 0xA0-0xFF): the counts the reader weighs Mac Roman against Latin-1 by."""
    low = sum(1 for byte in data if 0x80 <= byte <= 0x9F)
    return low, sum(1 for byte in data if byte >= 0xA0)


def not_utf8(data):
    try:
        data.decode("utf-8")
    except UnicodeDecodeError:
        return True
    return False


def lengths(count, base, spread, step):
    """Event lengths that vary like a real cut's without a random generator."""
    return [base + (i * step) % spread for i in range(count)]


# --- The fixtures -----------------------------------------------------------------------------
# Each returns the list and its bytes; FIXTURES below says how each is read.

def mac_cr():
    edl = Edl(30, 0)
    edl.note("TITLE: Søren’s “Øresund” – rough cut 3")
    edl.fcm("FCM: NON-DROP FRAME")
    edl.note("")
    reels = ["KØBENHVN", "A003", "ÉTÉ_B01", "BØRGE_2", "A007", "ØRESUND"]
    clips = ["Søren’s kitchen…", "Bjørn – exterior “dawn”", "Øresund bridge – drone", "Café Über…",
             "Børge’s boat", "Ødegård – wide"]
    record = edl.at("01:00:00:00")
    for i, length in enumerate(lengths(14, 60, 240, 53)):
        length = edl.to_top(record, length) if i == 2 else length
        source = edl.at("05:12:00:00") + i * 977
        record = edl.cut("%03d" % (i + 1), reels[i % 6], "V", record, length, source)
        edl.note("* FROM CLIP NAME:  " + clips[i % 6])
        if i % 4 == 1:
            edl.note("* COMMENT: “keep” – Søren’s note…")
    audio = edl.at("01:00:00:00")
    for i, length in enumerate((700, 950, 601)):
        audio = edl.cut("%03d" % (15 + i), "ØRESUND", "AA", audio, length, edl.at("07:00:00:00") + i * 3000)
        edl.note("* FROM CLIP NAME:  Øresund wind – “room tone”")
    assert record > edl.at("01:01:00:00")
    data = edl.data("mac_roman", "\r")
    low, high = high_bytes(data)
    assert not_utf8(data) and high > low  # only the CR ends can tell it is Mac Roman
    return edl, data


def macroman_lf():
    edl = Edl(24, 0)
    edl.note("TITLE: Première – version française")
    edl.fcm("FCM: NON-DROP FRAME")
    reels = ["FRANÇOIS", "MÜLLER_2", "CRÈME_01", "A012"]
    clips = ["scène 4 – François à la fenêtre", "Müller übergibt den Brief", "crème brûlée, plan serré",
             "répétition générale"]
    record = edl.at("01:00:40:00")
    for i, length in enumerate(lengths(10, 30, 150, 41)):
        length = edl.to_top(record, length) if i == 2 else length
        record = edl.cut("%03d" % (i + 1), reels[i % 4], "V", record, length, edl.at("02:00:00:00") + i * 1500)
        edl.note("* FROM CLIP NAME:  " + clips[i % 4])
    data = edl.data("mac_roman", "\n")
    low, high = high_bytes(data)
    assert not_utf8(data) and low > high  # Mac Roman by the count of its high bytes
    return edl, data


def win_bom_crlf():
    edl = Edl(30, 2, "::;")
    edl.note("TITLE: Épisode 4 – montage final")
    edl.fcm("FCM: DROP FRAME")
    edl.note("")
    clips = ["Interview_Zoë_A.mov", "B-roll_café.mov", "Drone_Île_03.mp4", "Interview_Zoë_B.mov"]
    record = edl.at("01:00:00;00")
    previous = None
    for i, length in enumerate(lengths(12, 70, 260, 61)):
        length = edl.to_top(record, length) if i == 2 else length
        number, clip = "%03d" % (i + 1), clips[i % 4]
        reel = "CAMÉRA_B" if i == 5 else "AX"
        source = edl.at("00:00:05;10") + i * 611
        if i in (3, 6):  # the second comes from the CAMÉRA_B shot: the event takes the incoming reel
            out_reel, out_source, out_clip = previous
            record = edl.dissolve(number, "V", record, length, out_reel, out_source, reel, source)
            edl.note("* EFFECT NAME: CROSS DISSOLVE")
            edl.note("* FROM CLIP NAME: " + out_clip)
            edl.note("* TO CLIP NAME: " + clip)
        else:
            record = edl.cut(number, reel, "V", record, length, source)
            edl.note("* FROM CLIP NAME: " + clip)
            if i == 8:
                edl.note("M2   AX       048.0                " + edl.tc(source))
        edl.note("")
        previous = (reel, source + length, clip)
    audio = edl.at("01:00:00;00")
    for i, length in enumerate((1500, 1210)):
        audio = edl.cut("%03d" % (13 + i), "AX", "A", audio, length, edl.at("00:00:00;00") + 45 * i)
        edl.note("* FROM CLIP NAME: Musique_générique.wav")
        edl.note("")
    assert record > edl.at("01:01:00;02")
    data = edl.data("utf-8", "\r\n", bom=True)
    assert data.startswith(b"\xef\xbb\xbfTITLE:")
    return edl, data


def latin1_25():
    edl = Edl(25, 0)
    edl.note("TITLE: GRÖNLAND FOLGE 2 - SCHNITT")
    edl.fcm("FCM: NON-DROP FRAME")
    edl.note("")
    reels = ["GRÖNLAND", "RÉGIE_01", "B042", "MÅNE_07"]
    clips = ["Gespräch_Müller.mxf", "scène coupée.mov", "Fjörd_total.mxf", "Måne über dem Eis.mxf"]
    record = edl.at("10:00:00:00")
    for i, length in enumerate(lengths(12, 40, 220, 47)):
        length = edl.to_top(record, length) if i == 2 else length
        record = edl.cut("%03d" % (i + 1), reels[i % 4], "V", record, length, edl.at("14:00:00:00") + i * 2100)
        edl.note("* FROM CLIP NAME:  " + clips[i % 4])
        if i == 4:
            edl.note("* KOMMENTAR: Farbkorrektur prüfen, Übergang zu hart")
    data = edl.data("latin-1", "\n")
    low, high = high_bytes(data)
    assert not_utf8(data) and low == 0 and high
    return edl, data


def notes():
    edl = Edl(24, 0)
    edl.note("EP 107 MUSIC EDL")
    edl.note("TITLE: EP107 MUSIC V3")
    edl.note("REM  COMPOSER SESSION 29.97 DF, STEMS START 00:59:52;28")
    edl.note("REM  CUES 1M1 TO 1M6, SEE CUE SHEET")
    edl.note("")
    record = edl.at("01:00:10:05")
    for i, length in enumerate(lengths(6, 400, 900, 377)):
        length = edl.to_top(record, length) if i == 2 else length
        cue = "1M%d" % (i + 1)
        edl.note("SPLIT:   AUDIO DELAY=  00:00:00;%02d" % (12 + i * 3))
        record = edl.cut("%03d" % (i + 1), "MX10%d" % (i + 1), "A", record, length,
                         edl.at("00:00:00:00") + 7 * i)
        edl.note("AUD  3  4")
        edl.note("FROM CLIP NAME: shot%d" % (i + 1))
        edl.note("SOURCE FILE: %s_v3.wav" % cue)
        edl.note(">>> SOURCE MX10%d %s_MainTitle_v3.wav 00:59:52;28" % (i + 1, cue))
        if i == 1:
            edl.note("* LOC: 01:00:05:00 RED marker")
            edl.note("* LOC: 01:00:59;29 YELLOW hit point from the session")
        if i == 3:
            edl.note("* ASC_SOP (1.0 1.0 1.0)(0.0 0.0 0.0)(1.0 1.0 1.0)")
            edl.note("M2   MX104       024.0                00:00:00:00")
        record += 36 if i == 2 else 0  # music out before the next cue starts
    return edl, edl.data("ascii", "\n")


def frame_sources():
    def layout(number, reel, track, transition, fields):
        return "%-3s  %-8s %-5s %-8s %s  %s  %s %s" % ((number, reel, track, transition) + tuple(fields))

    edl = Edl(60, 0, layout=layout)
    record = edl.at("01:00:00:00")
    for i, length in enumerate(lengths(10, 55, 300, 97)):
        length = edl.to_top(record, length) if i == 2 else length
        reel = "SEQ%04d" % (10 * i + 10)
        if i % 3 == 2:  # a clip that still has its camera timecode
            sources = edl.at("11:42:13:05") + 19 * i
        else:
            first = 9 + 31 * i
            sources = (str(first), str(first + length))
        edl.line("%03d" % (i + 1), reel, "V", "C", sources, record, record + length)
        edl.keep("%03d" % (i + 1), reel, "V", record, record + length)
        record += length
    return edl, edl.data("ascii", "\n")


def avid_fcm_switch():
    edl = Edl(30, 2, tail="  ")
    edl.note("TITLE:   REEL 1 V7  ")
    edl.fcm("FCM: DROP FRAME  ")
    edl.note("")
    archive = (4, 5, 13)  # events cut from non-drop archive tapes; the last one ends the list
    record = edl.at("01:00:00:00")
    switched = []
    for i, length in enumerate(lengths(14, 90, 330, 71)):
        length = edl.to_top(record, length) if i == 2 else length
        length = 1900 if i == 5 else length  # a long archive shot, over a minute mark
        number = "%03d" % (i + 1)
        if i in archive and i - 1 not in archive:
            edl.fcm("FCM: NON-DROP FRAME")
        if i not in archive and i - 1 in archive:
            edl.fcm("FCM: DROP FRAME")
        if i in archive:
            # 00:01:00:00 is a label drop frame would skip: fine on a non-drop tape
            source = edl.at("00:01:00:00", drop=0) if i == 4 else edl.at("00:20:00:00", drop=0) + 300 * i
            start = record
            record = edl.cut(number, "ARCH%02d" % i, "V", record, length, source)
            switched.append((start, record))
            edl.note("* FROM CLIP NAME:  ARCHIVE_1987_%02d  " % i)
        else:
            source = edl.at("14:22:31:12") + 450 * i
            record = edl.cut(number, "A004C%03d" % (i + 12), "V", record, length, source)
            edl.note("* FROM CLIP NAME:  SC12_TK%d  " % (i % 5 + 1))
    # The archive's own sound, still under the non-drop FCM line: the list's last FCM line says
    # non-drop, yet the record stays drop frame by the header's.
    audio = edl.at("01:00:00:00")
    for i, length in enumerate((1800, 1230, 905)):
        start = audio
        audio = edl.cut("%03d" % (15 + i), "ARCH%02d" % (20 + i), "A" if i != 1 else "A2", audio, length,
                        edl.at("00:40:00:00", drop=0) + 2000 * i)
        switched.append((start, audio))
        edl.note("* FROM CLIP NAME:  ARCHIVE_1987_SOUND_%d  " % i)
    assert edl.lines[-1].startswith("*") and edl.source_drop == 0
    # Events read with non-drop sources keep drop-frame record: some must cross a minute mark, where
    # counting their record labels non-drop would give other durations.
    assert any(frame_of(edl.tc(b), 30, 0) - frame_of(edl.tc(a), 30, 0) != b - a for a, b in switched)
    return edl, edl.data("ascii", "\r\n")


def unknown_fcm():
    edl = Edl(24, 0)
    edl.note("TITLE: TRAILER 2B")
    edl.fcm("FCM: 23.976 FRAMES")
    edl.note("")
    record = edl.at("00:59:58:00")
    for i, length in enumerate(lengths(16, 30, 180, 67)):
        length = edl.to_top(record, length) if i == 2 else length
        record = edl.cut("%03d" % (i + 1), "B%03d" % (i * 7 % 40), "V", record, length, edl.at("03:10:00:00") + 333 * i)
        edl.note("* FROM CLIP NAME:  B%03d_v2.mov" % (i * 7 % 40))
    assert record > edl.at("01:01:00:00")  # 23d and 23n count these differently
    return edl, edl.data("ascii", "\n")


def wide_fields():
    edl = Edl(30, 0)
    edl.note("TITLE: CONFORM 0412")
    edl.fcm("FCM: NON-DROP FRAME")
    edl.note("")
    reel32 = "A001C003_230415_R2KT_PLATE_V0012"
    reel128 = ("A002C017_230416_R2KT_" + "_".join("SHOT%03d" % n for n in range(40)))[:128]
    assert len(reel32) == 32 and len(reel128) == 128
    layout = [("V", "A001C003"), ("A", reel32), ("A2", reel128), ("AA", "A001C004"),
              ("AA/V", reel32), ("B", "A001C005"), ("NONE", "BL"), ("V2", "GFX_0001")]
    record = edl.at("01:00:50:00")
    for i, (track, reel) in enumerate(layout):
        length = 45 + 38 * i
        length = edl.to_top(record, length) if i == 2 else length
        source = 0 if reel == "BL" else edl.at("12:00:00:00") + 1000 * i
        record = edl.cut("%06d" % (i + 1), reel, track, record, length, source)
        edl.note("* FROM CLIP NAME:  %s.mov" % reel[:40])
    # A transition field left blank before its duration: `V          012`.
    edl.cut("%06d" % (len(layout) + 1), "A001C006", "V", record, 90, edl.at("12:30:00:00"), "     012")
    assert " V          012 " in edl.lines[-1]
    return edl, edl.data("ascii", "\n")


def events_past_999():
    edl = Edl(25, 0)
    edl.note("TITLE: REEL 5 LOCKED")
    edl.fcm("FCM: NON-DROP FRAME")
    edl.note("")
    record = edl.at("05:00:00:00")
    for i, length in enumerate(lengths(11, 50, 200, 59)):
        length = edl.to_top(record, length) if i == 2 else length
        number, reel, source = str(995 + i), "R5_%03d" % (i + 20), edl.at("08:00:00:00") + 900 * i
        if number == "1000":
            record = edl.dissolve(number, "V", record, length, "R5_%03d" % (i + 19), source - 400,
                                  reel, source, 25, lead=10)
        else:
            record = edl.cut(number, reel, "V", record, length, source)
        edl.note("* FROM CLIP NAME:  %s.mxf" % reel)
    return edl, edl.data("ascii", "\n")


def source_bad_25():
    edl = Edl(25, 0)
    edl.note("TITLE: DOKU 3 ROHSCHNITT")
    edl.note("")
    record = edl.at("10:00:00:00")
    for i, length in enumerate(lengths(8, 60, 200, 73)):
        length = edl.to_top(record, length) if i == 2 else length
        if i == 3:  # an NTSC archive clip: frame 27 does not exist at 25
            sources = ("07:14:22:27", "07:14:25:10")
        else:
            sources = edl.at("03:00:00:00") + 1200 * i
        edl.line("%03d" % (i + 1), "ARCHIV" if i == 3 else "D%03d" % i, "V", "C", sources, record, record + length)
        edl.keep("%03d" % (i + 1), "ARCHIV" if i == 3 else "D%03d" % i, "V", record, record + length)
        record += length
    return edl, edl.data("ascii", "\n")


def source_skipped_29d():
    edl = Edl(30, 2, "::;")
    edl.note("TITLE: PROMO 30 V2")
    edl.fcm("FCM: DROP FRAME")
    edl.note("")
    record = edl.at("01:00:30;00")
    for i, length in enumerate(lengths(9, 80, 300, 83)):
        length = edl.to_top(record, length) if i == 2 else length
        number = "%03d" % (i + 1)
        if i == 4:  # 00:01:00;00 is a label drop frame skips
            sources = ("00:01:00;00", edl.tc(edl.at("00:01:00;02") + length))
        else:
            sources = edl.at("02:00:00;00") + 700 * i
        edl.line(number, "P%03d" % i, "V", "C", sources, record, record + length)
        edl.keep(number, "P%03d" % i, "V", record, record + length)
        record += length
    return edl, edl.data("ascii", "\r\n")


def lost_events():
    edl = Edl(30, 2, "::;")
    edl.note("TITLE: SPOT 60 HAND EDIT")
    edl.fcm("FCM: DROP FRAME")
    edl.note("")
    record = edl.at("01:00:40;00")
    for i, length in enumerate(lengths(12, 100, 400, 91)):
        length = edl.to_top(record, length) if i == 2 else length
        number, reel, source = "%03d" % (i + 1), "S%03d" % (i + 1), edl.at("02:00:00;00") + 1000 * i
        s_in, s_out = edl.tc(source), edl.tc(source + length)
        r_in, r_out = edl.tc(record), edl.tc(record + length)
        if i == 3:  # record out typed before its in
            edl.broken(cmx_line(number, reel, "V", "C", [s_in, s_out, r_out, r_in]), "V", [r_out, r_in])
        elif i == 5:  # record out missing
            edl.broken(cmx_line(number, reel, "V", "C", [s_in, s_out, r_in]), "V", [r_in])
        elif i == 7:  # a record in drop frame skips
            edl.broken(cmx_line(number, reel, "V", "C", [s_in, s_out, "01:01:00;00", r_out]), "V",
                       ["01:01:00;00", r_out])
        elif i == 9:  # a 61st minute
            edl.broken(cmx_line(number, reel, "V", "C", [s_in, s_out, "01:61:00;10", r_out]), "V",
                       ["01:61:00;10", r_out])
        elif i == 11:  # the copy stopped here, without even a line end
            edl.broken(cmx_line(number, reel, "V", "C", [s_in, s_out[:7]]), "V")
        else:
            edl.cut(number, reel, "V", record, length, source)
            edl.note("* FROM CLIP NAME:  %s_TK1" % reel)
        record += length
    data = edl.data("ascii", "\r\n", last_end=False)
    assert data.endswith(edl.lines[-1].encode("ascii"))
    return edl, data


def mixed_line_ends():
    edl = Edl(24, 0)
    edl.note("TITLE: SHARED CUT 14")
    edl.fcm("FCM: NON-DROP FRAME")
    edl.note("")
    record = edl.at("01:00:30:00")
    for i, length in enumerate(lengths(12, 36, 160, 43)):
        length = edl.to_top(record, length) if i == 2 else length
        record = edl.cut("%03d" % (i + 1), "M%03d" % (i % 5), "V", record, length, edl.at("04:00:00:00") + 600 * i)
        edl.note("* FROM CLIP NAME:  M%03d.mov" % (i % 5))
    audio = edl.at("01:00:00:00")
    for i, length in enumerate((400, 310, 505)):
        audio = edl.cut("%03d" % (13 + i), "DIA%d" % i, "A", audio, length, edl.at("00:10:00:00") + 50 * i)
    data = edl.data("ascii", ["\n", "\r\n", "\r", "\n", "\r\r\n", "\r", "\r\n"])
    assert b"\r\r\n" in data and b"\r\n" in data and re.search(rb"\r[^\n\r]", data) and re.search(rb"[^\r]\n", data)
    return edl, data


def cut_at(nominal, drop, start, count, base, spread, step, separators=":::", title=None, fcm=None,
           sizes=None):
    """A plain cut on V, for the lists whose only point is the rate they are read at."""
    edl = Edl(nominal, drop, separators)
    if title:
        edl.note("TITLE: " + title)
    if fcm:
        edl.fcm(fcm)
    if title or fcm:
        edl.note("")
    record = edl.at(start)
    source = edl.at(start) + nominal * 3600
    for i, length in enumerate(sizes or lengths(count, base, spread, step)):
        length = edl.to_top(record, length) if i == 2 else length
        record = edl.cut("%03d" % (i + 1), "R%03d" % (i % 17), "V", record, length, source + 777 * i)
        edl.note("* FROM CLIP NAME:  R%03d_take%d" % (i % 17, i % 3 + 1))
    return edl


def max_label(edl):
    return max(int(re.split(r"[:;.]", field)[3]) for field in edl.record_fields)


def rate_24():
    edl = cut_at(24, 0, "01:00:00:00", 12, 20, 140, 37)
    assert max_label(edl) == 23
    return edl, edl.data()


def rate_25():
    edl = cut_at(25, 0, "10:00:00:00", 12, 25, 150, 41)
    assert max_label(edl) == 24
    return edl, edl.data()


def rate_29d():
    edl = cut_at(30, 2, "00:59:30.00", 14, 60, 320, 73, "::.", "NEWS OPEN", "FCM: DROP FRAME")
    assert max_label(edl) == 29
    return edl, edl.data("ascii", "\r\n")


def rate_50():
    edl = cut_at(50, 0, "01:00:00:00", 12, 50, 300, 71)
    assert max_label(edl) == 49
    return edl, edl.data()


def rate_59d():
    edl = cut_at(60, 4, "00:59:40;00", 14, 120, 600, 149, "::;", fcm="FCM: DROP FRAME")
    assert max_label(edl) == 59
    return edl, edl.data("utf-8", "\r\n", bom=True)


def rate_120():
    edl = cut_at(120, 0, "01:00:00:000", 10, 150, 700, 233)
    assert max_label(edl) == 119
    return edl, edl.data()


def rate_119d():
    edl = cut_at(120, 8, "00:59:50;000", 12, 300, 1400, 311, "::;", "HFR TEST", "FCM: DROP FRAME")
    assert max_label(edl) >= 100
    return edl, edl.data()


def semicolons():
    edl = cut_at(30, 2, "01:00:00;00", 14, 50, 300, 67, "::;")
    assert max_label(edl) >= 25
    return edl, edl.data("ascii", "\r\n")


def r29n_fcm_drop():
    edl = cut_at(30, 2, "00:59:45:00", 12, 90, 300, 79, ":::", "PROMO 15", "FCM:  Drop Frame")
    return edl, edl.data("ascii", "\n")


def r29d_fcm_nondrop():
    # 505 + 695 frames from 01:00:20:00 end on 01:01:00:00.
    sizes = [505, 695] + lengths(10, 90, 280, 61)
    edl = cut_at(30, 0, "01:00:20:00", 0, 0, 1, 1, ":::", "WEB CUT", "FCM: NON-DROP FRAME", sizes)
    # A cut point on 01:01:00:00: fine non-drop, a label 29d does not have.
    assert "01:01:00:00" in edl.record_fields and frame_of("01:01:00:00", 30, 2) is None
    return edl, edl.data("ascii", "\n")


def ntsc_read_as_pal():
    edl = Edl(30, 0)
    edl.note("TITLE: NTSC MASTER")
    edl.note("")
    cuts = ["01:00:00:00", "01:00:03:10", "01:00:07:20", "01:00:12:05", "01:00:16:00", "01:00:19:29"]
    for i, (a, b) in enumerate(zip(cuts, cuts[1:])):
        edl.cut("%03d" % (i + 1), "N%03d" % i, "V", edl.at(a), edl.at(b) - edl.at(a), edl.at("02:00:00:00") + 500 * i)
    assert max_label(edl) == 29 and sorted(int(f[-2:]) for f in edl.record_fields)[-2] <= 24
    return edl, edl.data()


def gaps_overlaps():
    edl = Edl(48, 0)
    edl.note("TITLE: HFR REEL 3 ASSEMBLY")
    edl.note("")
    events = [  # file order: V and A interleaved, a pick-up listed after later cuts, two stacked starts
        ("001", "V", "01:00:00:00", "01:00:04:12"), ("002", "V", "01:00:04:12", "01:00:09:40"),
        ("013", "A", "01:00:00:00", "01:00:20:00"), ("003", "V", "01:00:10:00", "01:00:15:00"),
        ("004", "V", "01:00:14:30", "01:00:20:00"), ("005", "V", "01:00:20:00", "01:00:30:00"),
        ("006", "V", "01:00:22:00", "01:00:25:47"), ("014", "A", "01:00:18:00", "01:00:40:00"),
        ("007", "V", "01:00:30:00", "01:00:36:00"), ("008", "V", "01:00:42:00", "01:00:50:00"),
        ("009", "V", "01:00:36:00", "01:00:41:00"), ("010", "V", "01:00:50:00", "01:00:55:00"),
        ("011", "V", "01:00:50:00", "01:00:52:00"), ("015", "A", "01:00:45:00", "01:01:00:00"),
        ("012", "V", "01:00:56:17", "01:01:02:33")]
    for i, (number, track, a, b) in enumerate(events):
        edl.cut(number, "H%s" % number, track, edl.at(a), edl.at(b) - edl.at(a), edl.at("03:00:00:00") + 4000 * i)
        edl.note("* FROM CLIP NAME:  H%s.R3D" % number)
    assert max_label(edl) == 47
    return edl, edl.data("ascii", "\n")


def long_23976():
    edl = Edl(24, 0)
    edl.note("TITLE: FEATURE REEL 2 LOCK")
    edl.fcm("FCM: NON-DROP FRAME")
    edl.note("")
    start = edl.at("00:59:52:00")
    edl.cut("001", "BL", "V", start, edl.at("01:00:00:00") - start, 0)
    record = edl.at("01:00:00:00")
    for number in range(2, 302):
        length = 18 + (number * 59) % 230
        if number % 97 == 0:
            record += 7  # a hole left in the cut
        reel = "A%03dC%03d" % (number % 13 + 1, number % 29 + 1)
        source = edl.at("01:00:00:00") * (1 + number % 5) + (number * 1013) % 40000
        if number % 25 == 0:
            record = edl.dissolve("%03d" % number, "V", record, length, reel + "X", source - 300, reel,
                                  source, 24, lead=6)
        else:
            record = edl.cut("%03d" % number, reel, "V", record, length, source)
        edl.note("* FROM CLIP NAME:  %s_take%d.mov" % (reel, number % 4 + 1))
    number, audio = 302, edl.at("01:00:00:00")
    for track, step in (("A", 0), ("A2", 1)):
        position = audio + 48 * step
        for i in range(12):
            length = 1400 + (i * 331 + step * 97) % 1200
            edl.cut("%03d" % number, "DX%02d" % i, track, position, length, edl.at("00:00:10:00") + i)
            position += length + (-36 if i % 4 == 1 else 24 if i % 4 == 3 else 0)
            number += 1
    return edl, edl.data("ascii", "\r\n")


# name, writer, runs: (what the golden name adds to edl-dialect-NAME, the arguments before --edl -).
# The exit status follows from the list: 1 when it has lost events or the rate given is too low.
SMPTE = ["--notation", "smpte"]
FIXTURES = [
    ("mac-cr", mac_cr, [("", [])]),
    ("macroman-lf", macroman_lf, [("", [])]),
    ("win-bom-crlf", win_bom_crlf, [("", []), ("-smpte", SMPTE)]),
    ("latin1-25", latin1_25, [("", [])]),
    ("notes", notes, [("", [])]),
    ("frame-sources", frame_sources, [("", [])]),
    ("avid-fcm-switch", avid_fcm_switch, [("", []), ("-r30", ["-r", "30"])]),
    ("unknown-fcm", unknown_fcm, [("", []), ("-r23d", ["-r", "23d"])]),
    ("wide-fields", wide_fields, [("", [])]),
    ("events-past-999", events_past_999, [("", [])]),
    ("source-bad-25", source_bad_25, [("", [])]),
    ("source-skipped-29d", source_skipped_29d, [("", [])]),
    ("lost-events", lost_events, [("", [])]),
    ("mixed-line-ends", mixed_line_ends, [("", [])]),
    ("rate-24", rate_24, [("", [])]),
    ("rate-25", rate_25, [("", [])]),
    ("rate-29d", rate_29d, [("", [])]),
    ("rate-50", rate_50, [("", [])]),
    ("rate-59d", rate_59d, [("", [])]),
    ("rate-120", rate_120, [("", [])]),
    ("rate-119d", rate_119d, [("", [])]),
    ("semicolons", semicolons, [("", []), ("-r29n", ["-r", "29n"])]),
    ("r29n-fcm-drop", r29n_fcm_drop, [("", ["-r", "29n"])]),
    ("r29d-fcm-nondrop", r29d_fcm_nondrop, [("", ["-r", "29d"])]),
    ("ntsc-read-as-pal", ntsc_read_as_pal, [("", ["-r", "25"])]),
    ("gaps-overlaps", gaps_overlaps, [("", [])]),
    ("long-23976", long_23976, [("", ["-r", "23n"] + SMPTE)]),
]


def main(folder):
    check_counting()
    for name, write, runs in FIXTURES:
        edl, data = write()
        (folder / ("dialect-%s.edl" % name)).write_bytes(data)
        for suffix, args in runs:
            given = args[args.index("-r") + 1] if "-r" in args else None
            chosen = edl.rate(given)
            if chosen and RATES[chosen[0]][0] in (24, 30, 60, 120) and (
                    edl.header_fcm or any(";" in field for field in edl.record_fields)):
                # Where the list says drop or non-drop, its figures must show which was taken.
                assert edl.drop_matters(), name
            if chosen:
                out, status = edl.report(*chosen, "--notation" in args), 1 if edl.lost else 0
            else:
                out, status = "", 1  # a rate too low for the labels: nothing printed at all
            golden = "edl-dialect-%s%s" % (name, suffix)
            (folder / (golden + ".out")).write_bytes(out.encode("utf-8"))
            print("vantrel_golden(%s dialect-%s.edl %d %s)" % (golden, name, status,
                                                               " ".join(args + ["--edl", "-"])))


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
