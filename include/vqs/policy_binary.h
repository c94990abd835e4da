/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_POLICY_BINARY_H
#define VQS_POLICY_BINARY_H

#include "policy.h"
#include "policy_binary_records.h" /* IWYU pragma: export */

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Policy binary files: a set of policies with two version numbers, in one compact file.
 *
 * Paths are 8-bit and go to the C runtime's file opening as they are. A file is opened for writing only when all of
 * its bytes stand ready, so a call that fails leaves an existing file alone; errors while writing are not detected.
 * Calls that write one file at once race there.
 *
 * The writers refuse counts above the limits of a policy (15 conditions, 5 texts, 32 actions). Other limits of the
 * readers they do not enforce: they write policies without conditions, more than VQS_POLICY_BINARY_MAX_POLICIES, and
 * names and descriptions without an end, which go on into what follows them in the driver's 3972-byte form of the
 * policy. The readers take none of these. Where text would run past the end of that form, the call fails with
 * VQS_REQUEST_FAILED.
 *
 * The readers take files of revision 3, 4 and 5. Of a file above 128 KiB their memory follows what the file's head can
 * need, not the file's length, and bytes behind the last entry are ignored. A file of 4 GiB or more counts as one that
 * cannot be opened. When a read falls short, as that of an empty file does, the message "File not fully read...\n"
 * appears on the standard output of the C runtime, on Windows of the universal C runtime as in rule 7.
 */

/**
 * Writes a policy binary from structure version 0 policies. Takes 3972 bytes of memory for each policy and those of the
 * file, and gives them back.
 *
 * @param[in] session         not looked at, may be null
 * @param[in] policies        the policies
 * @param[in] count           number of policies
 * @param[in] binaryVersion1  first version number of the file
 * @param[in] binaryVersion2  second version number of the file
 * @param[in] path            the file to create or replace
 * @retval VQS_SUCCESS            the file was written
 * @retval VQS_REQUEST_FAILED     count is 0, a policy is malformed (as in policy.h) or has a count above its limit,
 *                                memory for the file's bytes could not be allocated, or the file could not be opened
 * @retval VQS_INVALID_PARAMETER  policies or path is null
 * @retval VQS_OUT_OF_MEMORY      memory for the packed policies could not be allocated
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsPbCreateBinary(QtfSession* session, const VqsPolicyV0* policies, uint32_t count,
                                             uint16_t binaryVersion1, uint16_t binaryVersion2, const char* path);

/**
 * Writes a policy binary from policies of any structure version. Takes memory as vqsPbCreateBinary.
 *
 * @param[in] session         an open session; no request is made
 * @param[in] list            the head, followed by list->count bodies in list->size bytes
 * @param[in] binaryVersion1  first version number of the file
 * @param[in] binaryVersion2  second version number of the file
 * @param[in] path            the file to create or replace
 * @retval VQS_SUCCESS            the file was written
 * @retval VQS_REQUEST_FAILED     list->size is 0 or too small for list->count bodies, list's version is none of
 *                                VQS_STRUCTURE_VERSION_, or as for vqsPbCreateBinary
 * @retval VQS_INVALID_PARAMETER  the session rule; list or path is null
 * @retval VQS_OUT_OF_MEMORY      memory for the packed policies could not be allocated
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsPbCreateBinaryV2(QtfSession* session, const VqsPolicyListV2* list,
                                               uint16_t binaryVersion1, uint16_t binaryVersion2, const char* path);

/**
 * Writes the policies of the Policy Builder store into a policy binary, in store order. The store is read in several
 * requests and is not held still between them. Takes 3972 bytes of memory for each policy of the store and those of the
 * file, and gives them back.
 *
 * @param[in] session         an open session. A null one, with which nothing is sent, gives VQS_REQUEST_FAILED, as does
 *                            one without a handle.
 * @param[in] path            the file to create or replace
 * @param[in] binaryVersion1  first version number of the file
 * @param[in] binaryVersion2  second version number of the file
 * @retval VQS_SUCCESS            the file was written
 * @retval VQS_REQUEST_FAILED     a request failed, the store is empty, a policy has a count above its limit, memory
 *                                could not be allocated, or the file could not be opened
 * @retval VQS_INVALID_PARAMETER  path is null
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsPbCreateBinaryFromDriver(QtfSession* session, const char* path, uint16_t binaryVersion1,
                                                       uint16_t binaryVersion2);

/**
 * As vqsPbCreateBinaryFromDriver, from the Asm store. When both version numbers are 0 the driver is asked for the pair
 * that it keeps (see vqsSetBinaryVersion).
 *
 * @param[in] session         as for vqsPbCreateBinaryFromDriver
 * @param[in] path            the file to create or replace
 * @param[in] binaryVersion1  first version number of the file
 * @param[in] binaryVersion2  second version number of the file
 * @param[in] registryExport  nonzero: write registry export text that holds the binary as the value
 *                            "AsmCurrentRegkeyPolicy" instead of the binary, to the same path
 * @retval VQS_SUCCESS            the file was written
 * @retval VQS_REQUEST_FAILED     as for vqsPbCreateBinaryFromDriver
 * @retval VQS_INVALID_PARAMETER  path is null
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsAsmCreateBinaryFromDriver(QtfSession* session, const char* path, uint16_t binaryVersion1,
                                                        uint16_t binaryVersion2, uint8_t registryExport);

/**
 * As vqsAsmCreateBinaryFromDriver, from the BalanceProfile store. The driver is never asked for the version numbers,
 * zeros are written as they are; the registry value is "BalanceProfileCurrentRegkeyPolicy".
 *
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsBalanceProfileCreateBinaryFromDriver(QtfSession* session, const char* path,
                                                                   uint16_t binaryVersion1, uint16_t binaryVersion2,
                                                                   uint8_t registryExport);

/**
 * Checks a policy binary file and returns a summary of it. The file is read twice, and every policy is validated. Takes
 * memory for the file's bytes and gives it back.
 *
 * @param[in]  session  not looked at, may be null
 * @param[in]  path     the file to read
 * @param[out] binary   receives the summary. It comes from the process heap: give it back with
 *                      HeapFree(GetProcessHeap(), 0, summary), on other systems than Windows with free. Null after
 *                      VQS_OUT_OF_MEMORY.
 * @retval VQS_SUCCESS            the file is valid
 * @retval VQS_REQUEST_FAILED     the file could not be read, is not a valid policy binary, or memory for reading it
 *                                could not be allocated
 * @retval VQS_INVALID_PARAMETER  path or binary is null
 * @retval VQS_OUT_OF_MEMORY      the summary could not be allocated
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsPbReadBinary(QtfSession* session, const char* path, VqsPolicyBinaryV0** binary);

/**
 * Reads a policy binary file, or tells how much room its policies need. Both take memory for the file's bytes and give
 * it back.
 *
 * A policy that does not fit the structure version ends the conversion: its body may be partly written, the bodies
 * after it are zero, and the call still succeeds. An op or a text's flag above its limit fits no version, text beyond
 * the locale's characters neither 0 nor 1; for the rest of 0 see vqsPbGetPolicies. A file whose own limits exceed the
 * fields of a policy is refused once a policy uses more than fits.
 *
 * @param[in]     session           an open session; no request is made
 * @param[in]     path              the file to read
 * @param[out]    binary            receives the head and the bodies; written only by a successful read
 * @param[in,out] size              bytes at binary. 0 asks for the room needed, which size then receives: 200 and
 *                                  policyCount bodies, of 804 bytes for every version but 1 and 2. The policies are not
 *                                  looked at then. A read leaves it as it is.
 * @param[in]     structureVersion  one of VQS_STRUCTURE_VERSION_: the layout of the bodies
 * @retval VQS_SUCCESS            the policies were read, or size was set
 * @retval VQS_REQUEST_FAILED     the file could not be read, is not a valid policy binary, size is too small, the
 *                                structureVersion of a read is none of VQS_STRUCTURE_VERSION_, or memory could not be
 *                                allocated
 * @retval VQS_INVALID_PARAMETER  the session rule; path, binary or size is null; structureVersion is 0xFFFFFFFF
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsPbReadBinaryV2(QtfSession* session, const char* path, VqsPolicyBinary* binary,
                                             uint64_t* size, uint32_t structureVersion);

#ifdef __cplusplus
}
#endif

#endif
