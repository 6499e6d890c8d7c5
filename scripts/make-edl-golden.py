#!/usr/bin/python3
"""Writes the EDL golden files: a cut as an editing system exports it and the report an editor's
own figures give for it, worked out here independently of Vantrel, with the usual drop-frame
recipe.

    scripts/make-edl-golden.py tests/golden

cut-29d.edl: 29.97 drop frame, CRLF, 216 events on V (dissolves as two lines of one event, motion
effects, clip-name and source-file comments, two gaps) and an A track with a gap and an overlap.
cut-25.edl: 25 fps non-drop, LF, no header, 30 events.
"""
import pathlib
import sys


def label(frame, nominal, drop):
    """The timecode label of a real frame: drop frame adds `drop` labels a minute but every tenth."""
    if not drop:
        return frame
    per_ten, per_minute = nominal * 600 - drop * 9, nominal * 60 - drop
    blocks, rest = divmod(frame, per_ten)
    return frame + drop * 9 * blocks + (drop * ((rest - drop) // per_minute) if rest > drop else 0)


def timecode(frame, nominal, drop, separator):
    n = label(frame, nominal, drop)
    seconds, frames = divmod(n, nominal)
    return "%02d:%02d:%02d%s%02d" % (seconds // 3600, seconds // 60 % 60, seconds % 60, separator, frames)


class Cut:
    def __init__(self, nominal, drop):
        self.nominal, self.drop = nominal, drop
        self.lines, self.events, self.tracks = [], [], {}

    def tc(self, frame, separator=None):
        return timecode(frame, self.nominal, self.drop, separator or (";" if self.drop else ":"))

    def event(self, number, reel, track, record_in, record_out, source_in, transition="C", lead=None):
        """One event; `lead` makes it a dissolve: a cut line of `lead` frames, then the dissolve."""
        source_out = source_in + (record_out - record_in)
        if lead is not None:
            self.line(number, reel + "X", track, "C", source_in, source_in + lead, record_in, record_in + lead)
            source_in, start = source_in + lead, record_in + lead
        else:
            start = record_in
        self.line(number, reel, track, transition, source_in, source_out, start, record_out)
        self.events.append((number, reel, track, record_in, record_out))
        self.tracks.setdefault(track, []).append((number, record_in, record_out))

    def line(self, number, reel, track, transition, s_in, s_out, r_in, r_out):
        self.lines.append("%03d  %-8s %-5s %-8s %s %s %s %s" % (
            number, reel, track, transition, self.tc(s_in), self.tc(s_out), self.tc(r_in), self.tc(r_out)))

    def report(self, rate_row):
        tc = lambda frame: self.tc(frame, ".")
        rows = [rate_row] + [["event", "%03d" % n, reel, track, tc(a), tc(b), tc(b - a), str(b - a)]
                for n, reel, track, a, b in self.events]
        for track, events in self.tracks.items():
            events = sorted(events, key=lambda e: e[1])
            total = sum(b - a for _, a, b in events)
            rows.append(["track", track, str(len(events)), tc(total), str(total), tc(events[0][1]),
                         tc(max(b for _, _, b in events))])
            for (n1, _, out), (n2, start, _) in zip(events, events[1:]):
                if start != out:
                    kind = "gap" if start > out else "overlap"
                    rows.append([kind, track, "%03d" % n1, "%03d" % n2, tc(min(out, start)),
                                 tc(max(out, start)), tc(abs(start - out)), str(abs(start - out))])
        first = min(e[3] for e in self.events)
        last = max(e[4] for e in self.events)
        rows.append(["total", tc(last - first), str(last - first)])
        return "".join("\t".join(row) + "\n" for row in rows)


def drop_frame_cut():
    cut = Cut(30, 2)
    cut.lines += ["TITLE: REEL 2 LOCKED CUT V12", "FCM: DROP FRAME", ""]
    record = 107892  # 01:00:00;00
    for number in range(1, 217):
        length = 24 + (number * 37) % 190
        if number in (50, 151):
            record += 12  # a gap left in the cut
        source = 107892 * (1 + number % 4) + (number * 1009) % 50000
        reel = "A%03dC%03d" % (number % 9 + 1, number % 23 + 1)
        if number % 10 == 0:
            cut.event(number, reel, "V", record, record + length, source, "D    030", lead=8)
        else:
            cut.event(number, reel, "V", record, record + length, source)
        if number % 7 == 0:
            cut.lines.append("M2   %-8s       %05.1f                %s" % (reel, 48.0, cut.tc(source)))
        cut.lines.append("* FROM CLIP NAME:  %s_take%d.mov" % (reel, number % 5 + 1))
        if number % 3 == 0:
            cut.lines.append("* SOURCE FILE: %s.MXF" % reel)
        record += length
    music = 107892
    for number, length in ((217, 1800), (218, 2400), (219, 900)):
        cut.event(number, "MUSIC%02d" % (number - 216), "A", music, music + length, 0)
        music += length + (30 if number == 217 else -60)
    return cut


def non_drop_cut():
    cut = Cut(25, 0)
    record = 90000
    for number in range(1, 31):
        length = 50 + (number * 53) % 400
        cut.event(number, "TAPE%02d" % (number % 6), "V", record, record + length, 36000 * number)
        record += length
    return cut


if __name__ == "__main__":
    folder = pathlib.Path(sys.argv[1])
    df, ndf = drop_frame_cut(), non_drop_cut()
    (folder / "cut-29d.edl").write_bytes(("\r\n".join(df.lines) + "\r\n").encode("ascii"))
    # Read with -r 29n: the FCM line turns the rate given into its drop-frame twin.
    (folder / "edl-cut-29d.out").write_text(
        df.report(["rate", "29d", "the rate given, drop frame by its FCM line"]))
    (folder / "cut-25.edl").write_text("\n".join(ndf.lines) + "\n")
    # Read with -r 25, which holds its labels; the file has no FCM line.
    (folder / "edl-cut-25.out").write_text(ndf.report(["rate", "25", "the rate given"]))
