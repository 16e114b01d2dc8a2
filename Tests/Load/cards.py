"""Small cards with plain print, so that reading one costs little, and what a reading says."""

import io
import xml.etree.ElementTree

from PIL import Image, ImageDraw, ImageFont

PEOPLE = ("Anna Baker", "Peter Walker", "Laura Fisher", "Martin Cooper", "Sarah Mason", "Robert Turner",
          "Helen Parker", "Daniel Carter")
FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"


class Card:
    """The card of one of them: its picture, and the two texts that tell it from the others."""

    def __init__(self, number):
        self.name = PEOPLE[number % len(PEOPLE)]
        self.email = self.name.split()[1].lower() + "@example.com"
        self.picture = self._draw()

    def _draw(self):
        picture = Image.new("RGB", (520, 300), "white")
        pen = ImageDraw.Draw(picture)
        for line, (text, size) in enumerate(((self.name, 34), ("Sales Manager", 22), (self.email, 24))):
            pen.text((40, 50 + 70 * line), text, "black", ImageFont.truetype(FONT, size))
        file = io.BytesIO()
        picture.save(file, "JPEG", quality=85)
        return file.getvalue()

    def is_in(self, body):
        """Whether that answer is this card's."""
        try:
            items = xml.etree.ElementTree.fromstring(body).findall("item")
        except xml.etree.ElementTree.ParseError:
            return False
        read = {item.get("fldType"): "".join(item.itertext()) for item in items}
        return read.get("name") == self.name and read.get("email") == self.email
