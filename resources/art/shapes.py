"""Small pictures drawn from shapes, with smooth edges and no tools but Python.

A picture is a list of shapes, painted in turn onto an opaque ground. Points
are (x, y) in pixels from the upper left corner, colours (red, green, blue).
"""
import struct

SAMPLES = 8  # a side of each pixel's grid


class Polygon:
    """All inside the corners, by the even-odd rule."""

    def __init__(self, corners, colour):
        self.corners, self.colour = corners, colour

    def holds(self, x, y):
        inside = False
        ax, ay = self.corners[-1]
        for bx, by in self.corners:
            if (ay > y) != (by > y) and x < (bx - ax) * (y - ay) / (by - ay) + ax:
                inside = not inside
            ax, ay = bx, by
        return inside


class Ellipse:
    """Upright, around a centre."""

    def __init__(self, centre, across, down, colour):
        self.centre, self.across, self.down, self.colour = centre, across, down, colour

    def holds(self, x, y):
        dx, dy = (x - self.centre[0]) / self.across, (y - self.centre[1]) / self.down
        return dx * dx + dy * dy <= 1


def bar(left, top, right, bottom, colour):
    return Polygon([(left, top), (right, top), (right, bottom), (left, bottom)], colour)


def rounded(left, top, right, bottom, radius, colour):
    """A bar with round corners."""
    return [bar(left + radius, top, right - radius, bottom, colour),
            bar(left, top + radius, right, bottom - radius, colour)] + [
        Ellipse((x, y), radius, radius, colour)
        for x in (left + radius, right - radius) for y in (top + radius, bottom - radius)]


def band(start, end, width, colour):
    """A straight line of a width, cut square at its ends."""
    (ax, ay), (bx, by) = start, end
    length = ((bx - ax) ** 2 + (by - ay) ** 2) ** 0.5
    px, py = (by - ay) / length * width / 2, (ax - bx) / length * width / 2
    return Polygon([(ax + px, ay + py), (bx + px, by + py), (bx - px, by - py), (ax - px, ay - py)],
                   colour)


def paint(width, height, ground, shapes):
    """Rows of pixels, from the top. `ground` gives the colour of a row."""
    offsets = [(step + 0.5) / SAMPLES for step in range(SAMPLES)]
    rows = []
    for row in range(height):
        pixels = []
        for column in range(width):
            total = [0, 0, 0]
            for y in offsets:
                for x in offsets:
                    colour = ground((row + y) / height)
                    for shape in shapes:
                        if shape.holds(column + x, row + y):
                            colour = shape.colour
                    for part in range(3):
                        total[part] += colour[part]
            pixels.append(tuple(round(part / SAMPLES**2) for part in total))
        rows.append(pixels)
    return rows


def between(top, bottom):
    """A ground that goes evenly from one colour to another."""
    return lambda place: tuple(a + (b - a) * place for a, b in zip(top, bottom))


def paint_clear(width, height, shapes):
    """As `paint`, on a clear ground: pixels are (red, green, blue, alpha)."""
    offsets = [(step + 0.5) / SAMPLES for step in range(SAMPLES)]
    rows = []
    for row in range(height):
        pixels = []
        for column in range(width):
            total, covered = [0, 0, 0], 0
            for y in offsets:
                for x in offsets:
                    colour = None
                    for shape in shapes:
                        if shape.holds(column + x, row + y):
                            colour = shape.colour
                    if colour:
                        covered += 1
                        for part in range(3):
                            total[part] += colour[part]
            pixels.append(tuple(round(part / max(covered, 1)) for part in total)
                          + (round(255 * covered / SAMPLES**2),))
        rows.append(pixels)
    return rows


def write_bitmap(path, rows):
    """Windows' device-independent bitmap of 24 bits, bottom row first."""
    width, height = len(rows[0]), len(rows)
    padding = bytes(-width * 3 % 4)
    bits = b"".join(
        b"".join(bytes((blue, green, red)) for red, green, blue in row) + padding
        for row in reversed(rows))
    header = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(bits), 0, 0, 0, 0)
    with open(path, "wb") as file:
        file.write(b"BM" + struct.pack("<IHHI", 54 + len(bits), 0, 0, 54) + header + bits)


def write_icon(path, rows):
    """An icon file with one picture of 32 bits, of pixels with their alpha.

    Its mask, which alone counts where alpha doesn't, leaves out what is less
    than half covered."""
    width, height = len(rows[0]), len(rows)
    bits = b"".join(bytes((blue, green, red, alpha))
                    for row in reversed(rows) for red, green, blue, alpha in row)
    mask = b"".join(mask_row([alpha < 128 for _, _, _, alpha in row]) for row in reversed(rows))
    header = struct.pack("<IiiHHIIiiII", 40, width, 2 * height, 1, 32, 0,
                         len(bits) + len(mask), 0, 0, 0, 0)
    picture = header + bits + mask
    with open(path, "wb") as file:
        file.write(struct.pack("<HHH", 0, 1, 1)
                   + struct.pack("<BBBBHHII", width, height, 0, 0, 1, 32, len(picture), 22)
                   + picture)


def mask_row(left_out):
    """A bit for each pixel, in whole groups of 32."""
    padded = left_out + [False] * (-len(left_out) % 32)
    return bytes(sum(bit << 7 - place for place, bit in enumerate(padded[start:start + 8]))
                 for start in range(0, len(padded), 8))
