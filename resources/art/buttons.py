"""The looks that the pages' picture buttons have in common.

Each button is a strip of four frames: normal, down, hover, disabled. The upper
half holds the colours, the lower half the masks, white where the page's ground
is to stay. A frame is composed by the bitwise operations AND and OR, which know
no half-covered pixels: a frame's outline has hard edges, and where the mask is
white the colour is black. Inside the outline edges are smooth.
"""
from shapes import bar, paint

HEIGHT = 17
NARROW = 17

CLEAR, COVERED = (255, 255, 255), (0, 0, 0)


class Look:
    """The colours of one frame: outline, body from top to bottom, and sign."""

    def __init__(self, edge, top, bottom, sign):
        self.edge, self.top, self.bottom, self.sign = edge, top, bottom, sign


LOOKS = [
    Look((142, 154, 164), (253, 254, 255), (220, 227, 233), (24, 92, 118)),  # normal
    Look((8, 66, 90), (18, 98, 128), (52, 152, 180), (255, 255, 255)),  # down
    Look((38, 140, 168), (250, 254, 255), (186, 227, 240), (10, 104, 140)),  # hover
    Look((206, 211, 216), (250, 251, 252), (243, 245, 247), (182, 189, 196)),  # disabled
]


def side_by_side(names, rows):
    """Letters that stand beside each other, a blank between them."""
    lines = [line.split() for line in rows.strip("\n").split("\n")]
    return {name: [line[place] for line in lines] for place, name in enumerate(names)}


# 7 pixels high, and 2 for what hangs below the line.
LETTERS = side_by_side("ACERS", """
.###. .#### ##### ####. .####
#...# #.... #.... #...# #....
#...# #.... #.... #...# #....
##### #.... ####. ####. .###.
#...# #.... #.... #.#.. ....#
#...# #.... #.... #..#. ....#
#...# .#### ##### #...# ####.
..... ..... ..... ..... .....
..... ..... ..... ..... .....
""") | side_by_side("adegilmnortv", """
..... ....# ..... ..... # # ....... ..... ..... .... .... .....
..... ....# ..... ..... . # ....... ..... ..... .... .#.. .....
.###. .##.# .###. .#### # # ###.##. #.##. .###. #.## #### #...#
....# #..## #...# #...# # # #..#..# ##..# #...# ##.. .#.. #...#
.#### #...# ##### #...# # # #..#..# #...# #...# #... .#.. .#.#.
#...# #...# #.... #..## # # #..#..# #...# #...# #... .#.. .#.#.
.#### .#### .#### .##.# # # #..#..# #...# .###. #... ..## ..#..
..... ..... ..... ....# . . ....... ..... ..... .... .... .....
..... ..... ..... .###. . . ....... ..... ..... .... .... .....
""")
BLANK = 2  # pixels


def word_width(text):
    widths = [BLANK if letter == " " else len(LETTERS[letter][0]) for letter in text]
    return sum(widths) + len(text) - 1


def word(left, top, text, colour):
    shapes = []
    for letter in text:
        for y, row in enumerate(LETTERS.get(letter, [])):
            for x, mark in enumerate(row):
                if mark == "#":
                    shapes.append(bar(left + x, top + y, left + x + 1, top + y + 1, colour))
        left += word_width(letter) + 1
    return shapes


def is_outside(x, y, width):
    """The corners' pixels: one, and the two beside it."""
    across, down = min(x, width - 1 - x), min(y, HEIGHT - 1 - y)
    return across + down < 2


def is_edge(x, y, width):
    return (x in (0, width - 1) or y in (0, HEIGHT - 1)
            or min(x, width - 1 - x) + min(y, HEIGHT - 1 - y) == 2)


def colours(look, sign, width):
    def ground(place):
        return tuple(a + (b - a) * place for a, b in zip(look.top, look.bottom))
    rows = paint(width, HEIGHT, ground, sign(look))
    for y, row in enumerate(rows):
        for x in range(width):
            if is_outside(x, y, width):
                row[x] = COVERED
            elif is_edge(x, y, width):
                row[x] = look.edge
    return rows


def masks(width):
    return [[CLEAR if is_outside(x, y, width) else COVERED for x in range(width)]
            for y in range(HEIGHT)]


def beside(frames):
    return [sum((frame[y] for frame in frames), []) for y in range(HEIGHT)]


def strip(sign, width):
    """`sign` gives the shapes that stand on the button, for a Look."""
    return beside([colours(look, sign, width) for look in LOOKS]) + beside([masks(width)] * 4)
