"""Pictures of a screen, with what the tests look for in them. Standard library only."""

import collections
import struct
import zlib


class Picture:
    """Opaque pixels, three bytes each, row-major from the top left."""

    def __init__(self, width, height, rgb):
        assert len(rgb) == width * height * 3
        self.width, self.height, self.rgb = width, height, rgb

    @classmethod
    def from_ppm(cls, data):
        kind, width, height, depth = data.split(maxsplit=4)[:4]
        assert kind == b"P6" and depth == b"255", data[:20]
        width, height = int(width), int(height)
        return cls(width, height, data[-width * height * 3:])

    def row(self, y):
        return self.rgb[y * self.width * 3:(y + 1) * self.width * 3]

    def pixels(self, y, left=0, right=None):
        """The colours of a row, three bytes each."""
        row = self.row(y)[left * 3:None if right is None else right * 3]
        return [row[start:start + 3] for start in range(0, len(row), 3)]

    def colors(self, left, top, right, bottom):
        """The colours of a rectangle; right and bottom are outside."""
        return {color for y in range(top, bottom) for color in self.pixels(y, left, right)}

    def differs_from(self, other):
        return (self.width, self.height, self.rgb) != (other.width, other.height, other.rgb)

    def crop(self, left, top, right, bottom):
        left, top = max(left, 0), max(top, 0)
        right, bottom = min(right, self.width), min(bottom, self.height)
        rows = (self.row(y)[left * 3:right * 3] for y in range(top, bottom))
        return Picture(right - left, bottom - top, b"".join(rows))

    def enlarged(self, factor):
        rows = []
        for y in range(self.height):
            row = self.row(y)
            wide = b"".join(row[x:x + 3] * factor for x in range(0, len(row), 3))
            rows.append(wide * factor)
        return Picture(self.width * factor, self.height * factor, b"".join(rows))

    def png(self):
        def chunk(name, data):
            return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        lines = b"".join(b"\0" + self.row(y) for y in range(self.height))
        return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(lines, 9)) +
                chunk(b"IEND", b""))

    def save(self, path):
        with open(path, "wb") as file:
            file.write(self.png())

    def find(self, art, cell, ink):
        """Where rows of art stand, pixel for pixel, as (x, y): # is `ink`, . the ground, : one colour that is neither.

        None unless they stand at exactly one place."""
        places = [(x, y) for x, y in self._places_of_ink(art, cell, ink) if self._has_plain_grounds(art, cell, x, y)]
        return places[0] if len(places) == 1 else None

    def find_on_gradient(self, art, cell, around=None):
        """Where rows of art stand, pixel for pixel, on a ground that is the same all along each of its lines, as (x, y).

        Each line has three colours at most: of # and of : and of the ground. `around` is the rectangle to look in, as
        (left, top, right, bottom). None unless the art stands at exactly one place."""
        left, top, right, bottom = around or (0, 0, self.width, self.height)
        places = [(x, y) for y in range(top, bottom - len(art) * cell + 1)
                  for x in range(left, right - len(art[0]) * cell + 1) if self._stands_at(art, cell, x, y)]
        return places[0] if len(places) == 1 else None

    def _stands_at(self, art, cell, left, top):
        for row, marks in enumerate(art):
            for y in range(top + row * cell, top + (row + 1) * cell):
                pixels = self.pixels(y, left, left + len(marks) * cell)
                colors = {}
                for column, mark in enumerate(marks):
                    color = colors.setdefault(mark, pixels[column * cell])
                    if any(pixel != color for pixel in pixels[column * cell:(column + 1) * cell]):
                        return False
                if len(set(colors.values())) != len(colors):
                    return False
        return True

    def _places_of_ink(self, art, cell, ink):
        lines = [bytes(int(mark == "#") for mark in row for _ in range(cell)) for row in art for _ in range(cell)]
        anchor = next(index for index, line in enumerate(lines) if any(line))
        inked = {}

        def inked_row(y):
            if y not in inked:
                inked[y] = bytes(int(color == ink) for color in self.pixels(y))
            return inked[y]

        for y in range(self.height - len(lines) + 1):
            if self.row(y + anchor).find(ink) < 0:
                continue
            x = inked_row(y + anchor).find(lines[anchor])
            while x >= 0:
                if all(inked_row(y + index)[x:x + len(line)] == line for index, line in enumerate(lines)):
                    yield x, y
                x = inked_row(y + anchor).find(lines[anchor], x + 1)

    def _has_plain_grounds(self, art, cell, left, top):
        colors = {"#": set(), ".": set(), ":": set()}
        for row, marks in enumerate(art):
            for column, mark in enumerate(marks):
                x, y = left + column * cell, top + row * cell
                colors[mark].update(self.colors(x, y, x + cell, y + cell))
        found = [color for group in colors.values() for color in group]
        return all(len(group) <= 1 for group in colors.values()) and len(found) == len(set(found))


class MenuPicture:
    """An opened menu on a screen: its outline, and its entries from top to bottom."""

    def __init__(self, before, after, top):
        """What changed between two pictures of a screen below the line `top`."""
        changed = [(x, y, color) for y in range(top, after.height) if before.row(y) != after.row(y)
                   for x, (old, color) in enumerate(zip(before.pixels(y), after.pixels(y))) if old != color]
        self.entries = []
        self.outline = (0, 0, 0, 0)
        if not changed:
            return
        self.ground = collections.Counter(color for _, _, color in changed).most_common(1)[0][0]
        columns = [x for x, _, color in changed if color == self.ground]
        rows = [y for _, y, color in changed if color == self.ground]
        self.outline = (min(columns), min(rows), max(columns) + 1, max(rows) + 1)
        self.screen = after
        self.entries = self._bands()

    def _bands(self):
        """The lines of the menu, separators among them: rows of pixels that are not all ground, as (top, bottom)."""
        left, top, right, bottom = self.outline
        margin = 6  # frames and rounded corners
        plain = self.ground * (right - left - 2 * margin)
        bands = []
        for y in range(top + 3, bottom - 3):
            if self.screen.row(y)[(left + margin) * 3:(right - margin) * 3] == plain:
                continue
            if bands and bands[-1][1] == y:
                bands[-1] = (bands[-1][0], y + 1)
            else:
                bands.append((y, y + 1))
        return bands

    def picture(self):
        left, top, right, bottom = self.outline
        return self.screen.crop(left - 8, top - 8, right + 8, bottom + 8)

    def center(self, index):
        left, _, right, _ = self.outline
        top, bottom = self.entries[index]
        return (left + right) // 2, (top + bottom) // 2

    def mark(self, index, width=24):
        """The pixels left of an entry's title, where its mark is."""
        left, _, _, _ = self.outline
        top, bottom = self.entries[index]
        middle = (top + bottom) // 2
        return self.screen.crop(left, middle - 8, left + width, middle + 8)
