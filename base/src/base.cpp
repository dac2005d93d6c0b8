// SPDX-License-Identifier: Apache-2.0
//
// Start of the base layer.

#include "zr_base.h"

#include "log.h"

uint32_t ZR_BaseInit(void)
{
    zr::LogStart();
    return 0;
}
