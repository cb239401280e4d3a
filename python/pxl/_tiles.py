"""One export over a large image, a tile at a time, on a thread pool.

The library keeps no state between calls and cffi lets go of the GIL while
a call runs, so tiles of one image run side by side on as many cores.  Every
tile is the same call with a smaller region, so an export that works pixel
by pixel gives the bytes of one call.  An export whose result depends on the
address of the region's first pixel (AdjustExposureLin_32f_C4IR) does so only
when every tile's first pixel is as aligned as the whole region's, which holds
when the row strides are multiples of 64 bytes.
"""
import concurrent.futures
import os

from ._binding import Error, check, export as _export


def tiles(roi, tile):
    """The regions of the tiles of roi, row by row; edge tiles are smaller."""
    x0, y0, width, height = roi
    tw, th = tile
    if tw < 1 or th < 1:
        raise ValueError("tile sizes must be at least 1, got %r" % (tile,))
    return [(x, y, min(tw, x0 + width - x), min(th, y0 + height - y))
            for y in range(y0, y0 + height, th) for x in range(x0, x0 + width, tw)]


def tiled(export, *args, tile=(512, 512), threads=None, **kw):
    """Runs export(*args, **kw) as one call per tile of its region.

    export is an export of pxl or its name; it must take a region.  The
    region (roi=, else the whole first image) is cut into tiles of
    tile=(width, height) pixels, which run on a ThreadPoolExecutor of
    threads workers (default: the number of processors).  Outputs left out
    are allocated once, before the tiles run, and returned as by one call.
    A failing tile raises pxl.Error (that of the first failing tile in row
    order), after every tile has run; a warning is given once per status.
    """
    ex = _export(export)
    if ex.roi_param is None:
        raise TypeError("%s takes no region and cannot be tiled" % ex.name)
    call = ex.bind(*args, **kw)
    x, y, width, height = call.roi
    if width <= 0 or height <= 0:
        return call.finish(call.run(call.roi))  # the library's own answer
    parts = tiles(call.roi, tile)
    threads = threads or os.cpu_count() or 1
    if threads == 1 or len(parts) == 1:
        statuses = [call.run(part) for part in parts]
    else:
        with concurrent.futures.ThreadPoolExecutor(max_workers=threads) as pool:
            statuses = list(pool.map(call.run, parts))
    if ex.ret != "PxlStatus":
        # Not a status: each tile's value, in row order, before the outputs.
        out = call.results()
        return tuple([statuses] + out) if out else statuses
    failed = [s for s in statuses if s < 0]
    if failed:
        raise Error(ex.name, failed[0])
    for status in sorted(set(s for s in statuses if s > 0)):
        check(ex.name, status)
    return call.finish(0)

