"""The Python package against numpy: arrays for images, regions, records,
statuses, and outputs allocated when left out."""
import warnings

import numpy as np
import pytest

import pxl

rng = np.random.default_rng(7)


def image(h, w, c=None, dtype=np.uint8):
    shape = (h, w) if c is None else (h, w, c)
    if np.dtype(dtype).kind == "f":
        return rng.random(shape, dtype=np.float32).astype(dtype)
    return rng.integers(0, 250, shape).astype(dtype)


def padded(h, w, c, dtype=np.uint8, pad=5):
    """A view with rows longer than its pixels, inside a bigger buffer."""
    big = image(h + 2, w + pad, c, dtype)
    return big[1:h + 1, 2:w + 2]


class TestImages:
    def test_copy_of_a_region_writes_only_the_region(self):
        src, dst = image(9, 11, 3), np.zeros((9, 11, 3), np.uint8)
        assert pxl.Copy_8u_C3R(src, dst, roi=(2, 3, 5, 4)) is None
        want = np.zeros_like(dst)
        want[3:7, 2:7] = src[3:7, 2:7]
        np.testing.assert_array_equal(dst, want)

    @pytest.mark.parametrize("src_view, dst_view", [
        ("padded", "plain"), ("plain", "padded"), ("flipped", "plain"), ("plain", "flipped"),
        ("flipped", "padded")])
    def test_any_row_stride(self, src_view, dst_view):
        def make(kind):
            if kind == "padded":
                return padded(7, 6, 4, np.float32)
            a = image(7, 6, 4, np.float32)
            return a[::-1] if kind == "flipped" else a
        src, dst = make(src_view), make(dst_view)
        outside = dst.base.copy() if dst.base is not None else None
        pxl.Copy_32f_C4R(src, dst)
        np.testing.assert_array_equal(dst, src)
        if src_view == "plain" and dst_view == "padded":
            # Nothing of the padding around the view was written.
            big = dst.base
            np.testing.assert_array_equal(big[0], outside[0])
            np.testing.assert_array_equal(big[:, :2], outside[:, :2])

    def test_planes_both_ways(self):
        src = padded(5, 8, 3)
        planes = pxl.Copy_8u_C3P3R(src)
        assert planes.shape == (3, 5, 8)
        for c in range(3):
            np.testing.assert_array_equal(planes[c], src[:, :, c])
        # Planes given as a list of views that share one row stride.
        buf = np.zeros((3, 5, 12), np.uint8)
        back = pxl.Copy_8u_P3C3R([buf[0, :, :8], buf[1, :, :8], buf[2, :, :8]])
        np.testing.assert_array_equal(back, 0)
        back = pxl.Copy_8u_P3C3R(list(planes[:, ::-1]))
        np.testing.assert_array_equal(back, src[::-1])

    def test_set_takes_a_value_per_channel(self):
        dst = np.zeros((4, 6, 3), np.uint8)
        pxl.Set_8u_C3R((1, 2, 250), dst, roi=(1, 1, 2, 2))
        assert (dst[1:3, 1:3] == (1, 2, 250)).all()
        assert dst.sum() == 4 * 253
        one = pxl.Set_32f_C1R(0.5, roi=(0, 0, 3, 2))  # allocated from the region
        np.testing.assert_array_equal(one, np.full((2, 3), 0.5, np.float32))

    def test_channel_orders(self):
        src = image(4, 5, 4, np.uint16)
        np.testing.assert_array_equal(pxl.Swizzle_16u_C4R(src, order=(3, 2, 1, 0)), src[..., ::-1])
        bgr = pxl.SwapChannels_8u_C3R(src[..., :3].astype(np.uint8), None, (2, 1, 0))
        np.testing.assert_array_equal(bgr, src[..., 2::-1].astype(np.uint8))
        inplace = src.copy()
        pxl.Swizzle_16u_C4IR(inplace, order=[1, 1, 1, 1])
        np.testing.assert_array_equal(inplace, np.repeat(src[..., 1:2], 4, axis=2))

    def test_one_channel_of_many(self):
        src, dst = image(3, 4, 3), np.zeros((3, 4, 3), np.uint8)
        pxl.Copy_8u_C3CR(src[:, :, 1], dst[:, :, 1])
        np.testing.assert_array_equal(dst[..., 1], src[..., 1])
        assert not dst[..., 0].any() and not dst[..., 2].any()
        np.testing.assert_array_equal(pxl.Copy_8u_C3C1R(src[:, :, 2]), src[..., 2])

    def test_masked_copy(self):
        src, dst = image(5, 5, 1, np.float32), np.zeros((5, 5, 1), np.float32)
        mask = (np.arange(25).reshape(5, 5) % 2).astype(np.uint8)
        pxl.Copy_32f_C1MR(src, dst, pMask=mask)
        np.testing.assert_array_equal(dst[..., 0], np.where(mask != 0, src[..., 0], 0))

    def test_tonal_exports_against_numpy(self):
        img = padded(6, 7, 4, np.float32)
        gain = image(6, 7, None, np.float32) * 2
        want = img.copy()
        want[..., :3] *= gain[..., None]
        pxl.AdjustBrightness_32f_AC4IR(img, pMap=gain)
        np.testing.assert_array_equal(img, want)

        img2 = image(6, 7, 4, np.float32)[::-1]
        contrast = np.full((6, 7), 1.5, np.float32)
        half = np.float32(0.5)
        want = img2.copy()
        want[..., :3] = (want[..., :3] - half) * np.float32(1.5) + half
        pxl.AdjustContrast_32f_AC4IR(img2, roi=(0, 0, 7, 6), pMap=contrast)
        np.testing.assert_array_equal(img2, want)

    def test_records_and_values_written_by_the_export(self):
        features = pxl.GetCpuFeatures()
        assert features & pxl.PXL_CPU_SSE2
        with pytest.warns(pxl.Warning) as caught:
            assert pxl.GetNumThreads() == 1
        assert caught[0].message.code == pxl.pxlStsNoOperation
        assert caught[0].message.name == "pxlStsNoOperation"
        assert issubclass(pxl.Warning, UserWarning)
        # An export that returns something else than a status returns it,
        # before the values it writes.
        memory, step = pxl.Malloc(10, 2, pxl.PXL_FMT_8U_C3)
        assert memory is not None and step == 64
        assert pxl.Free(memory) is None
        assert pxl.Malloc(0, 2, pxl.PXL_FMT_8U_C3) == (None, 0)

    def test_every_declared_export_is_callable(self):
        names = pxl.names()
        assert len(names) > 200 and "Copy_8u_C3P3R" in names and "Init" in names
        for name in names:
            assert getattr(pxl, name).__name__ == name
        assert "Copy_8u_C3R" in dir(pxl)
        with pytest.raises(AttributeError):
            pxl.Copy_8u_C5R


class TestRefusals:
    @pytest.mark.parametrize("call, argument", [
        (lambda: pxl.Copy_8u_C3R(image(3, 3, 3, np.uint16)), "pSrc"),
        (lambda: pxl.Copy_8u_C3R(image(3, 3, 4)), "pSrc"),
        (lambda: pxl.Copy_8u_C3R(image(3, 3)), "pSrc"),
        (lambda: pxl.Copy_8u_C3R(image(3, 3, 3), np.zeros((3, 3, 3), np.float32)), "pDst"),
        (lambda: pxl.Copy_8u_C3R(image(3, 3, 3), np.zeros((3, 3, 4), np.uint8)), "pDst"),
        (lambda: pxl.Copy_8u_C3R(image(3, 6, 3)[:, ::2]), "pSrc"),
        (lambda: pxl.Copy_8u_C3R([[1, 2, 3]]), "pSrc"),
        (lambda: pxl.Copy_8u_P3C3R([image(3, 3)] * 2), "pSrc"),
        (lambda: pxl.Copy_8u_P3C3R([image(3, 3), image(3, 4)[:, :3], image(3, 3)]), "pSrc"),
        (lambda: pxl.Set_8u_C3R((1, 2), np.zeros((2, 2, 3), np.uint8)), "value"),
        (lambda: pxl.AdjustBrightness_32f_AC4IR(image(2, 2, 4, np.float32),
                                                pMap=np.ones((2, 2), np.float64)), "pMap"),
        (lambda: pxl.Swizzle_8u_C3IR(np.zeros((2, 2, 3), np.uint8)), "order"),
    ])
    def test_wrong_arrays_raise_type_error_naming_the_argument(self, call, argument):
        with pytest.raises(TypeError, match=argument):
            call()

    def test_read_only_destination(self):
        img = image(2, 2, 4, np.float32)
        img.flags.writeable = False
        with pytest.raises(TypeError, match="pSrcDst"):
            pxl.AdjustContrast_32f_AC4IR(img, pMap=np.ones((2, 2), np.float32))

    @pytest.mark.parametrize("roi, code, name", [
        ((0, 0, 0, 2), -6, "pxlStsSizeErr"), ((0, 0, 2, -1), -6, "pxlStsSizeErr")])
    def test_bad_region_is_the_library_status(self, roi, code, name):
        dst = np.zeros((2, 2, 3), np.uint8)
        with pytest.raises(pxl.Error) as e:
            pxl.Copy_8u_C3R(image(2, 2, 3), dst, roi=roi)
        assert (e.value.code, e.value.name, e.value.function) == (code, name, "Copy_8u_C3R")
        assert name in str(e.value) and e.value.text
        assert not dst.any()

    def test_parameter_status(self):
        with pytest.raises(pxl.Error) as e:
            pxl.SwapChannels_8u_C3R(image(2, 2, 3), dstOrder=(0, 1, 3))
        assert e.value.name == "pxlStsChannelOrderErr" and e.value.code == pxl.pxlStsChannelOrderErr

    def test_region_outside_an_array_is_refused_before_the_call(self):
        with pytest.raises(ValueError, match="pDst"):
            pxl.Copy_8u_C3R(image(4, 4, 3), np.zeros((3, 4, 3), np.uint8))
        with pytest.raises(ValueError, match="roi"):
            pxl.Copy_8u_C3R(image(4, 4, 3), roi=(-1, 0, 2, 2))

    def test_warnings_can_be_errors(self):
        with warnings.catch_warnings():
            warnings.simplefilter("error", pxl.Warning)
            with pytest.raises(pxl.Warning):
                pxl.SetNumThreads(4)


def test_a_declaration_added_to_the_header_reaches_python(tmp_path):
    import os
    import runpy
    import shutil
    import subprocess
    import sys
    here = os.path.dirname(os.path.abspath(__file__))
    root = os.path.dirname(os.path.dirname(here))
    include = tmp_path / "include"
    shutil.copytree(os.path.join(root, "include"), include)
    with open(include / "pxl" / "pxl_tonal.h") as f:
        text = f.read()
    end = text.rindex("#ifdef __cplusplus")
    text = text[:end] + ("PXL_API PxlStatus Later_16s8u_C3P3R(const Pxl16s* pSrc, int srcStep,\n"
                         "    Pxl8u* const pDst[3], int dstStep, PxliRect roi,\n"
                         "    const Pxl32f gains[3], PxliSize* pUsed);\n\n") + text[end:]
    (include / "pxl" / "pxl_tonal.h").write_text(text)
    out = tmp_path / "_api.py"
    subprocess.run([sys.executable, os.path.join(root, "python", "gen_bindings.py"), "--cc", "cc",
                    "--include", str(include), "--out", str(out)], check=True)
    api = runpy.run_path(str(out))
    declared = {name: (ret, params) for name, ret, params in api["FUNCTIONS"]}
    assert declared["Later_16s8u_C3P3R"] == ("PxlStatus", [
        ("pSrc", "pointer", "Pxl16s", "int16", 0, True),
        ("srcStep", "scalar", "int", "int32", 0, False),
        ("pDst", "pointer_array", "Pxl8u", "uint8", 3, False),
        ("dstStep", "scalar", "int", "int32", 0, False),
        ("roi", "struct", "PxliRect", None, 0, False),
        ("gains", "array", "Pxl32f", "float32", 3, True),
        ("pUsed", "pointer", "PxliSize", None, 0, False)])
    assert len(declared) == len(pxl.names()) + 1
    assert api["STATUS"][-8] == ("pxlStsNullPtrErr", "A null pointer.")
    assert pxl.parse_name("Later_16s8u_C3P3R") == (("16s", "8u"), ("C3", "P3"), False)
