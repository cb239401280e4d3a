/**
 * @file pxl_core.h
 * @brief Start-up, processor features, threads and image memory.
 *
 * Every kernel is built for six processor levels (0: SSE2/SSE3, 1:
 * SSSE3/SSE4.1, 2: SSE4.2, 3: AVX, 4: AVX2 with FMA and BMI, 5: AVX-512) and
 * all six give the same bytes.  The level is chosen once a process, for all
 * kernels together, by Init() or else by the first kernel call.
 */
#ifndef PXL_CORE_H
#define PXL_CORE_H

#include "pxl_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup core Start-up, processor features and image memory
 * @brief Choosing the processor level, and allocating images (pxl_core.h).
 * @{
 */

/**
 * @defgroup cpu_features Processor features
 * @ingroup core
 * @brief Bits of the mask that GetCpuFeatures() writes.
 * @{
 */
#define PXL_CPU_MMX 0x1ULL                   /**< MMX. */
#define PXL_CPU_SSE 0x2ULL                   /**< SSE. */
#define PXL_CPU_SSE2 0x4ULL                  /**< SSE2. */
#define PXL_CPU_SSE3 0x8ULL                  /**< SSE3. */
#define PXL_CPU_SSSE3 0x10ULL                /**< SSSE3. */
#define PXL_CPU_MOVBE 0x20ULL                /**< MOVBE. */
#define PXL_CPU_SSE41 0x40ULL                /**< SSE4.1. */
#define PXL_CPU_SSE42 0x80ULL                /**< SSE4.2. */
#define PXL_CPU_AVX 0x100ULL                 /**< AVX. */
#define PXL_CPU_AVX_OS 0x200ULL              /**< The operating system saves the AVX state. */
#define PXL_CPU_AES 0x400ULL                 /**< AES. */
#define PXL_CPU_CLMUL 0x800ULL               /**< Carry-less multiplication. */
#define PXL_CPU_RDRAND 0x2000ULL             /**< RDRAND. */
#define PXL_CPU_F16C 0x4000ULL               /**< Half-float conversion. */
#define PXL_CPU_AVX2 0x8000ULL               /**< AVX2 with FMA, BMI1 and BMI2. */
#define PXL_CPU_ADX 0x10000ULL               /**< ADX. */
#define PXL_CPU_RDSEED 0x20000ULL            /**< RDSEED. */
#define PXL_CPU_PREFETCHW 0x40000ULL         /**< PREFETCHW. */
#define PXL_CPU_SHA 0x80000ULL               /**< SHA. */
#define PXL_CPU_AVX512F 0x100000ULL          /**< AVX-512 foundation. */
#define PXL_CPU_AVX512CD 0x200000ULL         /**< AVX-512 conflict detection. */
#define PXL_CPU_AVX512ER 0x400000ULL         /**< AVX-512 exponential and reciprocal. */
#define PXL_CPU_AVX512PF 0x800000ULL         /**< AVX-512 prefetch. */
#define PXL_CPU_AVX512BW 0x1000000ULL        /**< AVX-512 bytes and words. */
#define PXL_CPU_AVX512DQ 0x2000000ULL        /**< AVX-512 doublewords and quadwords. */
#define PXL_CPU_AVX512VL 0x4000000ULL        /**< AVX-512 vector lengths. */
#define PXL_CPU_AVX512VBMI 0x8000000ULL      /**< AVX-512 byte permutes. */
#define PXL_CPU_MPX 0x10000000ULL            /**< Memory protection extensions. */
#define PXL_CPU_AVX5124FMAPS 0x20000000ULL   /**< AVX-512 four-iteration FMA. */
#define PXL_CPU_AVX5124VNNIW 0x40000000ULL   /**< AVX-512 four-iteration word dot products. */
#define PXL_CPU_MODEL_TEST 0x80000000ULL     /**< Processor family 0xB, model 1 (cpuid leaf 1). */
#define PXL_CPU_AVX512IFMA 0x100000000ULL    /**< AVX-512 integer FMA. */
#define PXL_CPU_AVX512_OS 0x200000000ULL     /**< The operating system saves the AVX-512 state. */
#define PXL_CPU_AVX512VPOPCNT 0x400000000ULL /**< AVX-512 population count. */
#define PXL_CPU_AVX512BITALG 0x800000000ULL  /**< AVX-512 bit algorithms. */
/** @} */

/**
 * Detects the processor and selects the processor level of every kernel.
 *
 * Optional: the first kernel call does the same, and calling it again, at
 * any time, selects the same level.  The level is the highest whose
 * instruction sets are all present and, for AVX and AVX-512, whose register
 * state the operating system saves.  Kernels run after any of the results
 * below.
 *
 * @return #pxlStsNoErr;
 *         #pxlStsNonIntelCpu when the processor is another vendor's (the level
 *         is chosen all the same, so this is not a failure);
 *         #pxlStsFeatureNotSupported when AVX or AVX-512 is present but the
 *         operating system does not save its state (a lower level is used);
 *         #pxlStsNotSupportedCpu without SSE2; or
 *         #pxlStsFeaturesCombination when a level's instruction sets are only
 *         partly present.
 */
PXL_API PxlStatus Init(void);

/**
 * Writes the detected processor features.
 *
 * @param[out] pFeatureMask  receives the PXL_CPU_* bits of this processor.
 * @return #pxlStsNoErr, or #pxlStsNullPtrErr on a null @p pFeatureMask.
 */
PXL_API PxlStatus GetCpuFeatures(Pxl64u* pFeatureMask);

/**
 * Does nothing: the library runs on the caller's thread only.
 *
 * @param numThreads  ignored.
 * @return #pxlStsNoOperation (1), always.
 */
PXL_API PxlStatus SetNumThreads(int numThreads);

/**
 * Reports the number of threads the library uses: 1.
 *
 * @param[out] pNumThreads  receives 1.
 * @return #pxlStsNoOperation (1), or #pxlStsNullPtrErr on a null
 *         @p pNumThreads.
 */
PXL_API PxlStatus GetNumThreads(int* pNumThreads);

/**
 * @brief Format codes of Malloc().
 *
 * A code is layout * 7 + type + 1 over the layouts C1, C2, C3, C4, AC4
 * (0 to 4) and the element types 8u, 16u, 16s, 32s, 32f, 32sc, 32fc (0 to
 * 6); 32sc and 32fc are complex pairs of 32-bit integers and of floats.  The
 * pixel size in bytes follows each name.  AC4 takes the same space as C4, and
 * codes of equal pixel size allocate alike.
 */
enum {
  PXL_FMT_8U_C1 = 1,     /**< 1 byte a pixel. */
  PXL_FMT_16U_C1 = 2,    /**< 2 bytes. */
  PXL_FMT_16S_C1 = 3,    /**< 2 bytes. */
  PXL_FMT_32S_C1 = 4,    /**< 4 bytes. */
  PXL_FMT_32F_C1 = 5,    /**< 4 bytes: a float parameter map. */
  PXL_FMT_32SC_C1 = 6,   /**< 8 bytes. */
  PXL_FMT_32FC_C1 = 7,   /**< 8 bytes. */
  PXL_FMT_8U_C2 = 8,     /**< 2 bytes. */
  PXL_FMT_16U_C2 = 9,    /**< 4 bytes. */
  PXL_FMT_16S_C2 = 10,   /**< 4 bytes. */
  PXL_FMT_32S_C2 = 11,   /**< 8 bytes. */
  PXL_FMT_32F_C2 = 12,   /**< 8 bytes. */
  PXL_FMT_32SC_C2 = 13,  /**< 16 bytes. */
  PXL_FMT_32FC_C2 = 14,  /**< 16 bytes. */
  PXL_FMT_8U_C3 = 15,    /**< 3 bytes. */
  PXL_FMT_16U_C3 = 16,   /**< 6 bytes. */
  PXL_FMT_16S_C3 = 17,   /**< 6 bytes. */
  PXL_FMT_32S_C3 = 18,   /**< 12 bytes. */
  PXL_FMT_32F_C3 = 19,   /**< 12 bytes. */
  PXL_FMT_32SC_C3 = 20,  /**< 24 bytes. */
  PXL_FMT_32FC_C3 = 21,  /**< 24 bytes. */
  PXL_FMT_8U_C4 = 22,    /**< 4 bytes. */
  PXL_FMT_16U_C4 = 23,   /**< 8 bytes. */
  PXL_FMT_16S_C4 = 24,   /**< 8 bytes. */
  PXL_FMT_32S_C4 = 25,   /**< 16 bytes. */
  PXL_FMT_32F_C4 = 26,   /**< 16 bytes: a float RGBA image. */
  PXL_FMT_32SC_C4 = 27,  /**< 32 bytes. */
  PXL_FMT_32FC_C4 = 28,  /**< 32 bytes. */
  PXL_FMT_8U_AC4 = 29,   /**< 4 bytes. */
  PXL_FMT_16U_AC4 = 30,  /**< 8 bytes. */
  PXL_FMT_16S_AC4 = 31,  /**< 8 bytes. */
  PXL_FMT_32S_AC4 = 32,  /**< 16 bytes. */
  PXL_FMT_32F_AC4 = 33,  /**< 16 bytes. */
  PXL_FMT_32SC_AC4 = 34, /**< 32 bytes. */
  PXL_FMT_32FC_AC4 = 35  /**< 32 bytes. */
};

/**
 * Allocates an image whose rows start on 64-byte boundaries.
 *
 * The step is the row size, width times the pixel size, rounded up to a
 * multiple of 64.  The memory is not cleared.  Release it with Free(), never
 * with the C library's free().  Images need not come from here: every export
 * takes any memory the host owns.
 *
 * @param width       pixels a row, at least 1.
 * @param height      rows, at least 1.
 * @param format      a format code, #PXL_FMT_8U_C1 to #PXL_FMT_32FC_AC4.
 * @param[out] pStepBytes  receives the row step in bytes.
 * @return the image, or null:
 *         on a null @p pStepBytes;
 *         on a @p format outside 1 to 35 (the step is left untouched);
 *         on a @p width or @p height below 1, or a row above 0x7FFFFFFF
 *         bytes (the step is set to 0);
 *         on a total above 0x7FFFFFFF bytes (the step is left written);
 *         or when the heap fails.
 */
PXL_API void* Malloc(int width, int height, int format, int* pStepBytes);

/**
 * Malloc() with #PXL_FMT_8U_C1: a one-channel 8-bit image.
 *
 * @param width       pixels a row, at least 1.
 * @param height      rows, at least 1.
 * @param[out] pStepBytes  receives the row step in bytes.
 * @return the image, or null as for Malloc().
 */
PXL_API Pxl8u* Malloc_8u_C1(int width, int height, int* pStepBytes);

/**
 * Releases an image from Malloc() or Malloc_8u_C1().
 *
 * @param ptr  what they returned; null does nothing.
 */
PXL_API void Free(void* ptr);

/** @} */

#ifdef __cplusplus
}
#endif

#endif /* PXL_CORE_H */
