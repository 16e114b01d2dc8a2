"""QR codes after ISO/IEC 18004: byte mode, error correction level M, versions 1 to 10."""

# version: (error-correction codewords per block, data codewords of each block)
BLOCKS = {1: (10, [16]), 2: (16, [28]), 3: (26, [44]), 4: (18, [32] * 2), 5: (24, [43] * 2), 6: (16, [27] * 4),
          7: (18, [31] * 4), 8: (22, [38] * 2 + [39] * 2), 9: (22, [36] * 3 + [37] * 2), 10: (26, [43] * 4 + [44])}
ALIGNMENT = {1: [], 2: [6, 18], 3: [6, 22], 4: [6, 26], 5: [6, 30], 6: [6, 34], 7: [6, 22, 38], 8: [6, 24, 42],
             9: [6, 26, 46], 10: [6, 28, 50]}
MOST_BYTES = 208  # what version 10 holds, also when it has to say that they are UTF-8
LEVEL_M = 0b00
MASKS = (lambda r, c: (r + c) % 2, lambda r, c: r % 2, lambda r, c: c % 3, lambda r, c: (r + c) % 3,
         lambda r, c: (r // 2 + c // 3) % 2, lambda r, c: r * c % 2 + r * c % 3,
         lambda r, c: (r * c % 2 + r * c % 3) % 2, lambda r, c: ((r + c) % 2 + r * c % 3) % 2)


def encode(data):
    """The modules of a code for bytes, row by row, 1 is dark. ValueError when they do not fit into version 10."""
    version = next((v for v in BLOCKS if len(data) <= _capacity(v, data.isascii())), None)
    if version is None:
        raise ValueError("%d bytes do not fit into a QR code of version 10" % len(data))
    bits = _interleave(_codewords(data, version), version)
    candidates = [_Symbol(version, bits, mask).rows for mask in range(8)]
    return min(candidates, key=_penalty)


def _capacity(version, ascii_only):
    """The bytes that fit: mode and count take 12 or 20 bits, naming UTF-8 another 12."""
    header = (12 if version < 10 else 20) + (0 if ascii_only else 12)
    return (sum(BLOCKS[version][1]) * 8 - header) // 8


def _codewords(data, version):
    bits = [] if data.isascii() else _bits(0b0111, 4) + _bits(26, 8)  # says that the bytes are UTF-8
    bits += [0, 1, 0, 0] + _bits(len(data), 8 if version < 10 else 16)
    for byte in data:
        bits += _bits(byte, 8)
    total = sum(BLOCKS[version][1]) * 8
    bits += [0] * min(4, total - len(bits))
    bits += [0] * (-len(bits) % 8)
    words = [int("".join(map(str, bits[i:i + 8])), 2) for i in range(0, len(bits), 8)]
    return words + [(0xEC, 0x11)[i % 2] for i in range(total // 8 - len(words))]


def _bits(value, count):
    return [value >> (count - 1 - i) & 1 for i in range(count)]


def _multiply(a, b):
    """The product in GF(256) over x^8 + x^4 + x^3 + x^2 + 1."""
    product = 0
    while b:
        product ^= a if b & 1 else 0
        a = a << 1 ^ (0x11D if a & 0x80 else 0)
        b >>= 1
    return product


def _correction(words, count):
    """The Reed-Solomon remainder of a block."""
    generator, root = [1], 1
    for _ in range(count):
        raised = generator + [0]
        generator = [a ^ _multiply(root, b) for a, b in zip(raised, [0] + generator)]
        root = _multiply(root, 2)
    rest = list(words) + [0] * count
    for i in range(len(words)):
        factor = rest[i]
        for j, coefficient in enumerate(generator):
            rest[i + j] ^= _multiply(coefficient, factor)
    return rest[len(words):]


def _interleave(words, version):
    count, sizes = BLOCKS[version]
    blocks, start = [], 0
    for size in sizes:
        blocks.append(words[start:start + size])
        start += size
    mixed = [block[i] for i in range(max(sizes)) for block in blocks if i < len(block)]
    corrections = [_correction(block, count) for block in blocks]
    mixed += [correction[i] for i in range(count) for correction in corrections]
    return [bit for word in mixed for bit in _bits(word, 8)]


def _remainder(value, degree, polynomial):
    rest = value << degree
    for shift in range(rest.bit_length() - degree - 1, -1, -1):
        if rest >> (shift + degree) & 1:
            rest ^= polynomial << shift
    return value << degree | rest


class _Symbol:
    """The square of modules under one mask."""

    def __init__(self, version, bits, mask):
        self.size = 17 + 4 * version
        self.rows = [[None] * self.size for _ in range(self.size)]
        self._patterns(version)
        self._format(_remainder(LEVEL_M << 3 | mask, 10, 0x537) ^ 0x5412)
        if version >= 7:
            self._version(_remainder(version, 12, 0x1F25))
        self._data(bits, MASKS[mask])

    def _patterns(self, version):
        last = self.size - 7
        for top, left in ((0, 0), (0, last), (last, 0)):
            self._finder(top, left)
        for row in ALIGNMENT[version]:
            for column in ALIGNMENT[version]:
                if self.rows[row][column] is None:
                    self._square(row, column, 2, lambda d: d != 1)
        for i in range(8, self.size - 8):
            self.rows[6][i] = self.rows[i][6] = (i + 1) % 2

    def _finder(self, top, left):
        self._square(top + 3, left + 3, 4, lambda d: d not in (2, 4))

    def _square(self, row, column, radius, dark):
        for r in range(row - radius, row + radius + 1):
            for c in range(column - radius, column + radius + 1):
                if 0 <= r < self.size and 0 <= c < self.size:
                    self.rows[r][c] = int(dark(max(abs(r - row), abs(c - column))))

    def _format(self, word):
        ring = [(8, c) for c in (0, 1, 2, 3, 4, 5, 7, 8)] + [(r, 8) for r in (7, 5, 4, 3, 2, 1, 0)]
        ends = [(self.size - 1 - i, 8) for i in range(7)] + [(8, self.size - 8 + i) for i in range(8)]
        for i, bit in enumerate(_bits(word, 15)):
            for row, column in (ring[i], ends[i]):
                self.rows[row][column] = bit
        self.rows[self.size - 8][8] = 1

    def _version(self, word):
        for i in range(18):
            row, column = i // 3, self.size - 11 + i % 3
            self.rows[row][column] = self.rows[column][row] = word >> i & 1

    def _data(self, bits, mask):
        stream, upward = iter(bits), True
        for right in [c for c in range(self.size - 1, 0, -2) if c > 6] + [5, 3, 1]:
            for step in range(self.size):
                row = self.size - 1 - step if upward else step
                for column in (right, right - 1):
                    if self.rows[row][column] is None:
                        self.rows[row][column] = next(stream, 0) ^ int(mask(row, column) == 0)
            upward = not upward


def _penalty(rows):
    """The sum of the four features that make a symbol hard to read."""
    columns = [list(column) for column in zip(*rows)]
    score = sum(_line_penalty(line) for line in rows + columns)
    for upper, lower in zip(rows, rows[1:]):
        score += sum(3 for i in range(len(upper) - 1) if upper[i] == upper[i + 1] == lower[i] == lower[i + 1])
    dark = sum(map(sum, rows)) * 100 // len(rows) ** 2
    return score + abs(dark - 50) // 5 * 10


def _line_penalty(line):
    text = "".join(map(str, line))
    score = 40 * sum(text[i:i + 11] in ("10111010000", "00001011101") for i in range(len(text) - 10))
    for run in text.replace("01", "0 1").replace("10", "1 0").split():
        score += len(run) - 2 if len(run) >= 5 else 0
    return score
