"""A picture of a screen, and the difference between two."""
import subprocess


class Screenshot:
    """Rows of red, green and blue bytes."""

    def __init__(self, width, height, pixels):
        self.width, self.height, self._pixels = width, height, pixels

    @classmethod
    def from_ppm(cls, data):
        magic, width, height, depth, pixels = _split(data)
        if (magic, depth) != (b'P6', 255):
            raise ValueError('not an 8 bit portable pixmap')
        return cls(width, height, pixels)

    def crop(self, box):
        left, top, right, bottom = box
        rows = [self._row(y)[3 * left:3 * right] for y in range(top, bottom)]
        return Screenshot(right - left, bottom - top, b''.join(rows))

    def save(self, path):
        ppm = b'P6 %d %d 255\n' % (self.width, self.height) + self._pixels
        subprocess.run(['convert', 'ppm:-', '-strip', path], input=ppm, check=True)

    def difference(self, other):
        """The smallest box (left, top, right, bottom) that holds every differing pixel, or None."""
        if (self.width, self.height) != (other.width, other.height):
            raise ValueError('screenshots of different sizes')
        rows = [y for y in range(self.height) if self._row(y) != other._row(y)]
        if not rows:
            return None
        columns = [x for y in rows for x in self._differing_columns(other, y)]
        return min(columns), rows[0], max(columns) + 1, rows[-1] + 1

    def pixel(self, x, y):
        """Red, green and blue of a pixel."""
        return tuple(self._row(y)[3 * x:3 * x + 3])

    def holds(self, box, color):
        """Whether a pixel in the box has exactly that colour."""
        left, top, right, bottom = box
        return any(self.pixel(x, y) == color for y in range(top, bottom) for x in range(left, right))

    def shows(self, color):
        """Whether a pixel anywhere has exactly that colour."""
        found = self._pixels.find(bytes(color))
        while found > 0 and found % 3:  # the bytes found span two pixels
            found = self._pixels.find(bytes(color), found + 1)
        return found >= 0

    def _row(self, y):
        return self._pixels[y * self.width * 3:(y + 1) * self.width * 3]

    def _differing_columns(self, other, y):
        mine, theirs = self._row(y), other._row(y)
        return [x for x in range(self.width) if mine[3 * x:3 * x + 3] != theirs[3 * x:3 * x + 3]]


def _split(data):
    """Splits a binary pixmap by hand, as its pixels may begin with bytes that look like whitespace."""
    fields, position = [], 0
    while len(fields) < 4:
        end = position
        while data[end:end + 1] not in (b' ', b'\n', b'\t'):
            end += 1
        if end > position:
            fields.append(data[position:end])
        position = end + 1
    magic, width, height, depth = fields
    return magic, int(width), int(height), int(depth), data[position:]
