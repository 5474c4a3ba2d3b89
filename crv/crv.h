#ifndef CRV_CRV_H
#define CRV_CRV_H

/// Everything that callers may use, in one include. No file of the library includes it.

#include "crv/export.h"

#endif  // CRV_CRV_H
