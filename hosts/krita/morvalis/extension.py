"""The entries in Krita's menu: the dialog of the program, and what was confirmed there once more."""

import os
import tempfile

from krita import Extension, Krita
from PyQt5.QtCore import QProcess
from PyQt5.QtWidgets import QMessageBox

from .layers import Failure, add_layer, save_layer

MENU = "tools/scripts"


def tell(text):
    QMessageBox.warning(Krita.instance().activeWindow().qwindow(), "Morvalis", text)


class Run:
    """The program at work on a layer. Krita goes on meanwhile."""

    def __init__(self, document, layer, command, done):
        self.document, self.layer, self.done = document, layer, done
        self.folder = tempfile.TemporaryDirectory(prefix="morvalis-")
        self.result = os.path.join(self.folder.name, "result.png")
        source = os.path.join(self.folder.name, "layer.png")
        save_layer(document, layer, source)
        self.process = QProcess()
        self.process.finished.connect(self.finish)
        self.process.errorOccurred.connect(self.fail)
        self.process.start("morvalis", [command[0], source, *command[1:], "-o", self.result])

    def finish(self, code):
        if self.process.exitStatus() != QProcess.NormalExit:
            return
        said = bytes(self.process.readAllStandardError()).decode(errors="replace").strip()
        try:
            if code == 0:
                add_layer(self.document, self.layer, self.result)
            elif said:  # else the dialog was closed
                tell(said)
        except Failure as failure:
            tell(str(failure))
        self.end()

    def fail(self):
        tell(f"The program morvalis cannot be run: {self.process.errorString()}.")
        self.end()

    def end(self):
        self.folder.cleanup()
        self.done(self)


class MorvalisExtension(Extension):
    def __init__(self, parent):
        super().__init__(parent)
        self.runs = []

    def setup(self):
        pass

    def createActions(self, window):
        entries = (
            ("morvalis", "Morvalis...", ["edit"]),
            ("morvalis_again", "Morvalis as Last Time", ["apply", "--last", "--quiet"]),
        )
        for name, text, command in entries:
            action = window.createAction(name, text, MENU)
            action.triggered.connect(lambda _checked, command=command: self.start(command))

    def start(self, command):
        document = Krita.instance().activeDocument()
        layer = document.activeNode() if document is not None else None
        if layer is None:
            tell("Open a picture first.")
            return
        try:
            self.runs.append(Run(document, layer, command, self.runs.remove))
        except (Failure, OSError) as failure:
            tell(str(failure))
