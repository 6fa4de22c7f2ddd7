"""Morvalis in Inkscape: a lit, bevelled rendering of what is selected, laid over it.

Inkscape starts this file with the drawing and the selected objects, and reads the changed drawing
from standard output; what stands on standard error it shows. The selected objects are exported
alone, on transparent ground: their own transparency is the selection of the program that lights
them.
"""

import argparse
import base64
import math
import os
import shlex
import subprocess
import sys
import tempfile
import urllib.parse
import zlib

from lxml import etree

SVG = "{http://www.w3.org/2000/svg}"
HREF = "{http://www.w3.org/1999/xlink}href"
INKSCAPE = "{http://www.inkscape.org/namespaces/inkscape}"
SODIPODI = "{http://sodipodi.sourceforge.net/DTD/sodipodi-0.dtd}"

# Not drawn by themselves; to be left where they are.
UNSEEN = {SVG + "defs", SVG + "style", SVG + "metadata", SODIPODI + "namedview"}
# The picture gets these from its layer once more.
OF_LAYERS = ["opacity", "filter", "clip-path", "mask", "mix-blend-mode"]

PROBES = {"morvalis-probe-0": (0, 0), "morvalis-probe-x": (1000, 0), "morvalis-probe-y": (0, 1000)}
PIXELS_PER_INCH = 96  # of Inkscape's answers
MARGIN = 2  # pixels, for edges that are soft
LARGEST_SIDE = 16000  # pixels
NOTHING_SEEN = "Nothing of what is selected can be seen."


class Failure(Exception):
    """Told to the user as it stands."""


def parse_arguments(words):
    parser = argparse.ArgumentParser()
    parser.add_argument("--id", action="append", default=[], dest="chosen")
    parser.add_argument("--selected-nodes", action="append")  # of the node tool
    parser.add_argument("--preset", default="")
    parser.add_argument("--settings", default="")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--dpi", type=int, default=192)
    parser.add_argument("--link", type=lambda word: word == "true", default=False)
    parser.add_argument("drawing")
    return parser.parse_args(words)


def run(program, arguments):
    """The program's output and exit code, and what it has to say about a failure."""
    # An Inkscape below another has to be one of its own.
    environment = dict(os.environ, SELF_CALL="true")
    command = [program] + arguments
    try:
        done = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
    except OSError as error:
        raise Failure(f"The program {program} cannot be run: {error.strerror}.") from error
    return done.stdout, done.returncode, done.stderr.strip()


# --- The selected objects alone -------------------------------------------------------------------


def is_layer(element):
    return element.get(INKSCAPE + "groupmode") == "layer"


def chosen_objects(root, names):
    objects = [element for element in root.iter(etree.Element) if element.get("id") in names]
    if not objects:
        raise Failure("Select what is to be lit.")
    return objects


def place_above(topmost):
    """The layer, or the drawing itself, that the picture goes to, and whose place it takes there."""
    child = topmost
    while child.getparent().getparent() is not None and not is_layer(child.getparent()):
        child = child.getparent()
    return child.getparent(), child


def show_whole(layer):
    """What its layers do to the picture they do once it is there."""
    while layer is not None:
        rules = layer.get("style", "").split(";")
        kept = [rule for rule in rules if rule.split(":")[0].strip() not in OF_LAYERS]
        layer.set("style", ";".join(kept))
        for name in OF_LAYERS:
            layer.attrib.pop(name, None)
        layer = layer.getparent()


def hide_others(objects):
    """Within something hidden, which leaves clones of them as they are."""
    shown = set(objects)
    for element in objects:
        shown.update(element.iterancestors())
    for parent in {ancestor for element in objects for ancestor in element.iterancestors()}:
        hidden = etree.Element(SVG + "g", style="display:none")
        for child in list(parent):
            if child not in shown and child.tag not in UNSEEN:
                hidden.append(child)
        parent.append(hidden)


def write_alone(drawing, names, file):
    tree = etree.parse(drawing, etree.XMLParser(huge_tree=True))
    objects = chosen_objects(tree.getroot(), names)
    hide_others(objects)
    layer = place_above(objects[-1])[0]
    show_whole(layer)
    for name, (x, y) in PROBES.items():
        box = {"x": str(x - 0.5), "y": str(y - 0.5), "width": "1", "height": "1"}
        probe = etree.SubElement(layer, SVG + "rect", box, id=name)
        probe.set("style", "fill:#000;fill-opacity:0;stroke:none")
    tree.write(file)


# --- Places ---------------------------------------------------------------------------------------


def visual_boxes(file):
    """Left, top, right and bottom of each object, in Inkscape's pixels."""
    boxes = {}
    for line in run("inkscape", ["--query-all", file])[0].splitlines():
        name, *sides = line.rsplit(",", 4)
        try:
            x, y, width, height = map(float, sides)
        except ValueError:
            continue
        boxes[name] = (x, y, x + width, y + height)
    return boxes


def whole_pixels(boxes, scale):
    """The area around the boxes in the picture's pixels."""
    boxes = [box for box in boxes if box[2] > box[0] and box[3] > box[1]]
    if not boxes:
        raise Failure(NOTHING_SEEN)
    area = (
        math.floor(min(box[0] for box in boxes) * scale) - MARGIN,
        math.floor(min(box[1] for box in boxes) * scale) - MARGIN,
        math.ceil(max(box[2] for box in boxes) * scale) + MARGIN,
        math.ceil(max(box[3] for box in boxes) * scale) + MARGIN,
    )
    if max(area[2] - area[0], area[3] - area[1]) > LARGEST_SIDE:
        raise Failure("The picture would be too large; choose fewer pixels per inch.")
    return area


def layer_matrix(boxes):
    """From Inkscape's pixels to the layer's own units, as the transform of what stands in it."""
    try:
        corners = [boxes[name] for name in PROBES]
    except KeyError:
        raise Failure("Inkscape does not tell where the objects are.") from None
    (x0, y0), (x1, y1), (x2, y2) = (((b[0] + b[2]) / 2, (b[1] + b[3]) / 2) for b in corners)
    a, b, c, d = (x1 - x0) / 1000, (y1 - y0) / 1000, (x2 - x0) / 1000, (y2 - y0) / 1000
    size = a * d - b * c
    if size == 0:
        raise Failure("The layer is flattened to a line.")
    inverse = [d / size, -b / size, -c / size, a / size]
    inverse += [(c * y0 - d * x0) / size, (b * x0 - a * y0) / size]
    return "matrix(" + ",".join(f"{number:.9g}" for number in inverse) + ")"


# --- The picture ----------------------------------------------------------------------------------


def export(file, area, scale, picture):
    width, height = area[2] - area[0], area[3] - area[1]
    said = run("inkscape", [
        "--export-type=png", f"--export-filename={picture}", "--export-background-opacity=0",
        "--export-area=" + ":".join(f"{side / scale:.9g}" for side in area),
        f"--export-width={width}", f"--export-height={height}", file,
    ])[2]
    if not os.path.exists(picture):
        raise Failure("Inkscape cannot export what is selected.\n" + said)
    if shows_nothing(picture):
        raise Failure(NOTHING_SEEN)


def shows_nothing(picture):
    """Whether an exported picture is all transparent: no filter of rows changes a row of zeros."""
    with open(picture, "rb") as file:
        contents = file.read()
    width, parts, place = int.from_bytes(contents[16:20], "big"), b"", 8
    while place < len(contents):
        size = int.from_bytes(contents[place : place + 4], "big")
        if contents[place + 4 : place + 8] == b"IDAT":
            parts += contents[place + 8 : place + 8 + size]
        place += size + 12
    rows = bytearray(zlib.decompress(parts))
    del rows[:: 4 * width + 1]  # the names of the filters
    return not any(rows[3::4])


def light(source, result, options):
    """Whether there is a result; there is none when the user closes the dialog."""
    arguments = ["edit" if options.preset == "dialog" else "apply", source, "-o", result]
    if options.preset == "last":
        arguments.append("--last")
    elif options.preset not in ("", "dialog"):
        arguments += ["--preset", options.preset]
    try:
        words = shlex.split(options.settings)
    except ValueError as error:
        raise Failure(f"Settings: {error}.") from error
    for word in words:
        arguments += ["--set", word]
    arguments += ["--seed", str(options.seed)]
    if arguments[0] == "apply":
        arguments.append("--quiet")
    _, code, said = run("morvalis", arguments)
    if code != 0 and said:
        raise Failure(said)
    return code == 0


def write_beside(picture):
    """A new file beside the drawing; its path."""
    drawing = os.environ.get("DOCUMENT_PATH", "")
    if not drawing:
        raise Failure("Save the drawing first: a linked picture is written beside it.")
    start = os.path.splitext(drawing)[0] + "-morvalis"
    number = 1
    while True:
        path = start + ("" if number == 1 else f"-{number}") + ".png"
        try:
            with open(path, "xb") as file:
                file.write(picture)
            return path
        except FileExistsError:
            number += 1
        except OSError as error:
            raise Failure(f"{path}: {error.strerror}.") from error


def image_of(picture, area, scale, matrix, link):
    image = etree.Element(SVG + "image", preserveAspectRatio="none", transform=matrix)
    image.set(INKSCAPE + "label", "Morvalis")
    sides = {"x": area[0], "y": area[1], "width": area[2] - area[0], "height": area[3] - area[1]}
    for name, side in sides.items():
        image.set(name, f"{side / scale:.9g}")
    if link:
        path = write_beside(picture)
        image.set(HREF, urllib.parse.quote(os.path.basename(path)))
        image.set(SODIPODI + "absref", path)
    else:
        image.set(HREF, "data:image/png;base64," + base64.b64encode(picture).decode())
    return image


def main(words):
    options = parse_arguments(words)
    scale = options.dpi / PIXELS_PER_INCH
    tree = etree.parse(options.drawing, etree.XMLParser(huge_tree=True))
    objects = chosen_objects(tree.getroot(), options.chosen)
    with tempfile.TemporaryDirectory(prefix="morvalis-") as folder:
        alone, source, result = (os.path.join(folder, name) for name in ("a.svg", "s.png", "r.png"))
        write_alone(options.drawing, options.chosen, alone)
        boxes = visual_boxes(alone)
        area = whole_pixels([boxes[o.get("id")] for o in objects if o.get("id") in boxes], scale)
        matrix = layer_matrix(boxes)
        export(alone, area, scale, source)
        if not light(source, result, options):
            return
        with open(result, "rb") as file:
            picture = file.read()
    layer, below = place_above(objects[-1])
    layer.insert(layer.index(below) + 1, image_of(picture, area, scale, matrix, options.link))
    sys.stdout.buffer.write(etree.tostring(tree, encoding="UTF-8", xml_declaration=True))


if __name__ == "__main__":
    try:
        main(sys.argv[1:])
    except Failure as failure:
        sys.exit(f"Morvalis: {failure}")
