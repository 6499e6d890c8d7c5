#!/usr/bin/python3
"""Writes the picture of a display button, such as DisplayButtonRealTime.svg, in the style of the
others: a small symbol on the left and two letters in DejaVu Sans Bold, drawn as outlines by
rate-button-svg.py's outline(), so the picture looks the same without the font installed.

    scripts/display-button-svg.py RealTime > resources/images/DisplayButtonRealTime.svg

Needs python3-fonttools and fonts-dejavu-core (Debian's python, /usr/bin/python3).
"""
import importlib.util
import pathlib
import sys

from fontTools.ttLib import TTFont

source = importlib.util.spec_from_file_location(
    "rate_button_svg", pathlib.Path(__file__).with_name("rate-button-svg.py"))
rate_button = importlib.util.module_from_spec(source)
source.loader.exec_module(rate_button)

INK = "#373F46"
LETTER_SCALE = 0.006028  # the 12.35 px letters of "TC", "FR" and "MB"
LETTER_STEP = 9.3
# Each state: its title, its two letters and the symbol drawn in the 12 px left of them.
STATES = {
    "Film": ("Display: film length", "FL",
             '<path fill="%s" fill-rule="evenodd" d="M0 7H12V16H0Z M1 8H3V9H1Z M1 14H3V15H1Z '
             'M5 8H7V9H5Z M5 14H7V15H5Z M9 8H11V9H9Z M9 14H11V15H9Z M1 10H5V13H1Z M7 10H11V13H7Z"/>'
             % INK),
    "FeetFrames": ("Display: feet and frames", "FF",
                   '<path fill="%s" fill-rule="evenodd" d="M1 6H8V17H1Z M2 7H3V8H2Z M2 15H3V16H2Z '
                   'M6 7H7V8H6Z M6 15H7V16H6Z M2 9H7V14H2Z"/>' % INK),
    "Samples": ("Display: audio samples", "SA",
                '<path fill="%s" d="M0 10H1.5V13H0Z M2.5 8H4V15H2.5Z M5 6H6.5V17H5Z M7.5 9H9V14H7.5Z '
                'M10 10.5H11.5V12.5H10Z"/>' % INK),
    "RealTime": ("Display: real time", "RT",
                 '<circle cx="5.5" cy="12" r="4.5" fill="none" stroke="%s" stroke-width="1.6"/>'
                 '<path d="M4 5.5H7 M5.5 6V7.5 M5.5 9.5V12H7.5" fill="none" stroke="%s" '
                 'stroke-width="1.2"/>' % (INK, INK)),
    "Rational": ("Display: rational seconds", "RS",
                 '<path d="M9.5 6.5L2.5 17.5" fill="none" stroke="%s" stroke-width="1.6"/>'
                 '<path fill="%s" d="M0.5 6.5H4V10H0.5Z M8 13.5H11.5V17H8Z"/>' % (INK, INK)),
    "Ticks": ("Display: Premiere ticks", "TK",
              '<path d="M0.5 16.5H11.5 M1.5 16V9 M4.25 16V12 M7 16V9 M9.75 16V12" fill="none" '
              'stroke="%s" stroke-width="1.2"/>' % INK),
}


def picture(state):
    title, letters, symbol = STATES[state]
    font = TTFont(rate_button.FONT)
    letter_path = rate_button.outline(font, letters, 19.4, LETTER_STEP, LETTER_SCALE)
    return rate_button.button(title, [f'<g transform="translate(5,0)">{symbol}</g>',
                                       f'<path fill="{INK}" d="{letter_path}"/>'])


if __name__ == "__main__":
    sys.stdout.write(picture(sys.argv[1]))
