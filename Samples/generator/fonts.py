"""The type faces, all from Debian packages, and where their files lie."""

import os
from functools import lru_cache

from PIL import ImageFont

ROOT = "/usr/share/fonts"

# name: (package, folder, regular, bold, italic)
FAMILIES = {
    "Liberation Sans": ("fonts-liberation", "truetype/liberation", "LiberationSans-Regular.ttf",
                        "LiberationSans-Bold.ttf", "LiberationSans-Italic.ttf"),
    "Liberation Serif": ("fonts-liberation", "truetype/liberation", "LiberationSerif-Regular.ttf",
                         "LiberationSerif-Bold.ttf", "LiberationSerif-Italic.ttf"),
    "DejaVu Sans": ("fonts-dejavu-core", "truetype/dejavu", "DejaVuSans.ttf", "DejaVuSans-Bold.ttf",
                    "DejaVuSans.ttf"),
    "Lato": ("fonts-lato", "truetype/lato", "Lato-Regular.ttf", "Lato-Bold.ttf", "Lato-Italic.ttf"),
    "Lato Light": ("fonts-lato", "truetype/lato", "Lato-Light.ttf", "Lato-Semibold.ttf", "Lato-LightItalic.ttf"),
    "Open Sans": ("fonts-open-sans", "truetype/open-sans", "OpenSans-Regular.ttf", "OpenSans-Bold.ttf",
                  "OpenSans-Italic.ttf"),
    "Roboto": ("fonts-roboto-unhinted", "truetype/roboto/unhinted/RobotoTTF", "Roboto-Regular.ttf",
               "Roboto-Bold.ttf", "Roboto-Italic.ttf"),
    "Carlito": ("fonts-crosextra-carlito", "truetype/crosextra", "Carlito-Regular.ttf", "Carlito-Bold.ttf",
                "Carlito-Italic.ttf"),
    "EB Garamond": ("fonts-ebgaramond", "opentype/ebgaramond", "EBGaramond12-Regular.otf",
                    "EBGaramond12-Regular.otf", "EBGaramond12-Italic.otf"),  # its bold lacks accented letters
    "Libertine": ("fonts-linuxlibertine", "opentype/linux-libertine", "LinLibertine_R.otf", "LinLibertine_RB.otf",
                  "LinLibertine_RI.otf"),
    "Biolinum": ("fonts-linuxlibertine", "opentype/linux-libertine", "LinBiolinum_R.otf", "LinBiolinum_RB.otf",
                 "LinBiolinum_RI.otf"),
    "Caladea": ("fonts-crosextra-caladea", "truetype/crosextra", "Caladea-Regular.ttf", "Caladea-Bold.ttf",
                "Caladea-Italic.ttf"),
    "Cantarell": ("fonts-cantarell", "opentype/cantarell", "Cantarell-Regular.otf", "Cantarell-Bold.otf",
                  "Cantarell-Regular.otf"),
    "Quicksand": ("fonts-quicksand", "truetype/quicksand", "Quicksand-Medium.ttf", "Quicksand-Bold.ttf",
                  "Quicksand-Regular.ttf"),
    "Roboto Condensed": ("fonts-roboto-unhinted", "truetype/roboto/unhinted", "RobotoCondensed-Regular.ttf",
                         "RobotoCondensed-Bold.ttf", "RobotoCondensed-Italic.ttf"),
}

# Kept out of tuning, so that a reader of cards can be measured on faces that it was not fitted to.
HELD_OUT = ("Biolinum", "Caladea", "Cantarell", "Quicksand", "Roboto Condensed")

WEIGHTS = {"regular": 2, "bold": 3, "italic": 4}


def path_of(family, weight):
    """The file of a face."""
    entry = FAMILIES[family]
    return os.path.join(ROOT, entry[1], entry[WEIGHTS[weight]])


def missing_packages():
    """The Debian packages that hold fonts which are not there, sorted."""
    return sorted({entry[0] for name, entry in FAMILIES.items()
                   if not all(os.path.exists(path_of(name, weight)) for weight in WEIGHTS)})


@lru_cache(maxsize=64)
def face(family, weight, pixels):
    """A face in a size (pixels per em). The basic layout engine: the same pixels with and without Raqm."""
    return ImageFont.truetype(path_of(family, weight), pixels, layout_engine=ImageFont.Layout.BASIC)
