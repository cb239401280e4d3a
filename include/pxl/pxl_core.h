/*
 * pxl - start-up, processor features and image memory.
 */
#ifndef PXL_CORE_H
#define PXL_CORE_H

#include "pxl_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Bits of the feature mask written by GetCpuFeatures. */
#define PXL_CPU_MMX 0x1ULL
#define PXL_CPU_SSE 0x2ULL
#define PXL_CPU_SSE2 0x4ULL
#define PXL_CPU_SSE3 0x8ULL
#define PXL_CPU_SSSE3 0x10ULL
#define PXL_CPU_MOVBE 0x20ULL
#define PXL_CPU_SSE41 0x40ULL
#define PXL_CPU_SSE42 0x80ULL
#define PXL_CPU_AVX 0x100ULL
#define PXL_CPU_AVX_OS 0x200ULL /* the OS saves the AVX state */
#define PXL_CPU_AES 0x400ULL
#define PXL_CPU_CLMUL 0x800ULL
#define PXL_CPU_RDRAND 0x2000ULL
#define PXL_CPU_F16C 0x4000ULL
#define PXL_CPU_AVX2 0x8000ULL /* AVX2 with FMA, BMI1 and BMI2 */
#define PXL_CPU_ADX 0x10000ULL
#define PXL_CPU_RDSEED 0x20000ULL
#define PXL_CPU_PREFETCHW 0x40000ULL
#define PXL_CPU_SHA 0x80000ULL
#define PXL_CPU_AVX512F 0x100000ULL
#define PXL_CPU_AVX512CD 0x200000ULL
#define PXL_CPU_AVX512ER 0x400000ULL
#define PXL_CPU_AVX512PF 0x800000ULL
#define PXL_CPU_AVX512BW 0x1000000ULL
#define PXL_CPU_AVX512DQ 0x2000000ULL
#define PXL_CPU_AVX512VL 0x4000000ULL
#define PXL_CPU_AVX512VBMI 0x8000000ULL
#define PXL_CPU_MPX 0x10000000ULL
#define PXL_CPU_AVX5124FMAPS 0x20000000ULL
#define PXL_CPU_AVX5124VNNIW 0x40000000ULL
#define PXL_CPU_MODEL_TEST 0x80000000ULL
#define PXL_CPU_AVX512IFMA 0x100000000ULL
#define PXL_CPU_AVX512_OS 0x200000000ULL /* the OS saves the AVX-512 state */
#define PXL_CPU_AVX512VPOPCNT 0x400000000ULL
#define PXL_CPU_AVX512BITALG 0x800000000ULL

/*
 * Detects the processor and selects the processor level of every kernel.
 * Optional: the first kernel call does the same.  Returns pxlStsNoErr,
 * pxlStsNonIntelCpu (another vendor; the level is chosen all the same, so
 * this is not a failure), pxlStsFeatureNotSupported (AVX or AVX-512 without
 * operating-system support), pxlStsNotSupportedCpu (no SSE2) or
 * pxlStsFeaturesCombination.  Kernels run after any of these.
 */
PXL_API PxlStatus Init(void);

/* Writes the detected feature mask (PXL_CPU_* bits); pxlStsNullPtrErr on a null pointer. */
PXL_API PxlStatus GetCpuFeatures(Pxl64u* pFeatureMask);

/* The library runs on the caller's thread only: ignores its argument and returns 1
 * (pxlStsNoOperation). */
PXL_API PxlStatus SetNumThreads(int numThreads);

/* Writes 1 and returns 1 (pxlStsNoOperation); pxlStsNullPtrErr on a null pointer. */
PXL_API PxlStatus GetNumThreads(int* pNumThreads);

/*
 * Format codes of Malloc: layout * 7 + type + 1 over the layouts C1, C2, C3,
 * C4, AC4 and the element types 8u, 16u, 16s, 32s, 32f, 32sc, 32fc (32sc and
 * 32fc are complex pairs of 32-bit integers and floats).  The pixel size in
 * bytes follows each name; AC4 takes the same space as C4, and codes of equal
 * pixel size allocate alike.
 */
enum {
  PXL_FMT_8U_C1 = 1,     /* 1 byte a pixel */
  PXL_FMT_16U_C1 = 2,    /* 2 */
  PXL_FMT_16S_C1 = 3,    /* 2 */
  PXL_FMT_32S_C1 = 4,    /* 4 */
  PXL_FMT_32F_C1 = 5,    /* 4: a float map */
  PXL_FMT_32SC_C1 = 6,   /* 8 */
  PXL_FMT_32FC_C1 = 7,   /* 8 */
  PXL_FMT_8U_C2 = 8,     /* 2 */
  PXL_FMT_16U_C2 = 9,    /* 4 */
  PXL_FMT_16S_C2 = 10,   /* 4 */
  PXL_FMT_32S_C2 = 11,   /* 8 */
  PXL_FMT_32F_C2 = 12,   /* 8 */
  PXL_FMT_32SC_C2 = 13,  /* 16 */
  PXL_FMT_32FC_C2 = 14,  /* 16 */
  PXL_FMT_8U_C3 = 15,    /* 3 */
  PXL_FMT_16U_C3 = 16,   /* 6 */
  PXL_FMT_16S_C3 = 17,   /* 6 */
  PXL_FMT_32S_C3 = 18,   /* 12 */
  PXL_FMT_32F_C3 = 19,   /* 12 */
  PXL_FMT_32SC_C3 = 20,  /* 24 */
  PXL_FMT_32FC_C3 = 21,  /* 24 */
  PXL_FMT_8U_C4 = 22,    /* 4 */
  PXL_FMT_16U_C4 = 23,   /* 8 */
  PXL_FMT_16S_C4 = 24,   /* 8 */
  PXL_FMT_32S_C4 = 25,   /* 16 */
  PXL_FMT_32F_C4 = 26,   /* 16: a float RGBA image */
  PXL_FMT_32SC_C4 = 27,  /* 32 */
  PXL_FMT_32FC_C4 = 28,  /* 32 */
  PXL_FMT_8U_AC4 = 29,   /* 4 */
  PXL_FMT_16U_AC4 = 30,  /* 8 */
  PXL_FMT_16S_AC4 = 31,  /* 8 */
  PXL_FMT_32S_AC4 = 32,  /* 16 */
  PXL_FMT_32F_AC4 = 33,  /* 16 */
  PXL_FMT_32SC_AC4 = 34, /* 32 */
  PXL_FMT_32FC_AC4 = 35  /* 32 */
};

/*
 * Allocates an image of width x height pixels whose rows start on 64-byte
 * boundaries; the row step (a multiple of 64) is written to *pStepBytes.
 * format = layout * 7 + type + 1, layouts C1, C2, C3, C4, AC4 (0..4) and
 * types 8u, 16u, 16s, 32s, 32f, 32sc, 32fc (0..6), so 1..35.  Returns null
 * on a null pStepBytes; on a format outside 1..35 (step untouched); on a
 * width or height below 1 or a row above 0x7FFFFFFF bytes (step set to 0);
 * on a total above 0x7FFFFFFF bytes (step left written); or when the heap
 * fails.  Release with Free.  The memory is not cleared.
 */
PXL_API void* Malloc(int width, int height, int format, int* pStepBytes);

/* Malloc with PXL_FMT_8U_C1: a one-channel 8-bit image. */
PXL_API Pxl8u* Malloc_8u_C1(int width, int height, int* pStepBytes);

/* Releases what Malloc or Malloc_8u_C1 returned; null does nothing. */
PXL_API void Free(void* ptr);

#ifdef __cplusplus
}
#endif

#endif /* PXL_CORE_H */
