/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_STATUS_H
#define VQS_STATUS_H

#include "base.h"

/** Result of every export; one of the VQS_ values below. */
typedef uint32_t vqsStatus;

enum {
  /** The operation succeeded. */
  VQS_SUCCESS = 0,
  /**
   * The driver refused a request, or its device, a file or a resource could not be used; or what the function's comment
   * names: a policy that is malformed or does not fit, time that is over, memory that ran out, an output that is
   * missing.
   */
  VQS_REQUEST_FAILED = 1,
  /**
   * An argument was refused. Nothing was sent, nothing was opened and nothing was written, with one exception: that a
   * capacity is below the number of policies in a store takes a request to find out.
   */
  VQS_INVALID_PARAMETER = 2,
  /**
   * Memory ran out. Nothing was sent, with one exception: a key/value log is started before its handle is allocated,
   * and the driver is told to stop it again.
   */
  VQS_OUT_OF_MEMORY = 3,
  /** The driver is not loaded: it offers no device. */
  VQS_DRIVER_NOT_FOUND = 4,
  /** The library does not carry out this operation. */
  VQS_NOT_SUPPORTED = 5,
  /** The driver answered with a data version that the library does not accept. */
  VQS_VERSION_MISMATCH = 6
};

/** A result in words, for messages. It is compiled into the program, so every program has it, whatever its library. */
static inline const char* vqsStatusText(vqsStatus status) {
  switch (status) {
    case VQS_SUCCESS:
      return "the operation succeeded";
    case VQS_REQUEST_FAILED:
      return "the request failed";
    case VQS_INVALID_PARAMETER:
      return "an argument was refused";
    case VQS_OUT_OF_MEMORY:
      return "memory ran out";
    case VQS_DRIVER_NOT_FOUND:
      return "the driver is not loaded";
    case VQS_NOT_SUPPORTED:
      return "the library does not carry out this operation";
    case VQS_VERSION_MISMATCH:
      return "the driver's data version is not one that the library accepts";
    default:
      return "not a result of this library";
  }
}

#endif
