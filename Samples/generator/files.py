"""Saves pictures as cameras and programs do."""

import io

from PIL import Image

ORIENTATION = 0x0112
TURNS = {90: Image.ROTATE_90, 180: Image.ROTATE_180, 270: Image.ROTATE_270}
EXIF_FOR_TURN = {0: 1, 90: 6, 180: 3, 270: 8}


def turned(image, degrees):
    """The picture turned so that `degrees` clockwise bring it upright again."""
    return image.transpose(TURNS[degrees]) if degrees else image


def save_jpeg(image, path, quality=88, limit=None, exif_turn=None):
    """A JPEG (4:2:0). With `limit` the quality goes down until the file has at most so many bytes. With `exif_turn` the
    orientation tag tells that the pixels must be turned by so many degrees clockwise."""
    options = {"format": "JPEG", "subsampling": 2, "optimize": True}
    if exif_turn is not None:
        exif = Image.Exif()
        exif[ORIENTATION] = EXIF_FOR_TURN[exif_turn]
        options["exif"] = exif.tobytes()
    while True:
        buffer = io.BytesIO()
        image.save(buffer, quality=quality, **options)
        if limit is None or buffer.tell() <= limit or quality <= 40:
            break
        quality -= 3
    with open(path, "wb") as file:
        file.write(buffer.getvalue())
