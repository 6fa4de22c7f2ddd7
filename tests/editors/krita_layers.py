"""For Krita's runner of scripts: each picture of the list `cases` through the plug-in's own steps."""

import subprocess

from krita import Krita, Selection
from morvalis import layers

KEPT = "-above.png"


def save_above(document, layer, name):
    size = layers.size_of(document)
    pixels = bytes(layer.pixelData(0, 0, *size))
    layers.write_png(name + KEPT, pixels, size, layer.colorModel(), layer.colorDepth())


def opened(name, model, depth):
    document = Krita.instance().openDocument(name + ".png")
    if (document.colorModel(), document.colorDepth()) != (model, depth):
        document.setColorSpace(model, depth, "")
    document.waitForDone()
    return document


def half(document):
    selection = Selection()
    selection.select(20, 0, document.width() - 20, document.height(), 255)
    return selection


def render(name, model, depth, selected):
    document = opened(name, model, depth)
    if selected == "half":
        document.setSelection(half(document))
    layer = document.topLevelNodes()[0]
    layers.save_layer(document, layer, name + "-given.png")
    words = ["--preset", "gold", "--seed", "5", "--quiet", "-o", name + "-result.png"]
    subprocess.run(["morvalis", "apply", name + "-given.png"] + words, check=True)
    save_above(document, layers.add_layer(document, layer, name + "-result.png"), name)
    document.setModified(False)


def refused(name, model, depth, selection):
    document = opened(name, model, depth)
    document.setSelection(selection)
    try:
        layers.save_layer(document, document.topLevelNodes()[0], "refused.png")
        return "taken"
    except layers.Failure as failure:
        return str(failure)


def __main__(*_arguments):
    Krita.instance().setBatchmode(True)  # asks nothing, as about profiles that are missing
    with open("cases", encoding="ascii") as file:
        for line in file:
            render(*line.split())
    print("CMYKA:", refused("0", "CMYKA", "U8", None), flush=True)
    nothing = Selection()
    nothing.select(0, 0, 3, 3, 255)  # where the disc is not
    print("empty:", refused("0", "RGBA", "U8", nothing), flush=True)
