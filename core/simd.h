// Prelude of every kernel unit (*.simd.cpp).  A unit is compiled once per
// processor level with PXL_LEVEL set and that level's instruction-set flags;
// all of its code, helpers and templates included, goes inside
// PXL_LEVEL_BEGIN / PXL_LEVEL_END so that no two levels share a symbol the
// linker could merge.  Only C headers without inline code are included here.
#ifndef PXL_CORE_SIMD_H
#define PXL_CORE_SIMD_H

#ifndef PXL_LEVEL
#error "a kernel unit is compiled through its generated per-level wrapper"
#endif

#include <immintrin.h>
#include <stddef.h>
#include <stdint.h>

#include "core/dispatch.h"

// Vector types serve as template arguments (one specialisation per register
// width); the alignment attributes that GCC drops from them there play no
// part in what those templates do.
#pragma GCC diagnostic ignored "-Wignored-attributes"

#define PXL_NS PXL_CAT(l, PXL_LEVEL)
#define PXL_LEVEL_BEGIN \
  namespace pxl {       \
  namespace PXL_NS {
#define PXL_LEVEL_END \
  }                   \
  }

#define PXL_INLINE inline __attribute__((always_inline))

// The C runtime's functions that kernels call, declared here rather than
// through <cmath>, whose inline overloads would be compiled once per level.
extern "C" float powf(float, float) noexcept;

PXL_LEVEL_BEGIN

// Moves a pointer by a signed byte offset.
template <typename T>
PXL_INLINE T* AddBytes(T* p, intptr_t bytes) {
  return reinterpret_cast<T*>(reinterpret_cast<uintptr_t>(p) + static_cast<uintptr_t>(bytes));
}

// A float at any byte address (a row step need not be a multiple of 4).
PXL_INLINE float LoadFloat(const float* p) {
  float v;
  __builtin_memcpy(&v, p, sizeof v);
  return v;
}

PXL_LEVEL_END

#endif
