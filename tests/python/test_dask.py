"""pxl.dask: the same calls a block at a time on Dask's local schedulers."""
import dask.array as da
import numpy as np
import pytest

import pxl
import pxl.dask

rng = np.random.default_rng(5)
SCHEDULERS = ["synchronous", "threads"]


@pytest.mark.parametrize("scheduler", SCHEDULERS)
def test_copies_match_one_call(scheduler):
    src = rng.integers(0, 255, (70, 45, 3)).astype(np.uint8)
    blocks = da.from_array(src, chunks=(17, 23, 3))
    out = pxl.dask.map_blocks(pxl.Copy_8u_C3R, blocks)
    assert out.shape == src.shape and out.dtype == np.uint8
    np.testing.assert_array_equal(out.compute(scheduler=scheduler), src)
    planes = pxl.dask.map_blocks("Copy_8u_C3P3R", blocks).compute(scheduler=scheduler)
    np.testing.assert_array_equal(planes, pxl.Copy_8u_C3P3R(src))
    back = pxl.dask.map_blocks("Copy_8u_P3C3R", list(da.from_array(planes, chunks=(1, 30, 30))))
    np.testing.assert_array_equal(back.compute(scheduler=scheduler), src)
    swapped = pxl.dask.map_blocks(pxl.SwapChannels_8u_C3R, blocks, dstOrder=(2, 1, 0))
    np.testing.assert_array_equal(swapped.compute(scheduler=scheduler), src[..., ::-1])


@pytest.mark.parametrize("scheduler", SCHEDULERS)
def test_in_place_export_returns_a_new_image(scheduler):
    img = rng.random((64, 50, 4), dtype=np.float32)
    gain = rng.random((64, 50), dtype=np.float32)
    kept = img.copy()
    one = img.copy()
    pxl.AdjustExposureLin_32f_C4IMR(one, value=0.2, pMap=gain, minValue=-1, maxValue=1)
    # Image and map in different blocks; a numpy map is taken as it is.
    out = pxl.dask.map_blocks("AdjustExposureLin_32f_C4IMR", da.from_array(img, chunks=(16, 25, 4)),
                              value=0.2, pMap=da.from_array(gain, chunks=(32, 10)),
                              minValue=-1, maxValue=1)
    assert out.compute(scheduler=scheduler).tobytes() == one.tobytes()
    np.testing.assert_array_equal(img, kept)


def test_overlap_depth_gives_the_same_pixels():
    src = rng.random((40, 30, 4), dtype=np.float32)
    out = pxl.dask.map_blocks(pxl.Copy_32f_C4R, da.from_array(src, chunks=(13, 11, 4)), depth=3)
    assert out.shape == src.shape
    np.testing.assert_array_equal(out.compute(scheduler="synchronous"), src)


def test_refusals():
    blocks = da.zeros((8, 8, 3), np.uint8, chunks=4)
    with pytest.raises(TypeError, match="region"):
        pxl.dask.map_blocks(pxl.Copy_8u_C3R, blocks, roi=(0, 0, 2, 2))
    with pytest.raises(TypeError, match="pSrc"):
        pxl.dask.map_blocks(pxl.Copy_8u_C3R, da.zeros((8, 8, 3), np.uint16, chunks=4)).compute()
