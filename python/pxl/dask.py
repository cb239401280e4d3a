"""pxl's exports over Dask arrays, one call a block.

    import dask.array as da, pxl.dask
    photo = da.from_array(rgb, chunks=(1024, 1024, 3))
    planes = pxl.dask.map_blocks("Copy_8u_C3P3R", photo)     # lazy, (3, h, w)
    planes.compute()                     # any scheduler: threads, processes, a cluster

The arguments are those of the export: its images may be Dask or numpy
arrays (chunked along rows and columns only; the channels of a pixel stay in
one block), everything else is passed to every block's call as it is.  The
region of each call is its whole block.  The result is the one image the
export writes: the destination left out (allocated a block at a time), or the
image of an in-place export, copied so that the input stays as it was.

The block function names the export rather than holding it, so it travels to
the workers of a distributed scheduler; the same code runs on one machine
and on a cluster.

depth=d runs every call on its block grown by d pixels on each side, taken
from the neighbouring blocks (dask.array.overlap; at the image's edges as
boundary= says), and trims the results back: the way neighbourhood filters
will run.  The exports of today work pixel by pixel and need depth 0.
"""
import dask.array as da
import numpy as np

from . import _binding

_CHANNEL_LETTERS = "abcdefghkl"


class _Block:
    """One call on one block: picklable, so that it can run on any worker."""

    def __init__(self, name, inputs, others, result, in_place):
        self.name = name
        self.inputs = inputs  # (parameter, planes or 0) for each array given, in order
        self.others = others  # the export's other arguments
        self.result = result  # the parameter whose image is returned
        self.in_place = in_place

    def __call__(self, *blocks):
        values = dict(self.others)
        i = 0
        for name, planes in self.inputs:
            if planes:
                values[name] = [np.asarray(b) for b in blocks[i:i + planes]]
                i += planes
            else:
                values[name] = np.asarray(blocks[i])
                i += 1
        if self.in_place:
            value = values[self.result]
            values[self.result] = [np.array(b) for b in value] if isinstance(value, list) \
                else np.array(value)
        out = _binding.export(self.name)(**values)
        if self.in_place:
            value = values[self.result]
            return np.stack(value) if isinstance(value, list) else value
        return out


def map_blocks(export, *args, depth=0, boundary="none", **kw):
    """export(*args, **kw) on every block of its images; returns a Dask array.

    See the module's description.  depth and boundary are those of
    dask.array.overlap.overlap, on the rows and columns.
    """
    ex = _binding.export(export)
    if ex.roi_param is None:
        raise TypeError("%s takes no region and cannot run a block at a time" % ex.name)
    if ex.roi_param.name in kw:
        raise TypeError("%s: each block is a whole region; crop the arrays instead" % ex.name)
    values = {}
    for p, a in zip(ex.positional, args):
        values[p.name] = a
    values.update(kw)

    results = [p for p in ex.images if values.get(p.name) is None and p.output] + \
              [p for p in ex.images if not p.const and not p.output and p.name in values]
    if len(results) != 1:
        raise TypeError("%s: map_blocks returns one image; this call writes %d"
                        % (ex.name, len(results)))
    result = results[0]
    in_place = result.name in values

    pairs = []  # (dask array, index) for blockwise
    inputs = []
    letters = iter(_CHANNEL_LETTERS)
    for p in ex.images:
        value = values.pop(p.name, None)
        if value is None:
            if not p.output:
                raise TypeError("%s: argument %s is required" % (ex.name, p.name))
            continue
        if p.kind == "planes":
            planes = list(value)
            for plane in planes:
                pairs.append((_grow(da.asarray(plane), depth, boundary), "ij"))
            inputs.append((p.name, len(planes)))
            continue
        array = da.asarray(value)
        if array.ndim == 3:
            array = array.rechunk({2: -1})
            letter = "z" if p is result else next(letters)
            index = "ij" + letter
        elif array.ndim == 2:
            index = "ij"
        else:
            raise TypeError("%s: %s must have 2 or 3 dimensions, not %d"
                            % (ex.name, p.name, array.ndim))
        pairs.append((_grow(array, depth, boundary), index))
        inputs.append((p.name, 0))
    if not pairs:
        raise TypeError("%s: give at least one image" % ex.name)

    new_axes = {}
    if result.kind == "planes":
        out_index = "zij"
        new_axes = {"z": result.length}
    elif result.channels > 1:
        out_index = "ijz"
        if not in_place:
            new_axes = {"z": result.channels}
    else:
        out_index = "ij"
    block = _Block(ex.name, inputs, values, result.name, in_place)
    args = [x for pair in pairs for x in pair]
    out = da.blockwise(block, out_index, *args, dtype=result.dtype, new_axes=new_axes,
                       concatenate=True,
                       meta=np.empty((0,) * len(out_index), result.dtype))
    if depth:
        axes = {out_index.index("i"): depth, out_index.index("j"): depth}
        out = da.overlap.trim_internal(out, axes, boundary=_boundary(out_index, boundary))
    return out


def _grow(array, depth, boundary):
    if not depth:
        return array
    d = {0: depth, 1: depth}
    b = {0: boundary, 1: boundary}
    if array.ndim == 3:
        d[2] = 0
        b[2] = "none"
    return da.overlap.overlap(array, depth=d, boundary=b)


def _boundary(index, boundary):
    return {index.index("i"): boundary, index.index("j"): boundary}
