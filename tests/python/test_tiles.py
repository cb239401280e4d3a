"""pxl.tiled: tiles on a thread pool give the bytes of one call."""
import numpy as np
import pytest

import pxl

rng = np.random.default_rng(11)


def floats(h, w, c):
    return rng.random((h, w, c), dtype=np.float32)


@pytest.mark.parametrize("tile", [(7, 5), (1, 13), (64, 1), (200, 200)])
def test_copies_match_one_call(tile):
    src = rng.integers(0, 255, (61, 43, 3)).astype(np.uint8)
    np.testing.assert_array_equal(pxl.tiled(pxl.Copy_8u_C3R, src, tile=tile, threads=3), src)
    planes = pxl.tiled("Copy_8u_C3P3R", src[::-1], tile=tile, threads=2)
    np.testing.assert_array_equal(planes, pxl.Copy_8u_C3P3R(src[::-1]))
    order = (2, 0, 1, 1)
    src4 = rng.integers(0, 60000, (29, 31, 4)).astype(np.uint16)
    np.testing.assert_array_equal(pxl.tiled(pxl.Swizzle_16u_C4R, src4, order=order, tile=tile),
                                  pxl.Swizzle_16u_C4R(src4, order=order))


@pytest.mark.parametrize("export, extra", [
    ("AdjustBrightness_32f_AC4IR", lambda m: dict(pMap=m * 2)),
    ("AdjustSaturation_32f_AC4IR", lambda m: dict(pMap=m)),
    ("AdjustExposureLin_32f_C4IMR", lambda m: dict(value=0.3, pMap=m - 0.5, minValue=-1, maxValue=1)),
    ("AdjustExposureLin_32f_C4IR", lambda m: dict(value=-0.7)),
])
def test_in_place_tonal_exports_match_one_call(export, extra):
    # Rows of 16-byte pixels from numpy start 16-byte aligned, so every tile
    # takes the curve of the whole image where the export looks at alignment.
    img = floats(53, 37, 4)
    kw = extra(rng.random((53, 37), dtype=np.float32))
    one, tiled = img.copy(), img.copy()
    getattr(pxl, export)(one, roi=(3, 2, 30, 50), **kw)
    pxl.tiled(export, tiled, roi=(3, 2, 30, 50), tile=(9, 11), threads=4, **kw)
    assert one.tobytes() == tiled.tobytes()
    assert not np.array_equal(one, img)


def test_tiles_cover_the_region_once():
    count = np.zeros((40, 50), int)
    parts = pxl.tiles((3, 4, 41, 33), (6, 7))
    for x, y, w, h in parts:
        assert w >= 1 and h >= 1
        count[y:y + h, x:x + w] += 1
    want = np.zeros_like(count)
    want[4:37, 3:44] = 1
    np.testing.assert_array_equal(count, want)
    assert parts[0] == (3, 4, 6, 7) and parts[-1] == (39, 32, 5, 5)


def test_failures():
    src = np.zeros((20, 20, 3), np.uint8)
    with pytest.raises(pxl.Error) as e:
        pxl.tiled(pxl.SwapChannels_8u_C3R, src, dstOrder=(0, 1, 5), tile=(8, 8))
    assert e.value.name == "pxlStsChannelOrderErr"
    with pytest.raises(pxl.Error, match="pxlStsSizeErr"):
        pxl.tiled(pxl.Copy_8u_C3R, src, roi=(0, 0, 0, 5), tile=(8, 8))
    with pytest.raises(ValueError):
        pxl.tiled(pxl.Copy_8u_C3R, src, tile=(0, 8))
    with pytest.raises(TypeError, match="region"):
        pxl.tiled(pxl.GetNumThreads)
