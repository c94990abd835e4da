/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_POLICY_H
#define VQS_POLICY_H

#include "policy_records.h" /* IWYU pragma: export */
#include "session.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * The policy stores: what callers do with policies, whose records are in policy_records.h.
 *
 * A policy is malformed when a name of char has no NUL, the locale cannot convert a name or text, an op is above
 * VQS_POLICY_MAX_OPERATOR, a text's flag is above VQS_POLICY_MAX_TEXT_FLAG, or a text of VqsChar16 has no zero unit.
 *
 * A store is read in several requests, and is not held still between them.
 */

/** What a read of all policies of a store fills, structure version 0. */
typedef struct VqsPolicyList {
  /** in: the capacity of policies, in entries; out: how many policies the store holds */
  uint32_t count;
  uint8_t reserved0[4];
  /** the caller's array; may be null when only counting */
  VqsPolicyV0* policies;
  uint8_t reserved1[8];
  /** nonzero: only count */
  uint8_t countOnly;
  uint8_t reserved2[7];
} VqsPolicyList;

/** What a status query fills. */
typedef struct VqsPolicyStatusList {
  /** out, when counting: the number of policies; not written when entries are filled */
  uint32_t count;
  uint8_t reserved0[4];
  /** the caller's array. It must have room for every policy of the store: count first, then query. */
  VqsPolicyStatus* entries;
  /** nonzero: only count */
  uint8_t countOnly;
  uint8_t reserved1[7];
} VqsPolicyStatusList;

/**
 * Adds a policy to a store.
 *
 * @param[in]  session       an open session
 * @param[in]  policy        the policy, with the id that it is to have in the store
 * @param[out] idOut         receives the policy's own id; may be null
 * @param[out] driverResult  receives the driver's verdict, VQS_DRIVER_RESULT_TAKEN or another;
 *                           VQS_DRIVER_RESULT_REQUEST_FAILED when the request failed
 * @retval VQS_SUCCESS            the driver answered; its verdict is in driverResult
 * @retval VQS_REQUEST_FAILED     the policy is malformed or the request's buffer could not be allocated (driverResult
 *                                is untouched by both), or the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; policy or driverResult is null
 * @retval VQS_OUT_OF_MEMORY      the work buffer could not be allocated
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsPbAddPolicy(QtfSession* session, const VqsPolicyV0* policy, uint32_t* idOut,
                                          uint32_t* driverResult);

/** As vqsPbAddPolicy, on the Asm store. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsAsmAddPolicy(QtfSession* session, const VqsPolicyV0* policy, uint32_t* idOut,
                                           uint32_t* driverResult);

/** As vqsPbAddPolicy, on the BalanceProfile store. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsBalanceProfileAddPolicy(QtfSession* session, const VqsPolicyV0* policy, uint32_t* idOut,
                                                      uint32_t* driverResult);

/**
 * Adds a policy of any structure version to any store.
 *
 * @param[in]  session       an open session
 * @param[in]  record        the policy
 * @param[in]  size          bytes at record: at least 4 and the body of its version
 * @param[out] driverResult  as for vqsPbAddPolicy
 * @param[in]  store         one of VQS_POLICY_STORE_
 * @retval VQS_SUCCESS            the driver answered; its verdict is in driverResult
 * @retval VQS_REQUEST_FAILED     record's version is none of VQS_STRUCTURE_VERSION_, size is too small for it, the
 *                                policy is malformed or the request's buffer could not be allocated (driverResult is
 *                                untouched by all of these), or the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; record or driverResult is null; size is 0; no such store
 * @retval VQS_OUT_OF_MEMORY      the work buffer could not be allocated
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsPbAddPolicyV2(QtfSession* session, const VqsVersionedPolicy* record, uint64_t size,
                                            uint32_t* driverResult, VqsPolicyStore store);

/**
 * Reads all policies of the Policy Builder store, or only their number. Reading takes 3972 bytes of memory for each
 * entry of the capacity, whatever the store holds, and gives them back.
 *
 * @param[in]     session  an open session
 * @param[in,out] list     what to read, and where to. Its count receives the store's count as soon as that is known,
 *                         and keeps the capacity when it is not, or is too small.
 * @retval VQS_SUCCESS            list->count policies were written, or counted
 * @retval VQS_REQUEST_FAILED     a request failed or its buffer could not be allocated; list->policies is null although
 *                                there are policies to write; or a policy does not fit structure version 0 (text beyond
 *                                the locale's characters, a text of 32 characters or more, a nonzero option1, an op, a
 *                                text's flag or a count above its limit): the policies before it have been written, and
 *                                perhaps a part of it
 * @retval VQS_INVALID_PARAMETER  the session rule; list is null; or, after a request, the capacity is below the store's
 *                                count
 * @retval VQS_OUT_OF_MEMORY      memory for the capacity could not be allocated; nothing was sent
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsPbGetPolicies(QtfSession* session, VqsPolicyList* list);

/**
 * As vqsPbGetPolicies, on the Asm store, but reading takes 3972 bytes of memory times the square of the capacity: 40 MB
 * for 100 entries, 636 MB for 400. So count first, and pass the capacity that is needed.
 *
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsAsmGetPolicies(QtfSession* session, VqsPolicyList* list);

/** As vqsAsmGetPolicies, on the BalanceProfile store. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsBalanceProfileGetPolicies(QtfSession* session, VqsPolicyList* list);

/**
 * Reads all policies of any store in any structure version, or only their number. Reading takes 3972 bytes of memory
 * for each entry of the capacity, whatever the store holds, and gives them back.
 *
 * @param[in]     session  an open session
 * @param[in,out] list     the head and the space behind it. A count of 0 asks for the number, which count then
 *                         receives. Otherwise count is the capacity and is not changed: all of that many bodies are
 *                         written, those beyond the store's policies as empty policies.
 * @param[in]     store    one of VQS_POLICY_STORE_
 * @retval VQS_SUCCESS            the bodies were written, or count holds the store's count
 * @retval VQS_REQUEST_FAILED     a request failed or its buffer could not be allocated; or, after the requests,
 *                                list->size is too small for list->count bodies, the version is none of
 *                                VQS_STRUCTURE_VERSION_, or a policy does not fit it: the bodies before it have been
 *                                written, and perhaps a part of it
 * @retval VQS_INVALID_PARAMETER  the session rule; list is null; no such store; or, after a request, the capacity is
 *                                below the store's count
 * @retval VQS_OUT_OF_MEMORY      memory for the capacity could not be allocated; nothing was sent
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsPbGetPoliciesV2(QtfSession* session, VqsPolicyListV2* list, VqsPolicyStore store);

/**
 * Reads one policy of the Policy Builder store by its id.
 *
 * @param[in]  session  an open session
 * @param[in]  id       the id to look up
 * @param[out] policy   receives the policy; may be partly written when the policy does not fit structure version 0
 * @retval VQS_SUCCESS            policy holds the driver's answer
 * @retval VQS_REQUEST_FAILED     the request failed, or the policy does not fit structure version 0
 * @retval VQS_INVALID_PARAMETER  the session rule; policy is null
 * @retval VQS_OUT_OF_MEMORY      the work buffer could not be allocated
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsPbIDGetPolicy(QtfSession* session, uint32_t id, VqsPolicyV0* policy);

/**
 * Reads one policy of any store by its priority. The request is that of vqsPbIDGetPolicy, with the priority in the
 * field of the id.
 *
 * @param[in]     session   an open session
 * @param[in]     priority  the priority to look up
 * @param[in,out] record    in: structureVersion; out: the policy, perhaps partly written when it does not fit
 * @param[in]     size      bytes at record: at least 4 and the body of its version; looked at after the request
 * @param[in]     store     one of VQS_POLICY_STORE_; another value is not refused but sent to the driver
 * @retval VQS_SUCCESS            record holds the driver's answer
 * @retval VQS_REQUEST_FAILED     the request failed, record's version is none of VQS_STRUCTURE_VERSION_, size is too
 *                                small for it, or the policy does not fit it
 * @retval VQS_INVALID_PARAMETER  the session rule; record is null; size is 0
 * @retval VQS_OUT_OF_MEMORY      the work buffer could not be allocated
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsPbGetPolicyByPrioV2(QtfSession* session, uint32_t priority, VqsVersionedPolicy* record,
                                                  uint64_t size, VqsPolicyStore store);

/**
 * Makes the driver empty a store.
 *
 * @param[in] session  an open session
 * @retval VQS_SUCCESS            the driver took it
 * @retval VQS_REQUEST_FAILED     the request failed, or its buffer could not be allocated
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsPbReset(QtfSession* session);

/** As vqsPbReset, on the Asm store. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsAsmReset(QtfSession* session);

/** As vqsPbReset, on the BalanceProfile store. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsBalanceProfileReset(QtfSession* session);

/**
 * Reads the status of every policy of a store, or the number of policies. Reading takes 140 bytes of memory for each
 * policy of the store, and gives them back.
 *
 * @param[in]     session  an open session
 * @param[in,out] list     what to read, and where to. On an empty store nothing is written to it, count included.
 * @retval VQS_SUCCESS            the entries were written; or count was; or the store is empty
 * @retval VQS_REQUEST_FAILED     a request failed, its buffer could not be allocated, or entries is null although there
 *                                are entries to write
 * @retval VQS_INVALID_PARAMETER  the session rule; list is null
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsPbGetPoliciesStatus(QtfSession* session, VqsPolicyStatusList* list);

/** As vqsPbGetPoliciesStatus, on the Asm store. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsAsmGetPoliciesStatus(QtfSession* session, VqsPolicyStatusList* list);

/** As vqsPbGetPoliciesStatus, on the BalanceProfile store. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsBalanceProfileGetPoliciesStatus(QtfSession* session, VqsPolicyStatusList* list);

/**
 * Deletes a policy from a store.
 *
 * @param[in]  session       an open session
 * @param[in]  id            the policy's id
 * @param[out] driverResult  receives the driver's verdict, VQS_DRIVER_RESULT_TAKEN or another. The driver writes
 *                           straight into it; a null one is for the driver to refuse.
 * @retval VQS_SUCCESS            the driver answered; its verdict is in driverResult
 * @retval VQS_REQUEST_FAILED     the request failed, or its buffer could not be allocated
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsPbDeletePolicy(QtfSession* session, uint32_t id, uint32_t* driverResult);

/** As vqsPbDeletePolicy, on the Asm store. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsAsmDeletePolicy(QtfSession* session, uint32_t id, uint32_t* driverResult);

/** As vqsPbDeletePolicy, on the BalanceProfile store. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsBalanceProfileDeletePolicy(QtfSession* session, uint32_t id, uint32_t* driverResult);

/**
 * Replaces a policy: deletes id, then adds the given policy under that id. The two are separate requests: others may
 * see the store between them, and when the second fails the old policy is gone.
 *
 * @param[in]     session       an open session
 * @param[in]     id            the policy to replace
 * @param[in,out] policy        the new policy; id is written into its id member after the delete, even if that failed
 * @param[out]    driverResult  receives the driver's verdict on the delete, as for vqsPbDeletePolicy; when the driver
 *                              has deleted the policy, that on the add, as for vqsPbAddPolicy
 * @retval VQS_SUCCESS            the driver answered. A driverResult other than VQS_DRIVER_RESULT_TAKEN says that it
 *                                refused; after a refused delete nothing was added.
 * @retval VQS_REQUEST_FAILED     a request failed or its buffer could not be allocated, or the policy is malformed,
 *                                which is found after the delete
 * @retval VQS_INVALID_PARAMETER  the session rule; policy or driverResult is null
 * @retval VQS_OUT_OF_MEMORY      the work buffer could not be allocated
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsPbReplacePolicy(QtfSession* session, uint32_t id, VqsPolicyV0* policy,
                                              uint32_t* driverResult);

/**
 * As vqsPbReplacePolicy, on the Asm store, but only the session is checked. With a null policy the delete is still
 * sent, and VQS_REQUEST_FAILED follows when the driver took it. With a null driverResult the delete goes out without
 * room for an answer, which is for the driver to refuse, and nothing is added.
 *
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsAsmReplacePolicy(QtfSession* session, uint32_t id, VqsPolicyV0* policy,
                                               uint32_t* driverResult);

/** As vqsAsmReplacePolicy, on the BalanceProfile store. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsBalanceProfileReplacePolicy(QtfSession* session, uint32_t id, VqsPolicyV0* policy,
                                                          uint32_t* driverResult);

/**
 * Replaces a policy of any store by one of any structure version: deletes id, then adds the record under the id
 * that it carries itself, which need not be the same.
 *
 * @param[in]  session       an open session
 * @param[in]  id            the policy to replace
 * @param[in]  record        the new policy
 * @param[in]  size          bytes at record: at least 4 and the body of its version
 * @param[out] driverResult  as for vqsPbReplacePolicy
 * @param[in]  store         one of VQS_POLICY_STORE_
 * @retval VQS_SUCCESS            as for vqsPbReplacePolicy
 * @retval VQS_REQUEST_FAILED     the record is refused as by vqsPbAddPolicyV2, before anything is sent; or a request
 *                                failed or its buffer could not be allocated
 * @retval VQS_INVALID_PARAMETER  the session rule; record or driverResult is null; size is 0; no such store
 * @retval VQS_OUT_OF_MEMORY      the work buffer could not be allocated
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsPbReplacePolicyV2(QtfSession* session, uint32_t id, const VqsVersionedPolicy* record,
                                                uint64_t size, uint32_t* driverResult, VqsPolicyStore store);

/**
 * Sets the two version words that the driver keeps for the Asm store's policy binary.
 *
 * @param[in]  session       an open session
 * @param[in]  word1         first version word
 * @param[in]  word2         second version word
 * @param[out] driverResult  receives the driver's verdict, as for vqsPbAddPolicy
 * @param[in]  store         VQS_POLICY_STORE_ASM
 * @retval VQS_SUCCESS            the driver answered; its verdict is in driverResult
 * @retval VQS_REQUEST_FAILED     the request failed, or its buffer could not be allocated (driverResult is untouched by
 *                                the latter)
 * @retval VQS_INVALID_PARAMETER  the session rule; driverResult is null; store is any other
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsSetBinaryVersion(QtfSession* session, uint16_t word1, uint16_t word2,
                                               uint32_t* driverResult, VqsPolicyStore store);

/**
 * Tells whether a structure version is supported. No request is made.
 *
 * @param[in] session           not looked at, may be null
 * @param[in] structureVersion  the version in question
 * @retval VQS_SUCCESS         for VQS_STRUCTURE_VERSION_1 and VQS_STRUCTURE_VERSION_2
 * @retval VQS_REQUEST_FAILED  for every other version; for VQS_STRUCTURE_VERSION_0 too, although the V2 functions take
 *                             it
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsPbCheckStructureSupport(QtfSession* session, uint32_t structureVersion);

VQS_LAYOUT(sizeof(VqsPolicyList) == 32);
VQS_LAYOUT(offsetof(VqsPolicyList, count) == 0);
VQS_LAYOUT(offsetof(VqsPolicyList, policies) == 8);
VQS_LAYOUT(offsetof(VqsPolicyList, countOnly) == 24);

VQS_LAYOUT(sizeof(VqsPolicyStatusList) == 24);
VQS_LAYOUT(offsetof(VqsPolicyStatusList, count) == 0);
VQS_LAYOUT(offsetof(VqsPolicyStatusList, entries) == 8);
VQS_LAYOUT(offsetof(VqsPolicyStatusList, countOnly) == 16);

#ifdef __cplusplus
}
#endif

#endif
