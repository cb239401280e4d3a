/*
 * pxl - native imaging engine.  Umbrella header: include this one.
 *
 * Link with -lpxl.  Every export is a plain C function over caller-owned
 * buffers; failures are reported by status code only (pxl_types.h).
 */
#ifndef PXL_H
#define PXL_H

#include "pxl_core.h"
#include "pxl_primitives.h"
#include "pxl_tonal.h"
#include "pxl_types.h"

#endif /* PXL_H */
