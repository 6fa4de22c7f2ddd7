"""Morvalis in Krita: the selected part of a layer as a lit, bevelled object on a layer of its own."""

from krita import Krita

from .extension import MorvalisExtension

Krita.instance().addExtension(MorvalisExtension(Krita.instance()))
