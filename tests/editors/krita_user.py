"""A user of Krita: opens a picture, chooses the plug-in's entries, undoes, and writes down what is
there."""

import os
import traceback

from krita import Extension, Krita
from morvalis.png_files import write_png
from PyQt5.QtCore import QTimer

PAUSE = 300  # milliseconds
PATIENCE = 300  # pauses


def pixels(document):
    document.waitForDone()
    return bytes(document.pixelData(0, 0, document.width(), document.height()))


def steps(told):
    krita = Krita.instance()
    document = krita.openDocument("photo.png")
    document.setBatchmode(True)
    krita.activeWindow().addView(document)
    yield

    def count():
        return len(document.topLevelNodes())

    def tell(more=""):
        told.write(f"{count()} layers{more}\n")

    before = pixels(document)
    krita.action("morvalis").trigger()
    for _ in range(PATIENCE):
        yield
        if count() == 2:
            break
    after = pixels(document)
    tell(", changed" if after != before else "")
    krita.action("edit_undo").trigger()
    yield
    tell(", as before" if pixels(document) == before else "")
    krita.action("edit_redo").trigger()
    yield
    tell(", as after" if pixels(document) == after else "")
    size = (document.width(), document.height())
    layer = document.topLevelNodes()[1]
    write_png("above.png", bytes(layer.pixelData(0, 0, *size)), size, "RGBA", "U8")
    krita.action("morvalis_again").trigger()
    for _ in range(PATIENCE):
        yield
        if count() == 3:
            break
    tell()


class User(Extension):
    def setup(self):
        pass

    def createActions(self, _window):
        self.told = open("told", "w", encoding="ascii")
        self.steps = steps(self.told)
        QTimer.singleShot(2000, self.go_on)

    def go_on(self):
        try:
            next(self.steps)
            QTimer.singleShot(PAUSE, self.go_on)
            return
        except StopIteration:
            pass
        except Exception:
            traceback.print_exc()
        self.told.close()
        os._exit(0)


Krita.instance().addExtension(User(Krita.instance()))
