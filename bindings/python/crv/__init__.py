"""Plane curves made of cubic Bezier segments: see help(crv._crv)."""

from ._crv import *
from ._crv import __version__
