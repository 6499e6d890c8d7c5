#!/usr/bin/python3
"""Writes the picture of a rate button, such as DisplayButton59d.svg, in the style of the others:
the rate's digits in DejaVu Sans Bold, a drop-frame "d" in orange with its dot, a non-drop "n" in
grey. The glyphs become outlines, so the picture looks the same without the font installed.

    scripts/rate-button-svg.py 59d "Rate 59.94 fps drop-frame" > resources/images/DisplayButton59d.svg

Needs python3-fonttools and fonts-dejavu-core (Debian's python, /usr/bin/python3).
"""
import sys

from fontTools.pens.svgPathPen import SVGPathPen
from fontTools.pens.transformPen import TransformPen
from fontTools.ttLib import TTFont

FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"
BASELINE = 16.0
SMALL_BASELINE = 15.3  # three smaller digits sit as high as two large ones
LETTER_SCALE = 0.004517  # 9.25 px suffix letter
# By suffix letter ("" for none) and number of digits: where the first digit and the letter
# start, the step from digit to digit (advance plus a little spacing) and the digits' scale
# (12.35 px digits for two, 9.6 px for three, which must leave room for the letter).
LAYOUT = {
    ("", 2): (13.05, None, 9.63, 0.006028),
    ("d", 2): (9.40, 28.15, 9.63, 0.006028),
    ("n", 2): (9.66, 27.22, 9.63, 0.006028),
    ("", 3): (11.45, None, 7.2, 0.0047),
    ("d", 3): (6.6, 28.2, 7.2, 0.0047),
    ("n", 3): (6.6, 28.6, 7.2, 0.0047),
}
LETTER_COLOUR = {"d": "#D0782A", "n": "#5C6670"}


def outline(font, text, origin, step, scale, baseline=BASELINE):
    glyphs = font.getGlyphSet()
    cmap = font.getBestCmap()
    pen = SVGPathPen(glyphs, ntos=lambda v: ("%.2f" % v).rstrip("0").rstrip("."))
    for index, char in enumerate(text):
        x = origin + index * step
        glyphs[cmap[ord(char)]].draw(TransformPen(pen, (scale, 0, 0, -scale, x, baseline)))
    return pen.getCommands()


def button(title, shapes):
    """The button's frame, with its title and the shapes drawn on it, as an SVG document."""
    lines = [
        '<?xml version="1.0" encoding="UTF-8"?>',
        '<svg xmlns="http://www.w3.org/2000/svg" version="1.2" baseProfile="tiny" width="44" '
        'height="22" viewBox="0 0 44 22">',
        f"  <title>{title}</title>",
        '  <rect x="0.5" y="0.5" width="43" height="21" rx="4" ry="4" fill="#E1E4EA" '
        'stroke="#78808C" stroke-width="1"/>',
        '  <path d="M4.5 1.5H39.5" stroke="#F4F5F8" stroke-width="1" fill="none"/>',
    ]
    return "\n".join(lines + ["  " + shape for shape in shapes] + ["</svg>"]) + "\n"


def picture(label, title):
    font = TTFont(FONT)
    letter = label[-1] if label[-1] in "dn" else ""
    digits = label[:-1] if letter else label
    digit_origin, letter_origin, digit_step, digit_scale = LAYOUT[(letter, len(digits))]
    baseline = BASELINE if len(digits) < 3 else SMALL_BASELINE
    digit_path = outline(font, digits, digit_origin, digit_step, digit_scale, baseline)
    shapes = [f'<path fill="#373F46" d="{digit_path}"/>']
    if letter:
        path = outline(font, letter, letter_origin, 0, LETTER_SCALE)
        shapes.append(f'<path fill="{LETTER_COLOUR[letter]}" d="{path}"/>')
    if letter == "d":
        shapes.append('<circle cx="38" cy="6" r="2" fill="#D0782A"/>')
    return button(title, shapes)


if __name__ == "__main__":
    sys.stdout.write(picture(sys.argv[1], sys.argv[2]))
