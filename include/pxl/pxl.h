/**
 * @file pxl.h
 * @brief The header to include: all of the library's declarations.
 *
 * Link with @c -lpxl.  Every export is a plain C function over buffers the
 * caller owns; failures are reported by status code only (pxl_types.h).
 */
#ifndef PXL_H
#define PXL_H

#include "pxl_colour.h"
#include "pxl_core.h"
#include "pxl_primitives.h"
#include "pxl_tonal.h"
#include "pxl_types.h"

#endif /* PXL_H */
