// Messages of the status codes.
#ifndef PXL_CORE_STATUS_H
#define PXL_CORE_STATUS_H

#include "pxl/pxl_types.h"

// The message of a status code; the message of pxlStsUnknownStatusCodeErr
// for a code the library does not know.
const char* pxlStatusText(PxlStatus status);

#endif
