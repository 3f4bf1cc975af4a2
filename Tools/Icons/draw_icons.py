#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Draws the icons of PixelWeft: writes Resources/Icons/*.svg from the shapes below and renders them to
the resource names, once and twice the size (needs rsvg-convert of librsvg2-bin and the DejaVu fonts). The signs of
the program and of its files for the desktop go to Resources/Desktop/icons, in the sizes that menus and file managers
ask for.

One family: a field of 24 x 24 with a margin of 3, lines of 1.75 with round ends in a light ink, and the
accent for what the action does. They are shown on dark buttons and menus."""
import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[2]
SOURCES = ROOT / "Resources/Icons"
BITMAPS = ROOT / "Resources/Bin/bitmaps"
DESKTOP = ROOT / "Resources/Desktop/icons"
DESKTOP_SIZES = [16, 22, 24, 32, 48, 64, 128, 256]
INK, ACCENT = "#eceef0", "#66bfef"
SIZE = 24
OTHER_SIZES = {"merge_button": 32, "arrow_up": 10, "arrow_down": 10, "check": 12, "radio": 12}


def ink(path, **more):
    return shape(path, INK, **more)


def accent(path, **more):
    return shape(path, ACCENT, **more)


def shape(path, colour, fill=False, dash=None, width=None):
    if fill:
        return f'<path d="{path}" fill="{colour}"/>'
    dashes = f' stroke-dasharray="{dash}"' if dash else ""
    wide = f' stroke-width="{width}"' if width else ""
    return f'<path d="{path}" stroke="{colour}"{dashes}{wide}/>'


def box(x, y, w, h):
    return f"M{x} {y}h{w}v{h}h{-w}z"


SHEET = "M6 3.5h8l4 4v13H6z M14 3.5v4h4"
LENS = "M10.5 4a6.5 6.5 0 1 0 0 13a6.5 6.5 0 1 0 0-13z M15.3 15.3L20.5 20.5"


def align(line, bars):
    return [accent(line)] + [ink(box(*bar)) for bar in bars]


def mirrored(parts):
    return ['<g transform="matrix(-1 0 0 1 24 0)">'] + parts + ["</g>"]


def turned(parts, degrees):
    return [f'<g transform="rotate({degrees} 12 12)">'] + parts + ["</g>"]


LEFT = align("M4 3.5v17", [(7.5, 6, 12, 4), (7.5, 14, 7.5, 4)])
CENTRE = align("M12 3v3 M12 10v4 M12 18v3", [(5, 6, 14, 4), (8, 14, 8, 4)])
SPREAD = [accent("M4 3.5v17 M20 3.5v17"), ink(box(9.5, 6, 5, 12))]
TURN = [ink(box(4, 11, 9, 9)), accent("M8 6.5h5a6 6 0 0 1 6 6v2 M16 12l3 3 3-3")]
UP = [ink("M3 17h18L12 6z", fill=True)]
BACK = [ink("M8 4.5L4 8.5l4 4 M4.5 8.5h9.5a5.5 5.5 0 0 1 0 11H9")]
NEXT = [ink(box(3.5, 5, 17, 14)), accent("M10 8.5l4 3.5-4 3.5")]

ICONS = {
    "canvassize": [ink(box(4, 4, 16, 16)), accent("M9 15l6-6 M11.5 8.5h4v4 M12.5 15.5h-4v-4")],
    "fileopen": [ink("M3.5 19V5.5h6l2 2.5h8v3 M3.5 19l3-8h15l-3 8z")],
    "filesave": [ink("M4 4h12.5L20 7.5V20H4z M8 4v5h7V4"), accent("M8 20v-6h8v6")],
    "filesaveas": [ink("M12.5 20.5H6v-17h8l4 4v3 M14 3.5v4h4"), accent("M14 16h7 M18 13l3 3-3 3")],
    "filenew": [ink(SHEET), accent("M12 11v6 M9 14h6")],
    "zoomin": [ink(LENS), accent("M10.5 7.5v6 M7.5 10.5h6")],
    "zoomout": [ink(LENS), accent("M7.5 10.5h6")],
    "grid": [ink(box(4, 4, 16, 16)), accent("M9.3 4v16 M14.7 4v16 M4 9.3h16 M4 14.7h16")],
    "snap_grid": [ink("M6 4v8a6 6 0 0 0 12 0V4h-4v8a2 2 0 0 1-4 0V4z"), accent("M6 8h4 M14 8h4 M12 20.5v1")],
    "cropcanvas": [ink("M7 3v14h14"), accent("M3 7h14v14")],
    "alignleft": LEFT,
    "alignright": mirrored(LEFT),
    "aligntop": turned(LEFT, 90),
    "alignbottom": turned(LEFT, -90),
    "aligncenter": CENTRE,
    "aligncmiddle": turned(CENTRE, 90),
    "aligndistrhorz": SPREAD,
    "aligndistrvert": turned(SPREAD, 90),
    "rotateright90": TURN,
    "rotateleft90": mirrored(TURN),
    "delete": [ink("M5 7h14 M9.5 7V4h5v3 M6.5 7l1 13.5h9l1-13.5"), accent("M10.3 11v6 M13.7 11v6")],
    "selectionmode": [ink(box(4, 4, 16, 16), dash="3 2.33"), accent(box(8, 8, 8, 8), fill=True)],
    "selectionmode_none": [ink(box(4, 4, 16, 16), dash="3 2.33"), ink("M8.5 15.5l7-7")],
    "selectionmode_flash": [ink(box(4, 4, 16, 16), dash="3 2.33"),
                            accent("M13 6.5l-5 6.5h3.4L10.5 17.5l5.5-7h-3.6z", fill=True)],
    "undo": BACK,
    "redo": mirrored(BACK),
    "imagenext": NEXT,
    "imageprev": mirrored(NEXT),
    "arrow_up": UP,
    "arrow_down": turned(UP, 180),
    "check": [shape("M5 12.5l5 5L19.5 6.5", INK, width=3.5)],
    "radio": [ink("M12 6.5a5.5 5.5 0 1 0 0 11a5.5 5.5 0 1 0 0-11z", fill=True)],
    "merge": [ink("M4 5.5h3l5 6.5h8 M4 18.5h3l5-6.5"), accent("M17 9l3 3-3 3")],
    "merge_button": [ink("M3 5.5h4.5l4.5 6.5 M3 18.5h4.5l4.5-6.5"), accent("M12 12h9 M17.5 8.5l3.5 3.5-3.5 3.5"),
                     accent("M12 10a2 2 0 1 0 0 4a2 2 0 1 0 0-4z", fill=True)],
    "gear": [ink("M12 5.5a6.5 6.5 0 1 0 0 13a6.5 6.5 0 1 0 0-13z M12 2.8v2.7 M12 18.5v2.7 M2.8 12h2.7 "
                 "M18.5 12h2.7 M5.5 5.5l1.9 1.9 M16.6 16.6l1.9 1.9 M5.5 18.5l1.9-1.9 M16.6 7.4l1.9-1.9"),
             accent("M12 9.5a2.5 2.5 0 1 0 0 5a2.5 2.5 0 1 0 0-5z")],
}


def cloth():
    """The sign of the program: threads of light that pass over and under each other."""
    parts = ['<rect x="1" y="1" width="22" height="22" rx="5" fill="#16181c"/>']
    threads = ["#ff5c5c", "#ffd25c", "#6fdc7a", "#66bfef"]
    for i, colour in enumerate(threads):
        parts.append(f'<rect x="{4.4 + 4 * i}" y="4" width="3.2" height="16" rx="1" fill="{colour}"/>')
    for j in range(4):
        for i in range(4):
            if (i + j) % 2:
                parts.append(f'<rect x="{3.9 + 4 * i}" y="{4.4 + 4 * j}" width="4.2" height="3.2" '
                             'rx="0.8" fill="#eceef0"/>')
    return parts


PAPER = "M5.5 1.5h9l5 5v16h-14z"
FOLD = "M14.5 1.5v5h5z"


def paper(parts):
    """A file of the program: a dark sheet as its sign is, with what the file holds."""
    return [f'<path d="{PAPER}" fill="#16181c" stroke="#5b6270" stroke-width="0.9"/>',
            f'<path d="{FOLD}" fill="#5b6270"/>'] + parts


def mapping_file():
    """The picture, and on it the rectangles of fixtures."""
    return paper(['<rect x="7.5" y="9" width="10" height="11" rx="0.8" fill="#2d6f99"/>',
                  '<rect x="8.6" y="10.2" width="2.4" height="8.6" rx="0.4" fill="#6fdc7a"/>',
                  '<rect x="12" y="10.2" width="4.4" height="2.2" rx="0.4" fill="#ffd25c"/>',
                  '<rect x="12" y="13.4" width="4.4" height="2.2" rx="0.4" fill="#ffd25c"/>',
                  '<rect x="12" y="16.6" width="4.4" height="2.2" rx="0.4" fill="#ff5c5c"/>'])


def library_file():
    """Fixtures in a list, each with its pixels."""
    parts = []
    for row, colour in enumerate(["#ff5c5c", "#ffd25c", "#6fdc7a"]):
        for column in range(4):
            parts.append(f'<rect x="{7.4 + 2.6 * column:.1f}" y="{9.2 + 3.8 * row:.1f}" width="2.2" height="2.4" '
                         f'rx="0.4" fill="{colour}"/>')
    return paper(parts)


DESKTOP_ICONS = {
    "apps/pixelweft": cloth,
    "mimetypes/application-x-pixelweft-mapping": mapping_file,
    "mimetypes/application-x-pixelweft-library": library_file,
}


def svg(parts, width=24, height=24):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
            f'viewBox="0 0 {width} {height}">\n'
            '<g fill="none" stroke-width="1.75" stroke-linecap="round" stroke-linejoin="round">\n'
            + "\n".join(parts) + "\n</g>\n</svg>\n")


def render(source, target, width, height):
    """Once and twice the size."""
    for scale, suffix in [(1, ""), (2, "@2x")]:
        subprocess.run(["rsvg-convert", "-w", str(scale * width), "-h", str(scale * height),
                        "-o", f"{target}{suffix}.png", source], check=True)


def draw_for_desktop():
    """As the desktop's icon theme has them: a folder for each size, and one for what has any size."""
    for name, parts in DESKTOP_ICONS.items():
        source = DESKTOP / "scalable" / f"{name}.svg"
        source.parent.mkdir(parents=True, exist_ok=True)
        source.write_text(svg(parts()))
        for size in DESKTOP_SIZES:
            target = DESKTOP / f"{size}x{size}" / f"{name}.png"
            target.parent.mkdir(parents=True, exist_ok=True)
            subprocess.run(["rsvg-convert", "-w", str(size), "-h", str(size), "-o", target, source], check=True)


def main():
    SOURCES.mkdir(parents=True, exist_ok=True)
    BITMAPS.mkdir(parents=True, exist_ok=True)
    for name, parts in ICONS.items():
        source = SOURCES / f"icon_{name}.svg"
        source.write_text(svg(parts))
        size = OTHER_SIZES.get(name, SIZE)
        render(source, BITMAPS / f"icon_{name}", size, size)
    source = SOURCES / "PixelWeft.svg"
    source.write_text(svg(cloth()))
    render(source, ROOT / "Resources/PixelWeft", 128, 128)
    draw_for_desktop()


main()
