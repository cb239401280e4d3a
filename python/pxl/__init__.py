"""pxl from Python: every export of libpxl.so on numpy arrays.

    import numpy as np, pxl
    rgb = np.zeros((480, 640, 3), np.uint8)
    pxl.Set_8u_C3R((255, 128, 0), rgb)                  # fills rgb
    planes = pxl.Copy_8u_C3P3R(rgb)                     # (3, 480, 640), allocated
    pxl.Copy_8u_C3R(rgb, out, roi=(10, 20, 100, 50))    # a region
    big = pxl.tiled(pxl.Copy_8u_C3R, rgb, tile=(256, 256), threads=4)

Each export is an attribute under its own name (help(pxl.Copy_8u_C3R) shows
its arguments); _binding's description tells how arrays, regions, records and
statuses are handled.  pxl.tiled runs an export over tiles on a thread pool,
pxl.dask over the blocks of a Dask array.  Errors raise pxl.Error, warnings
are pxl.Warning.
"""
from . import _api
from ._binding import Error, Warning, export, ffi, lib, names, parse_name, STATUS_NAMES
from ._tiles import tiles, tiled

__all__ = ["Error", "Warning", "export", "names", "tiled", "tiles", "STATUS_NAMES"]

# The integer constants of the header: status codes, format codes, feature bits.
globals().update(_api.CONSTANTS)
for _code, (_name, _text) in _api.STATUS.items():
    globals()[_name] = _code
del _code, _name, _text


def __getattr__(name):
    try:
        return export(name)
    except AttributeError:
        pass
    value = getattr(lib, name, None) if not name.startswith("_") else None
    if isinstance(value, int):
        return value
    raise AttributeError("module 'pxl' has no attribute %r" % name)


def __dir__():
    return sorted(set(globals()) | set(names()))
