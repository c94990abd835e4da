/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_STATUS_H
#define VQS_STATUS_H

#include "base.h"

/** Result of every export; one of the VQS_ values below. */
typedef uint32_t vqsStatus;

enum {
  /** The operation succeeded. */
  VQS_SUCCESS = 0,
  /** The driver refused a request, its device could not be opened, or a file or resource could not be read or written.
   */
  VQS_REQUEST_FAILED = 1,
  /** An argument was refused; nothing was sent and nothing was opened. */
  VQS_INVALID_PARAMETER = 2,
  /** Memory ran out before the first request. */
  VQS_OUT_OF_MEMORY = 3,
  /** The driver is not loaded: it offers no device. */
  VQS_DRIVER_NOT_FOUND = 4,
  /** The library does not carry out this operation. */
  VQS_NOT_SUPPORTED = 5,
  /** The driver answered with a data version that the library does not accept. */
  VQS_VERSION_MISMATCH = 6
};

#endif
