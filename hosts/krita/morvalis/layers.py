"""What is selected of a layer as a file, and a file as a layer above it.

The selection goes into the transparency of the file, which is the program's selection then. The
effect stands whole wherever anything shows, and Krita mixes it by the transparency of the new
layer, once.
"""

from array import array

from .png_files import DEPTHS, KINDS, read_png, write_png


class Failure(Exception):
    """Told to the user as it stands."""


def size_of(document):
    return document.width(), document.height()


def selected_alpha(alpha, mask):
    if mask.count(255) == len(mask):
        return alpha
    return array(alpha.typecode, ((a * m + 127) // 255 for a, m in zip(alpha, mask)))


def with_selection(pixels, model, depth, mask):
    samples = array("B" if depth == "U8" else "H", pixels)
    planes = 4 if model == "RGBA" else 2
    alpha = samples[planes - 1 :: planes]
    if mask is not None:
        alpha = selected_alpha(alpha, mask)
        samples[planes - 1 :: planes] = alpha
    if not any(alpha):
        raise Failure("Nothing is selected on this layer.")
    return samples.tobytes()


def save_layer(document, layer, path):
    model, depth = layer.colorModel(), layer.colorDepth()
    if model not in KINDS or depth not in DEPTHS:
        raise Failure(
            "Morvalis takes RGB and grey layers of 8 or 16 bits in whole numbers; "
            "Layer > Convert makes one."
        )
    width, height = size_of(document)
    pixels = bytes(layer.projectionPixelData(0, 0, width, height))
    selection = document.selection()
    mask = None
    if selection is not None:
        mask = bytes(selection.pixelData(0, 0, width, height))
    pixels = with_selection(pixels, model, depth, mask)
    write_png(path, pixels, size_of(document), model, depth)


def add_layer(document, below, path):
    """One step of Krita's undo: a layer comes whole."""
    model, depth = below.colorModel(), below.colorDepth()
    pixels = read_png(path, size_of(document), model, depth)
    if pixels is None:
        raise Failure("The picture has changed its size in the meantime.")
    layer = document.createNode("Morvalis", "paintlayer")
    layer.setColorSpace(model, depth, below.colorProfile())
    layer.setPixelData(pixels, 0, 0, *size_of(document))
    parent = below.parentNode()
    if parent is None:
        raise Failure("The layer is gone.")
    parent.addChildNode(layer, below)
    document.refreshProjection()
    return layer
