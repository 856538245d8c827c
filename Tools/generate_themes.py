#!/usr/bin/env python3
"""Writes the theme files from their palettes.

usage: generate_themes.py FOLDER OUTPUT_FOLDER [--list]

FOLDER holds palettes.toml (a few colours a theme), roles.toml (which colour each key has) and fonts.toml. The other
colours of a palette are derived here: mixed from the given ones and, where they are read against a background, made
darker or lighter until the contrast suffices. With --list it only prints the names of the files, separated by ";".
"""

import os
import plistlib
import re
import sys
import tomllib

# Contrast ratios, a little above 4.5 and 3: theme files hold colours in whole bytes and alphas in hundredths.
TEXT = 4.65
MARK = 3.15

SIZES = ("Base Text Size", "Base Text Size iOS", "Line Width Multiplier", "Line Height Multiplier",
         "Paragraph Spacing Multiplier", "H1 Font Size Multiplier", "H2 Font Size Multiplier",
         "H3 Font Size Multiplier", "Monospace Font Adjust")
FONTS = ("Title Font", "Paragraph Font", "Monospace Font")
TAG_ALPHAS = (0.12, 0.22)
BLACK, WHITE = (0.0, 0.0, 0.0), (1.0, 1.0, 1.0)
TOKENS = ("string", "comment", "number", "keyword", "character", "preprocessor")


# Colours are triples of linear light, 0 to 1.

def linear(component):
    return component / 12.92 if component <= 0.04045 else ((component + 0.055) / 1.055) ** 2.4


def encoded(light):
    light = min(max(light, 0.0), 1.0)
    return light * 12.92 if light <= 0.0031308 else 1.055 * light ** (1 / 2.4) - 0.055


def from_hex(text):
    if not re.fullmatch(r"#[0-9A-F]{6}", text):
        sys.exit(f"generate_themes.py: “{text}” is no colour; write six upper-case digits")
    return tuple(linear(int(text[i:i + 2], 16) / 255) for i in (1, 3, 5))


def to_bytes(color):
    return tuple(round(encoded(light) * 255) for light in color)


def rgba(color):
    return "rgba({}, {}, {}, 1.00)".format(*to_bytes(color))


def stored(color):
    """The colour as the file will hold it."""
    return tuple(linear(byte / 255) for byte in to_bytes(color))


def over(color, alpha, background):
    """What is seen of a colour with an alpha: mixed as screens mix, in encoded values."""
    return tuple(linear(encoded(c) * alpha + encoded(b) * (1 - alpha)) for c, b in zip(color, background))


def luminance(color):
    return 0.2126 * color[0] + 0.7152 * color[1] + 0.0722 * color[2]


def contrast(a, b):
    high, low = sorted((luminance(a), luminance(b)), reverse=True)
    return (high + 0.05) / (low + 0.05)


# Mixing and lightening happen in OKLab, where equal steps look equal.

def to_lab(color):
    r, g, b = color
    l = (0.4122214708 * r + 0.5363325363 * g + 0.0514459929 * b) ** (1 / 3)
    m = (0.2119034982 * r + 0.6806995451 * g + 0.1073969566 * b) ** (1 / 3)
    s = (0.0883024619 * r + 0.2817188376 * g + 0.6299787005 * b) ** (1 / 3)
    return (0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s,
            1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s,
            0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s)


def from_lab(lab):
    l = (lab[0] + 0.3963377774 * lab[1] + 0.2158037573 * lab[2]) ** 3
    m = (lab[0] - 0.1055613458 * lab[1] - 0.0638541728 * lab[2]) ** 3
    s = (lab[0] - 0.0894841775 * lab[1] - 1.2914855480 * lab[2]) ** 3
    return (4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
            -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s)


def mix(a, b, share):
    """The mix of two colours: 0 is the first, 1 the second."""
    return stored(from_lab(tuple(x + (y - x) * share for x, y in zip(to_lab(a), to_lab(b)))))


def legible(name, color, ratio, backgrounds, towards=None):
    """The nearest colour of that hue with the contrast to all backgrounds. They may be made from the colour itself."""
    def suffices(candidate):
        given = backgrounds(candidate) if callable(backgrounds) else backgrounds
        return all(contrast(candidate, background) >= ratio for background in given)

    given = backgrounds(color) if callable(backgrounds) else backgrounds
    if towards is None:
        towards = BLACK if luminance(given[0]) > 0.18 else WHITE
    for step in range(101):
        candidate = mix(color, towards, step / 100)
        if suffices(candidate):
            return candidate
    sys.exit(f"generate_themes.py: no shade of {name} is legible")


def tinted(paper, color, share, texts, ratio=TEXT):
    """A background of as much of a colour, at most the share, as leaves the texts on it legible."""
    for step in range(101):
        candidate = mix(paper, color, share * (1 - step / 100))
        if all(contrast(text, candidate) >= ratio for text in texts):
            return candidate
    sys.exit("generate_themes.py: no background leaves the text legible")


def text_colors(c):
    """The colours of the editor. c holds those given; they and what they need of each other go into the result."""
    paper, code = c["paper"], c["code"]
    c["ink"] = legible("ink", c["ink"], 7, [paper, code])
    c["title"] = legible("title", c["title"], 7, [paper])
    c["selection"] = tinted(paper, c["selection"], 1, [c["ink"], c["title"]])
    c["selectionInactive"] = mix(paper, c["ink"], 0.12)
    c["glow"] = tinted(paper, c["glow"], 1, [c["ink"], c["title"]])
    c["glowInk"] = legible("glowInk", c["title"], TEXT, [c["glow"]])
    c["glowMarker"] = legible("glowMarker", mix(c["glow"], c["ink"], 0.4), MARK, [c["glow"]])
    c["soft"] = legible("soft", mix(c["ink"], paper, 0.4), TEXT, [paper])
    c["marker"] = legible("marker", mix(c["ink"], paper, 0.55), MARK, [paper, code])
    c["rule"] = legible("rule", mix(paper, c["ink"], 0.2), MARK, [paper])
    c["link"] = legible("link", c["link"], TEXT, [paper])
    c["tag"] = legible("tag", c["tag"], TEXT,
                       lambda tag: [paper] + [over(tag, alpha, paper) for alpha in TAG_ALPHAS])
    on_tag = [paper] + [over(c["tag"], alpha, paper) for alpha in TAG_ALPHAS]
    c["tagMarker"] = legible("tagMarker", mix(c["tag"], paper, 0.4), MARK, on_tag)
    c["place"] = legible("place", mix(c["link"], c["string"], 0.5), TEXT, [paper])
    c["alarm"] = legible("alarm", from_hex("#E0303A"), TEXT, [paper, c["list"], c["panel"]])
    c["box"] = mix(paper, c["ink"], 0.04)
    c["codeEdge"] = mix(code, c["ink"], 0.14)
    c["codeInk"] = legible("codeInk", c["ink"], TEXT, [code])
    for name in TOKENS:
        c[name] = legible(name, c[name], TEXT, [code, paper])
    return c


def app_colors(c):
    """The colours around the editor, after text_colors."""
    paper, ink, side = c["paper"], c["ink"], c["side"]
    lists, panel = c["list"], c["panel"]
    c["listSelected"] = mix(lists, c["tint"], 0.10)
    c["listSelectedInactive"] = mix(lists, ink, 0.08)
    on_list = [lists, c["listSelected"], c["listSelectedInactive"]]
    c["listInk"] = legible("listInk", c["title"], TEXT, on_list)
    c["listSoft"] = legible("listSoft", mix(ink, lists, 0.35), TEXT, on_list)
    c["listIcon"] = legible("listIcon", mix(ink, lists, 0.45), MARK, on_list)
    c["listLine"] = legible("listLine", mix(lists, ink, 0.2), MARK, [lists, paper])
    c["field"] = mix(lists, ink, 0.06)
    on_field = [c["field"], lists]
    c["fieldInk"] = legible("fieldInk", ink, TEXT, on_field + [c["selection"]])
    c["fieldSoft"] = legible("fieldSoft", mix(ink, lists, 0.4), TEXT, on_field)
    c["fieldLine"] = legible("fieldLine", mix(lists, ink, 0.2), MARK, on_field)
    c["accent"] = legible("accent", c["accent"], TEXT, on_list + [paper, panel, c["field"], c["box"]])
    c["accentPressed"] = legible("accentPressed", c["accent"], 5.6, [paper, panel])
    c["sideInk"] = legible("sideInk", c["sideInk"], TEXT, [side])
    c["sideSelected"] = tinted(side, mix(c["tint"], c["sideInk"], 0.3), 0.22, [c["sideInk"]])
    c["sideSelectedInactive"] = mix(side, c["sideInk"], 0.10)
    on_side = [side, c["sideSelected"], c["sideSelectedInactive"]]
    c["sideInk"] = legible("sideInk", c["sideInk"], TEXT, on_side)
    c["sideSelectedInk"] = legible("sideSelectedInk", mix(c["sideInk"], WHITE, 0.6)
                                   if luminance(side) < 0.18 else c["title"], TEXT, on_side)
    c["sideIcon"] = legible("sideIcon", mix(c["sideInk"], side, 0.25), MARK, on_side)
    c["sideIconLight"] = legible("sideIconLight", mix(c["sideInk"], side, 0.5), MARK, on_side)
    c["sideAccent"] = legible("sideAccent", c["accent"], MARK, on_side)
    c["sideLine"] = legible("sideLine", mix(side, c["sideInk"], 0.2), MARK, [side])
    c["panelPressed"] = mix(panel, ink, 0.10)
    c["panelInk"] = legible("panelInk", ink, TEXT, [panel, c["panelPressed"]])
    c["panelSoft"] = legible("panelSoft", mix(ink, panel, 0.35), TEXT, [panel, paper])
    c["panelIconLight"] = legible("panelIconLight", mix(ink, panel, 0.5), MARK, [panel])
    c["panelLine"] = legible("panelLine", mix(panel, ink, 0.2), MARK, [panel, paper])
    c["quibBack"] = mix(paper, c["accent"], 0.14)
    c["quibStroke"] = legible("quibStroke", mix(c["fur"], from_hex("#1A1410"), 0.75), MARK, [c["fur"]],
                              towards=BLACK)
    return c


def palette(seeds):
    given = dict(seeds)
    given.setdefault("panel", given["list"])
    given.setdefault("sideInk", given["ink"])
    given.setdefault("tint", given["accent"])
    colors = {name: from_hex(value) for name, value in given.items() if name not in ("app", "text")}
    return app_colors(text_colors(colors))


def item(key, value, kind):
    return {"key": key, "value": value, "kind": kind}


def color_items(colors, roles):
    """The variables that the roles use, first, then the roles."""
    used = dict.fromkeys(name for role in roles.values() for name in re.findall(r"\$(\w+)", role))
    return ([item("$" + name, rgba(colors[name]), "color") for name in used] +
            [item(key, role, "color") for key, role in roles.items()])


def font_items(theme, common):
    values = common | theme
    return ([item(key, values[key], "font") for key in FONTS] + [item(key, values[key], "number") for key in SIZES])


def themes(folder):
    """Every theme file: its name and a function that gives its items."""
    def table(name):
        with open(os.path.join(folder, name + ".toml"), "rb") as file:
            return tomllib.load(file)

    roles, fonts = table("roles"), table("fonts")
    common = fonts.pop("common")
    for seeds in table("palettes").values():
        for kind in ("app", "text"):
            if kind in seeds:
                yield seeds[kind], lambda seeds=seeds, kind=kind: color_items(palette(seeds), roles[kind])
    for name, theme in fonts.items():
        yield name, lambda theme=theme: font_items(theme, common)


def main():
    if len(sys.argv) not in (3, 4) or sys.argv[3:] not in ([], ["--list"]):
        sys.exit(__doc__)
    folder, output = sys.argv[1:3]
    files = [(os.path.join(output, name + ".theme"), items) for name, items in themes(folder)]
    if sys.argv[3:]:
        print(";".join(path for path, _ in files), end="")
        return
    os.makedirs(output, exist_ok=True)
    for path, items in files:
        with open(path, "wb") as file:
            plistlib.dump(items(), file, sort_keys=False)


if __name__ == "__main__":
    main()
