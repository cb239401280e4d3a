// Malloc, Free and the working-buffer allocator.
#include <stdint.h>
#include <stdlib.h>

#include "core/dispatch.h"
#include "core/image_formats.h"
#include "core/memory.h"
#include "pxl/pxl_core.h"

namespace {

int g_failIn = -1;  // allocations left before the one that fails; -1: none
long g_live = 0;    // blocks handed out and not released

}  // namespace

void* pxlBufferAlloc(int size) {
  if (size < 1 || size > 0x7FFFFFFF - 72) return nullptr;
  if (__builtin_expect(g_failIn >= 0, 0) && g_failIn-- == 0) return nullptr;
  void* block = malloc(static_cast<size_t>(size) + 72);
  if (!block) return nullptr;
  const uintptr_t user = (reinterpret_cast<uintptr_t>(block) + 71) & ~uintptr_t{63};
  reinterpret_cast<void**>(user)[-1] = block;
  __atomic_add_fetch(&g_live, 1, __ATOMIC_RELAXED);
  return reinterpret_cast<void*>(user);
}

void pxlBufferFree(void* ptr) {
  if (!ptr) return;
  __atomic_sub_fetch(&g_live, 1, __ATOMIC_RELAXED);
  free(static_cast<void**>(ptr)[-1]);
}

namespace pxl {
namespace test {
void FailAllocation(int n) { g_failIn = n; }
long LiveBuffers() { return __atomic_load_n(&g_live, __ATOMIC_RELAXED); }
}  // namespace test
}  // namespace pxl

extern "C" {

void* Malloc(int width, int height, int format, int* pStepBytes) {
  typedef void* (*Allocate)(int, int, int*);
#define PXL_MALLOC_ENTRY(code, bytes) &pxl::k::mallocFormat##code,
  static const Allocate kByFormat[] = {PXL_IMAGE_FORMATS(PXL_MALLOC_ENTRY)};
#undef PXL_MALLOC_ENTRY
  if (format < 1 || format > 35) return nullptr;
  return kByFormat[format - 1](width, height, pStepBytes);
}

Pxl8u* Malloc_8u_C1(int width, int height, int* pStepBytes) {
  return static_cast<Pxl8u*>(pxl::k::mallocFormat1(width, height, pStepBytes));
}

void Free(void* ptr) { pxlBufferFree(ptr); }

}  // extern "C"
