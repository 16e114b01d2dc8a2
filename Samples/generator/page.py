"""The printed side of a card: draws in millimetres and notes every field that it prints."""

from PIL import Image, ImageDraw, ImageOps

from . import fonts

SMALLEST = 2.0  # millimetres per em, between 5 and 6 points
GAP = 1.0  # millimetres


class Page:
    """One side of a card. Lengths are millimetres from the upper left corner; `scale` is pixels per millimetre."""

    def __init__(self, style, scale):
        self.style = style
        self.scale = scale
        self.fields = []
        self.printed = []
        self.code = None
        self.boxes = []
        self.smallest = style.name_size
        self.image = Image.new("RGB", (round(style.width * scale), round(style.height * scale)), style.palette.paper)
        self.draw = ImageDraw.Draw(self.image)

    def note(self, kind, text, **more):
        """Writes down a field as it is printed."""
        self.fields.append({"type": kind, "text": text, **more})

    def text_width(self, text, size, family=None, weight="regular", tracking=0.0):
        """The width of a line in millimetres; `tracking` is extra space after each letter in em."""
        face = fonts.face(family or self.style.body, weight, round(size * self.scale))
        return face.getlength(text) / self.scale + tracking * size * max(0, len(text) - 1)

    def text(self, x, y, text, size, family=None, weight="regular", colour=None, align="left", tracking=0.0,
             room=None, apart=True):
        """Prints a line with its upper edge at y and returns the y after it. A line wider than `room` shrinks. It may
        stand close to its neighbours when it need not be `apart` from them."""
        family = family or self.style.body
        width = self.text_width(text, size, family, weight, tracking)
        if room and width > room:
            size, width = size * room / width, room
        left = {"left": x, "centre": x - width / 2, "right": x - width}[align]
        self.boxes.append((left, y + size * (0.2 if apart else 0.4), left + width, y + size * (1.15 if apart else 1.0)))
        self.smallest = min(self.smallest, size)
        self._letters(left, y, text, size, fonts.face(family, weight, round(size * self.scale)),
                      colour or self.style.palette.ink, tracking)
        self.printed.append(text)
        return y + size * 1.22

    def margin(self):
        """The width of the rim on which nothing is printed."""
        if not self.boxes:
            return 0.0
        return min(min(left for left, _, _, _ in self.boxes), min(top for _, top, _, _ in self.boxes),
                   self.style.width - max(right for _, _, right, _ in self.boxes),
                   self.style.height - max(bottom for _, _, _, bottom in self.boxes))

    def crowded(self):
        """Whether lines touch each other, the edge or a code, or are set smaller than cards are."""
        if self.smallest < SMALLEST:
            return True
        for index, (left, top, right, bottom) in enumerate(self.boxes):
            if left < GAP or top < GAP or right > self.style.width - GAP or bottom > self.style.height - GAP:
                return True
            if any(left < r + GAP and l < right + GAP and top < b and t < bottom
                   for l, t, r, b in self.boxes[:index]):
                return True
        return False

    def _letters(self, x, y, text, size, face, colour, tracking):
        baseline = round((y + size * 0.92) * self.scale)
        if not tracking:
            self.draw.text((round(x * self.scale), baseline), text, font=face, fill=colour, anchor="ls")
            return
        for index, letter in enumerate(text):
            left = x * self.scale + face.getlength(text[:index]) + tracking * size * self.scale * index
            self.draw.text((round(left), baseline), letter, font=face, fill=colour, anchor="ls")

    def box(self, left, top, right, bottom, colour):
        """A filled rectangle."""
        self.draw.rectangle([round(v * self.scale) for v in (left, top, right, bottom)], fill=colour)

    def line(self, points, width, colour):
        """A line through points."""
        self.draw.line([(x * self.scale, y * self.scale) for x, y in points], fill=colour,
                       width=max(1, round(width * self.scale)), joint="curve")

    def disc(self, x, y, radius, colour):
        """A filled disc."""
        self.draw.ellipse([(v) * self.scale for v in (x - radius, y - radius, x + radius, y + radius)], fill=colour)

    def picture(self, left, top, right, bottom, image):
        """A picture (RGB) that fills a rectangle; what does not fit in its shape is cut off."""
        size = (round((right - left) * self.scale), round((bottom - top) * self.scale))
        part = ImageOps.fit(image, size, Image.BICUBIC)
        self.image.paste(part, (round(left * self.scale), round(top * self.scale)))

    def polygon(self, points, colour):
        """A filled polygon."""
        self.draw.polygon([(x * self.scale, y * self.scale) for x, y in points], fill=colour)

    def modules(self, x, y, side, rows, colour, paper):
        """A QR code of the given side on its quiet zone, which lies around it."""
        module = side / len(rows)
        quiet = (x - 4 * module, y - 4 * module, x + side + 4 * module, y + side + 4 * module)
        self.boxes.append(quiet)
        self.box(*quiet, paper)
        for row, bits in enumerate(rows):
            for column, bit in enumerate(bits):
                if bit:
                    self.box(x + column * module, y + row * module, x + (column + 1) * module - 0.5 / self.scale,
                             y + (row + 1) * module - 0.5 / self.scale, colour)
