"""PNG files with the samples that a layer has: Krita's own bytes on this side.

Krita keeps samples in the machine's order, which is little-endian wherever it runs, and colours
from blue to red; PNG files have it the other way round, both times.
"""

import struct
import zlib

from PyQt5.QtGui import QImage

KINDS = {"RGBA": 6, "GRAYA": 4}  # what PNG files call them
DEPTHS = {"U8": 1, "U16": 2}  # bytes a sample


def turned(pixels, model, sample):
    """From one order to the other, and back."""
    count = 4 if model == "RGBA" else 2
    result = bytearray(pixels)
    order = [2, 1, 0, 3] if model == "RGBA" else [0, 1]
    for to, of in enumerate(order):
        for byte in range(sample):
            place = of * sample + sample - 1 - byte
            result[to * sample + byte :: count * sample] = pixels[place :: count * sample]
    return bytes(result)


def write_png(path, pixels, size, model, depth):
    width, height = size
    sample = DEPTHS[depth]
    data = turned(pixels, model, sample)
    row = len(data) // height
    rows = b"".join(b"\0" + data[start : start + row] for start in range(0, len(data), row))
    header = struct.pack(">IIBBBBB", width, height, 8 * sample, KINDS[model], 0, 0, 0)
    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n")
        for name, body in (b"IHDR", header), (b"IDAT", zlib.compress(rows, 1)), (b"IEND", b""):
            file.write(struct.pack(">I", len(body)) + name + body)
            file.write(struct.pack(">I", zlib.crc32(name + body)))


def read_png(path, size, model, depth):
    """The pixels of a file as large as the layer; None when it is not to be had."""
    image = QImage(path)
    if (image.width(), image.height()) != size:
        return None
    wide = depth == "U16"
    image = image.convertToFormat(QImage.Format_RGBA64 if wide else QImage.Format_ARGB32)
    bits = image.constBits()
    bits.setsize(image.sizeInBytes())
    pixels = bytes(bits)  # rows of four samples have no padding
    sample = DEPTHS[depth]
    if model == "GRAYA":
        grey = bytearray(len(pixels) // 2)
        for byte in range(sample):
            grey[byte :: 2 * sample] = pixels[byte :: 4 * sample]
            grey[sample + byte :: 2 * sample] = pixels[3 * sample + byte :: 4 * sample]
        return bytes(grey)
    if not wide:
        return pixels
    swapped = bytearray(pixels)
    for byte in range(sample):
        swapped[byte::8] = pixels[4 + byte :: 8]
        swapped[4 + byte :: 8] = pixels[byte::8]
    return bytes(swapped)
