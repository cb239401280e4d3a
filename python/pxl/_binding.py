"""Calls of pxl's exports on numpy arrays.

Each export is wrapped from its declaration (the generated module _api):

- an image pointer and the row step after it become one numpy array: the
  pointer is the array's first element, the step its row stride, which may
  be any positive or negative byte count; within a row the pixels must be
  contiguous.  Interleaved images have shape (height, width, channels), one
  channel images (height, width); a planar image is a sequence of 2-D arrays
  (or an array of shape (planes, height, width)) that share one row stride.
  The element type comes from the declaration, the channel count from the
  layout in the export's name (the second layout for the destination when
  the name has two, e.g. Copy_8u_C3P3R); other images of a call (maps,
  masks) have one channel.  Where the name makes an image pointer point at
  one channel (Copy_8u_C3CR, the three-channel side of Copy_8u_C3C1R), pass
  the view of that channel, img[:, :, c], or the whole image for channel 0.
- the region is the keyword roi=(x, y, width, height) and defaults to the
  whole first image; a non-empty region must lie inside every image, since
  nothing in the library clamps it.
- records passed by value (PxliSize, PxliRect, ...) are tuples, fixed-size
  arrays (const Pxl8u value[3]) sequences, scalars Python numbers.
- an output the caller leaves out (or passes as None) is allocated, zeroed,
  and returned: a destination image takes the source's height and width and
  its own layout; a pointer to one value that the export writes returns the
  value.
- a negative status raises Error, a positive one warns with Warning; an
  export that returns something other than a status returns it.
"""
import ctypes.util
import os
import re
import warnings

import cffi
import numpy as np

from . import _api

ffi = cffi.FFI()
ffi.cdef(_api.CDEF)


def _library_path():
    path = os.environ.get("PXL_LIBRARY")
    if path:
        return path
    try:
        from . import _location
        path = _location.LIBRARY
        if not os.path.isabs(path):
            path = os.path.normpath(os.path.join(os.path.dirname(__file__), path))
        if os.path.exists(path):
            return path
    except ImportError:
        pass
    path = ctypes.util.find_library("pxl")
    if path:
        return path
    raise ImportError("pxl: libpxl.so not found; set PXL_LIBRARY to its path")


lib = ffi.dlopen(_library_path())

STATUS_NAMES = {code: name for code, (name, _) in _api.STATUS.items()}


def _status(code):
    name, text = _api.STATUS.get(code, ("unknown status", ""))
    return name, text


class Error(Exception):
    """An export returned a negative status.

    Attributes: code (the status), name (its name in the header, such as
    'pxlStsNullPtrErr'), text (its description) and function (the export).
    """

    def __init__(self, function, code):
        self.function = function
        self.code = code
        self.name, self.text = _status(code)
        super().__init__("%s: %s (%d)%s" % (function, self.name, code,
                                            ": " + self.text if self.text else ""))


class Warning(UserWarning):  # noqa: A001 - pxl.Warning, as the library calls it
    """An export returned a positive status: it ran to its end, with a remark.

    Attributes as for Error.
    """

    def __init__(self, function, code):
        self.function = function
        self.code = code
        self.name, self.text = _status(code)
        super().__init__("%s: %s (%d)%s" % (function, self.name, code,
                                            ": " + self.text if self.text else ""))


def check(function, code):
    """Raises Error on a negative status and warns on a positive one."""
    if code < 0:
        raise Error(function, code)
    if code > 0:
        warnings.warn(Warning(function, code), stacklevel=4)


# ---- names -----------------------------------------------------------------

_LAYOUT = r"(AC4|AC1|C1|C2|C3|C4|P3|P4)"
_FORM = re.compile(r"^%s%s?(C?)(I?)(M?)(R?)" % (_LAYOUT, _LAYOUT))
_TYPE = r"(?:1u|8u|8s|16u|16s|32u|32s|32sc|32f|32fc|64f)"
_TYPES = re.compile(r"^(%s)(%s)?$" % (_TYPE, _TYPE))
_CHANNELS = {"C1": 1, "AC1": 1, "C2": 2, "C3": 3, "C4": 4, "AC4": 4, "P3": 3, "P4": 4}
_DTYPES = {"8u": "uint8", "8s": "int8", "16u": "uint16", "16s": "int16", "32u": "uint32",
           "32s": "int32", "32f": "float32", "64f": "float64"}


def parse_name(name):
    """Element types and layouts of source and destination, from an export's name.

    Returns (types, layouts, channel_of_interest): types and layouts are
    (source, destination) pairs, None where the name has none.
    """
    tokens = name.split("_")
    types = (None, None)
    form = None
    for i, token in enumerate(tokens[1:], 1):
        m = _TYPES.match(token)
        if m:
            types = (m.group(1), m.group(2) or m.group(1))
            form = tokens[i + 1] if i + 1 < len(tokens) else None
            break
    else:
        # A few photo exports name no type and work on floats: AdjustShadows_AC4IR.
        if len(tokens) > 1 and _FORM.match(tokens[1]):
            types = ("32f", "32f")
            form = tokens[1]
    m = _FORM.match(form) if form else None
    if not m:
        return types, (None, None), False
    return types, (m.group(1), m.group(2) or m.group(1)), bool(m.group(3))


# ---- arguments -----------------------------------------------------------------


class _Param:
    """One argument of the Python call, made of one or two C parameters."""

    def __init__(self, name, kind, ctype=None, dtype=None, length=0, const=False):
        self.name = name
        self.kind = kind  # image, planes, roi, struct, array, pointer, scalar, other
        self.ctype = ctype
        self.dtype = np.dtype(dtype) if dtype else None
        self.length = length
        self.const = const
        self.channels = 1
        self.coi = False
        self.output = False  # may be left out, and is then allocated and returned

    def describe(self):
        if self.kind == "image":
            if self.channels == 1:
                return "%s array of shape (height, width)" % self.dtype
            what = "%s array of shape (height, width, %d)" % (self.dtype, self.channels)
            if self.coi:
                what += ", or one channel of it, img[:, :, c]"
            return what
        if self.kind == "planes":
            return "%d planes, %s arrays of shape (height, width)" % (self.length, self.dtype)
        if self.kind == "roi":
            return "(x, y, width, height)"
        if self.kind == "struct":
            return "%s as a tuple" % self.ctype
        if self.kind == "array":
            return "%d numbers" % self.length
        return self.ctype or "value"


def _c_param(c):
    name, kind, ctype, _, length, const = c
    const = "const " if const else ""
    if kind == "pointer":
        return "%s%s* %s" % (const, ctype, name)
    if kind == "array":
        return "%s%s %s[%d]" % (const, ctype, name, length)
    if kind == "pointer_array":
        return "%s%s* %s[%d]" % (const, ctype, name, length)
    return "%s %s" % (ctype or "?", name)


def _is_step(param):
    name, kind = param[0], param[1]
    return kind == "scalar" and name.lower().endswith("step")


class Export:
    """A callable wrapper of one export; see the module's description."""

    def __init__(self, name, ret, cparams):
        self.__name__ = self.name = name
        self.ret = ret
        self.cparams = cparams
        self.cfunc = getattr(lib, name)
        types, layouts, coi = parse_name(name)
        self.params = []  # in the order of the Python call
        self.layout = []  # per C parameter: (param, role)
        i = 0
        while i < len(cparams):
            pname, kind, ctype, dtype, length, const = cparams[i]
            nxt = cparams[i + 1] if i + 1 < len(cparams) else None
            if kind in ("pointer", "pointer_array") and nxt is not None and _is_step(nxt) and \
                    (dtype is not None or ctype == "void"):
                side = 1 if "Dst" in pname else 0 if "Src" in pname else None
                if dtype is None and side is not None and types[side]:
                    dtype = _DTYPES.get(types[side])
                p = _Param(pname, "image" if kind == "pointer" else "planes", ctype, dtype, length,
                           const)
                if kind == "pointer" and side is not None and layouts[side]:
                    p.channels = _CHANNELS[layouts[side]]
                    # The many-channel side of C3C1, C1C4, ... points at one channel.
                    other = layouts[1 - side]
                    p.coi = p.channels > 1 and (coi or (other is not None and
                                                        _CHANNELS[other] == 1))
                p.output = not const and "Src" not in pname
                self.params.append(p)
                self.layout.append((p, "pointer"))
                self.layout.append((p, "step"))
                i += 2
                continue
            if kind == "struct" and ctype == "PxliRect" and "roi" in pname.lower():
                p = _Param(pname, "roi", ctype)
            elif kind == "array":
                p = _Param(pname, "array", ctype, dtype, length, const)
                p.output = not const
            elif kind == "pointer":
                p = _Param(pname, "pointer", ctype, dtype, 0, const)
                p.output = not const and ctype != "void"
            else:
                p = _Param(pname, kind, ctype, dtype, length, const)
            self.params.append(p)
            self.layout.append((p, "value"))
            i += 1
        self.images = [p for p in self.params if p.kind in ("image", "planes")]
        self.roi_param = next((p for p in self.params if p.kind == "roi"), None)
        self.positional = [p for p in self.params if p.kind != "roi"]
        self.__doc__ = self._doc()

    def _doc(self):
        args = []
        for p in self.positional:
            args.append(p.name + ("=None" if p.output else ""))
        if self.roi_param:
            args.append("roi=None")
        lines = ["%s(%s)" % (self.name, ", ".join(args)), ""]
        for p in self.params:
            note = " (left out: allocated and returned)" if p.output else ""
            lines.append("  %s: %s%s" % (p.name, p.describe(), note))
        lines.append("")
        lines.append("C: %s %s(%s)" % (self.ret, self.name, ", ".join(map(_c_param, self.cparams))))
        return "\n".join(lines)

    def __repr__(self):
        return "<pxl export %s>" % self.name

    # -- binding the Python arguments to C values --

    def bind(self, *args, **kw):
        """Checks and converts the arguments; returns a Call for any region."""
        values = {}
        if len(args) > len(self.positional):
            raise TypeError("%s takes at most %d positional arguments (%d given)"
                            % (self.name, len(self.positional), len(args)))
        for p, a in zip(self.positional, args):
            values[p.name] = a
        for key, a in kw.items():
            p = next((q for q in self.params if q.name == key), None)
            if p is None or (p.kind == "roi" and key != p.name):
                raise TypeError("%s() got an unexpected keyword argument %r" % (self.name, key))
            if key in values:
                raise TypeError("%s() got multiple values for argument %r" % (self.name, key))
            values[key] = a
        return Call(self, values)

    def __call__(self, *args, **kw):
        call = self.bind(*args, **kw)
        return call.finish(call.run(call.roi))


class Call:
    """An export with its arguments converted, ready to run on any region."""

    def __init__(self, export, values):
        self.export = export
        self.keep = []  # what the C values point into
        self.allocated = []  # outputs to return, in parameter order
        self.arrays = {}  # image name -> array (planes: list of arrays)
        name = export.name

        # Images given first: they fix the size of images to allocate.
        size = None
        for p in export.images:
            value = values.get(p.name)
            if value is None:
                continue
            checked = _check_planes(name, p, value) if p.kind == "planes" else \
                _check_image(name, p, value)
            self.arrays[p.name] = checked
            if size is None:
                first = checked[0] if p.kind == "planes" else checked
                size = first.shape[:2]

        roi_value = values.get(export.roi_param.name) if export.roi_param else None
        if roi_value is not None:
            roi = _tuple_of(name, export.roi_param, roi_value, 4)
        else:
            roi = None
        if size is None and roi is not None:
            size = (max(roi[1] + roi[3], 0), max(roi[0] + roi[2], 0))
        for p in export.images:
            if p.name in self.arrays:
                continue
            if not p.output:
                raise TypeError("%s: argument %s is required (%s)" % (name, p.name, p.describe()))
            if size is None:
                raise TypeError("%s: give an image or roi= so that %s can be allocated"
                                % (name, p.name))
            h, w = size
            if p.kind == "planes":
                block = np.zeros((p.length, h, w), p.dtype)
                self.arrays[p.name] = list(block)
                self.allocated.append(block)
            else:
                shape = (h, w) if p.channels == 1 else (h, w, p.channels)
                array = np.zeros(shape, p.dtype)
                self.arrays[p.name] = array
                self.allocated.append(array)
        if export.roi_param is not None and roi is None:
            if size is None:
                raise TypeError("%s: roi= is required when no image is given" % name)
            roi = (0, 0, size[1], size[0])
        self.roi = roi
        if roi is not None:
            self._check_region(roi)

        # C values of everything but the region.
        self.cvalues = []
        self.outputs = []  # (param, cdata) of values the export writes
        for p, role in export.layout:
            if p.kind == "roi":
                self.cvalues.append(None)  # filled in by run()
            elif p.kind in ("image", "planes"):
                self.cvalues.append(self._image_value(p, role))
            else:
                self.cvalues.append(self._value(p, values.get(p.name)))
        self.roi_index = next((i for i, (p, _) in enumerate(export.layout) if p.kind == "roi"),
                              None)

    def _check_region(self, roi):
        x, y, w, h = roi
        if w <= 0 or h <= 0:
            return  # the library reports an empty region itself
        for p in self.export.images:
            a = self.arrays[p.name]
            rows, cols = (a[0].shape if p.kind == "planes" else a.shape[:2])
            if x < 0 or y < 0 or x + w > cols or y + h > rows:
                raise ValueError("%s: roi=%r lies outside %s (%d x %d pixels)"
                                 % (self.export.name, tuple(roi), p.name, cols, rows))

    def _image_value(self, p, role):
        a = self.arrays[p.name]
        if p.kind == "planes":
            if role == "step":
                return a[0].strides[0]
            ptrs = ffi.new("%s *[%d]" % (p.ctype, p.length),
                           [ffi.cast("%s *" % p.ctype, plane.ctypes.data) for plane in a])
            self.keep.append(ptrs)
            return ptrs
        if role == "step":
            return a.strides[0]
        return ffi.cast("%s *" % p.ctype, a.ctypes.data)

    def _value(self, p, value):
        name = self.export.name
        if p.kind == "struct":
            if isinstance(value, ffi.CData):
                return value
            fields = ffi.typeof(p.ctype).fields
            try:
                return ffi.new("%s *" % p.ctype, _tuple_of(name, p, value, len(fields)))[0]
            except (TypeError, OverflowError) as e:
                raise TypeError("%s: %s must be %s: %s" % (name, p.name, p.describe(), e))
        if p.kind == "array":
            if value is None and p.output:
                out = ffi.new("%s[%d]" % (p.ctype, p.length))
                self.outputs.append((p, out))
                return out
            items = _tuple_of(name, p, value, p.length if p.length else None)
            try:
                out = ffi.new("%s[%d]" % (p.ctype, len(items)), items)
            except (TypeError, OverflowError) as e:
                raise TypeError("%s: %s must be %s: %s" % (name, p.name, p.describe(), e))
            self.keep.append(out)
            return out
        if p.kind == "pointer":
            if value is None and p.output:
                out = ffi.new("%s *" % p.ctype)
                self.outputs.append((p, out))
                return out
            if value is None or isinstance(value, ffi.CData):
                return ffi.NULL if value is None else value
            if isinstance(value, np.ndarray):
                if p.dtype is not None and value.dtype != p.dtype:
                    raise TypeError("%s: %s must have dtype %s, not %s"
                                    % (name, p.name, p.dtype, value.dtype))
                if not value.flags.c_contiguous:
                    raise TypeError("%s: %s must be contiguous" % (name, p.name))
                self.keep.append(value)
                return ffi.cast("%s *" % p.ctype, value.ctypes.data)
            items = list(value) if hasattr(value, "__len__") else [value]
            out = ffi.new("%s[%d]" % (p.ctype, len(items)), items)
            self.keep.append(out)
            return out
        if p.kind == "scalar":
            if value is None:
                raise TypeError("%s: argument %s is required" % (name, p.name))
            if isinstance(value, np.generic):
                value = value.item()
            if p.dtype is not None and p.dtype.kind in "iu" and not isinstance(value, (int, bool)):
                if isinstance(value, float) and value.is_integer():
                    value = int(value)
                else:
                    raise TypeError("%s: %s must be an integer, not %r" % (name, p.name, value))
            return value
        if value is None:
            raise TypeError("%s: argument %s is required" % (name, p.name))
        return value

    def run(self, roi):
        """Calls the export on one region; returns its raw result."""
        args = list(self.cvalues)
        if self.roi_index is not None:
            args[self.roi_index] = ffi.new("PxliRect *", tuple(int(v) for v in roi))[0]
        return self.export.cfunc(*args)

    def results(self):
        out = list(self.allocated)
        for p, cdata in self.outputs:
            if p.kind == "array":
                out.append(tuple(_plain(cdata[i]) for i in range(p.length)))
            else:
                out.append(_plain(cdata[0]))
        return out

    def finish(self, result):
        """Turns the raw result of run() into what the Python call returns."""
        export = self.export
        out = self.results()
        if export.ret == "PxlStatus":
            check(export.name, result)
        elif export.ret != "void":
            # Something else than a status (a count, a pointer: null is None)
            # comes first.
            if isinstance(result, ffi.CData) and export.ret.endswith("*") and result == ffi.NULL:
                result = None
            out.insert(0, result)
        if not out:
            return None
        return out[0] if len(out) == 1 else tuple(out)


def _plain(value):
    """A C value as Python: records become tuples of their fields."""
    if isinstance(value, ffi.CData) and ffi.typeof(value).kind == "struct":
        return tuple(_plain(getattr(value, f)) for f, _ in ffi.typeof(value).fields)
    return value


def _tuple_of(function, p, value, length):
    if isinstance(value, dict):
        fields = [f for f, _ in ffi.typeof(p.ctype).fields]
        value = tuple(value[f] for f in fields)
    try:
        items = tuple(v.item() if isinstance(v, np.generic) else v for v in value)
    except TypeError:
        raise TypeError("%s: %s must be %s, not %r" % (function, p.name, p.describe(), value))
    if length is not None and len(items) != length:
        raise TypeError("%s: %s must be %s; got %d values" % (function, p.name, p.describe(),
                                                              len(items)))
    return items


def _check_image(function, p, a, plane=False):
    what = "%s of %s" % ("a plane", p.name) if plane else p.name
    if not isinstance(a, np.ndarray):
        raise TypeError("%s: %s must be a numpy array (%s), not %s"
                        % (function, what, p.describe(), type(a).__name__))
    if a.dtype != p.dtype:
        raise TypeError("%s: %s must have dtype %s, not %s" % (function, what, p.dtype, a.dtype))
    item = a.itemsize
    channels = 1 if plane else p.channels
    if p.coi and a.ndim == 2:
        # A view of one channel, img[:, :, c]: the pointer is at that channel.
        if a.shape[1] > 1 and a.strides[1] != channels * item:
            raise TypeError("%s: %s must be one channel of a %d-channel image, as img[:, :, c], "
                            "or the whole image; got shape %s, strides %s"
                            % (function, what, channels, a.shape, a.strides))
    elif channels == 1:
        if a.ndim == 3 and a.shape[2] == 1:
            a = a[:, :, 0]
        if a.ndim != 2:
            raise TypeError("%s: %s must have one channel, shape (height, width); got shape %s"
                            % (function, what, a.shape))
        if a.shape[1] > 1 and a.strides[1] != item:
            raise TypeError("%s: the pixels of %s must be contiguous within a row" % (function, what))
    else:
        if a.ndim != 3 or a.shape[2] != channels:
            raise TypeError("%s: %s must have %d channels, shape (height, width, %d); got shape %s"
                            % (function, what, channels, channels, a.shape))
        if a.strides[2] != item or (a.shape[1] > 1 and a.strides[1] != channels * item):
            raise TypeError("%s: the pixels of %s must be contiguous within a row" % (function, what))
    if not -2**31 <= a.strides[0] < 2**31:
        raise TypeError("%s: the row stride of %s does not fit a step" % (function, what))
    if not p.const and not a.flags.writeable:
        raise TypeError("%s: %s is written and must not be read-only" % (function, what))
    return a


def _check_planes(function, p, value):
    if isinstance(value, np.ndarray) and value.ndim == 3:
        value = list(value)
    try:
        planes = list(value)
    except TypeError:
        raise TypeError("%s: %s must be a list of %d 2-D arrays" % (function, p.name, p.length))
    if len(planes) != p.length:
        raise TypeError("%s: %s must be a list of %d planes, got %d"
                        % (function, p.name, p.length, len(planes)))
    planes = [_check_image(function, p, a, plane=True) for a in planes]
    if any(a.shape != planes[0].shape for a in planes):
        raise TypeError("%s: the planes of %s must have one shape" % (function, p.name))
    if any(a.strides[0] != planes[0].strides[0] for a in planes):
        raise TypeError("%s: the planes of %s must share one row stride" % (function, p.name))
    return planes


_exports = {}
_declared = {name: (ret, params) for name, ret, params in _api.FUNCTIONS}


def export(name):
    """The wrapper of the export called name (built on first use)."""
    if isinstance(name, Export):
        return name
    wrapper = _exports.get(name)
    if wrapper is None:
        if name not in _declared:
            raise AttributeError("pxl has no export %r" % name)
        ret, params = _declared[name]
        wrapper = _exports[name] = Export(name, ret, params)
    return wrapper


def names():
    """The names of every export the header declares."""
    return list(_declared)
