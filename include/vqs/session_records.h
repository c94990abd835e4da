/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_SESSION_RECORDS_H
#define VQS_SESSION_RECORDS_H

#include "base.h"

/** How many words vqsGetVersion and vqsGetDriverVersion write. */
enum { VQS_VERSION_WORDS = 4 };

/** The words of a version by name, in the order in which they are written. */
typedef struct VqsVersionNumbers {
  /** first number of the product's version */
  uint32_t productMajor;
  /** second number of the file's version */
  uint32_t fileMinor;
  /** fourth number of the file's version */
  uint32_t fileFourth;
  /** third number of the file's version */
  uint32_t fileThird;
} VqsVersionNumbers;

/** A version: words is for vqsGetVersion and vqsGetDriverVersion to fill, numbers to read. */
typedef union VqsVersion {
  uint32_t words[VQS_VERSION_WORDS];
  VqsVersionNumbers numbers;
} VqsVersion;

/**
 * Where vqsOVLGetDllVersion puts each number: version >> VQS_DLL_VERSION_FILE_MINOR_SHIFT & 0xFF. A number above 255
 * runs into the one before it.
 */
enum {
  VQS_DLL_VERSION_PRODUCT_MAJOR_SHIFT = 24,
  VQS_DLL_VERSION_FILE_MINOR_SHIFT = 16,
  VQS_DLL_VERSION_FILE_THIRD_SHIFT = 8,
  VQS_DLL_VERSION_FILE_FOURTH_SHIFT = 0
};

VQS_LAYOUT(sizeof(VqsVersionNumbers) == 16);
VQS_LAYOUT(offsetof(VqsVersionNumbers, productMajor) == 0);
VQS_LAYOUT(offsetof(VqsVersionNumbers, fileMinor) == 4);
VQS_LAYOUT(offsetof(VqsVersionNumbers, fileFourth) == 8);
VQS_LAYOUT(offsetof(VqsVersionNumbers, fileThird) == 12);
VQS_LAYOUT(sizeof(VqsVersion) == 16);
VQS_LAYOUT(offsetof(VqsVersion, words) == 0);
VQS_LAYOUT(offsetof(VqsVersion, numbers) == 0);

#endif
