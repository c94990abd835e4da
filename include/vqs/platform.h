/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_PLATFORM_H
#define VQS_PLATFORM_H

#include "platform_records.h" /* IWYU pragma: export */
#include "session.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Application inputs and outputs: two words that applications hand to the driver's policies, and two that they compute.
 */

/**
 * Sets one application input.
 *
 * @param[in] session  an open session
 * @param[in] index    VQS_APP_INPUT_A or VQS_APP_INPUT_B
 * @param[in] value    the new value
 * @retval VQS_SUCCESS            the driver has it
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; index is neither of the two
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsSetAppInput(QtfSession* session, int32_t index, uint32_t value);
/** As vqsSetAppInput. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsExSetAppInput(QtfSession* session, int32_t index, uint32_t value);

/**
 * Sets both application inputs in one request.
 *
 * @param[in] session  an open session
 * @param[in] valueA   value of VQS_APP_INPUT_A
 * @param[in] valueB   value of VQS_APP_INPUT_B
 * @retval VQS_SUCCESS            the driver has them
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsSetAppInputs(QtfSession* session, uint32_t valueA, uint32_t valueB);

/**
 * Reads both application outputs.
 *
 * @param[in]  session  an open session
 * @param[out] valueA   receives output A
 * @param[out] valueB   receives output B
 * @retval VQS_SUCCESS            both are written
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; an output is null
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsGetAppOutput(QtfSession* session, uint32_t* valueA, uint32_t* valueB);
/** As vqsGetAppOutput. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsExGetAppOutput(QtfSession* session, uint32_t* valueA, uint32_t* valueB);

/**
 * Waits until the driver signals that the application outputs have changed. Each call opens the system's event
 * "Global\VexoQtfAppOutputEvent" anew and leaves it open. Nothing of the session is used while it waits.
 *
 * @param[in] session       an open session
 * @param[in] milliseconds  how long to wait, or VQS_WAIT_FOREVER
 * @retval VQS_SUCCESS            the event was signalled
 * @retval VQS_REQUEST_FAILED     the time is over, or waiting failed
 * @retval VQS_INVALID_PARAMETER  the session rule; the event is not there or cannot be opened
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsWaitAppOutput(QtfSession* session, uint32_t milliseconds);
/** The same function under a second name. Threads: any. */
VQS_API vqsStatus VQS_CALL vqsExWaitAppOutput(QtfSession* session, uint32_t milliseconds);

/**
 * Reads the two words of the taskbar icon's state.
 *
 * @param[in]  session  an open session
 * @param[out] first    receives the first word
 * @param[out] second   receives the second word
 * @retval VQS_SUCCESS            both are written
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; an output is null
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsGetTaskbarIcon(QtfSession* session, uint32_t* first, uint32_t* second);

/**
 * Waits on an event of the caller's. Nothing of the session is used while it waits.
 *
 * @param[in] session       an open session
 * @param[in] event         a waitable handle
 * @param[in] milliseconds  how long to wait, or VQS_WAIT_FOREVER
 * @retval VQS_SUCCESS            the event was signalled
 * @retval VQS_REQUEST_FAILED     the time is over, or waiting failed
 * @retval VQS_INVALID_PARAMETER  the session rule; event is null
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsWaitTaskbarIcon(QtfSession* session, void* event, uint32_t milliseconds);

/**
 * Reads the driver's debug output word.
 *
 * @param[in]  session  an open session
 * @param[out] value    the driver writes straight into it; a null one is for the driver to refuse
 * @retval VQS_SUCCESS            value is written
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsGetDebugOutput(QtfSession* session, uint32_t* value);

/**
 * Starts or stops the driver's polling.
 *
 * @param[in] session  an open session
 * @param[in] enable   nonzero: start
 * @param[in] value    the driver's polling parameter
 * @retval VQS_SUCCESS            the driver took it
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsControlPolling(QtfSession* session, uint8_t enable, uint32_t value);
/** As vqsControlPolling, for the Ex client. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsExControlPolling(QtfSession* session, uint8_t enable, uint32_t value);

/**
 * Sets or clears the two SE1 flags.
 *
 * @param[in] session  an open session
 * @param[in] first    the first flag: VQS_SE1_SET sets it, every other value clears it
 * @param[in] second   the second flag, likewise
 * @retval VQS_SUCCESS            the driver took them
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsProgramSE1(QtfSession* session, uint32_t first, uint32_t second);
/** As vqsProgramSE1. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsExProgramSE1(QtfSession* session, uint32_t first, uint32_t second);

/*
 * Overrides: the value of a driver's input, set by hand.
 */

/**
 * Sets an override, or lifts it.
 *
 * @param[in] session  an open session
 * @param[in] key      the input's key
 * @param[in] enable   nonzero sets the override, 0 lifts it; sent as it is
 * @param[in] value    the value to set
 * @retval VQS_SUCCESS            the driver took it
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsOverrideInput(QtfSession* session, uint32_t key, uint8_t enable, uint32_t value);

/**
 * Reads the override of a key.
 *
 * @param[in]  session  an open session
 * @param[in]  key      the input's key
 * @param[out] value    the driver writes straight into it
 * @retval VQS_SUCCESS            value is written
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; value is null
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsGetInputOverrideKeyValue(QtfSession* session, uint32_t key, VqsOverrideValue* value);

/**
 * Reads the list of keys that can be overridden, or its size. The list's room is not checked: ask for the size first.
 *
 * @param[in]  session   an open session
 * @param[out] list      room for the list, which the driver writes straight into; not used when only the size is asked
 *                       for
 * @param[out] size      the driver writes the bytes of the list straight into it; used when only the size is asked for
 * @param[in]  sizeOnly  nonzero: ask for the size
 * @retval VQS_SUCCESS            list, or size, is written
 * @retval VQS_REQUEST_FAILED     a request failed, or the output that is needed is null
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsGetInputOverrideKeyList(QtfSession* session, void* list, uint32_t* size,
                                                      uint8_t sizeOnly);

/**
 * Reads the description of a key.
 *
 * @param[in]  session   an open session
 * @param[in]  key       the input's key
 * @param[out] metadata  the driver writes straight into it; a null one is for the driver to refuse
 * @retval VQS_SUCCESS            metadata is written
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsGetInputOverrideKeyMetadata(QtfSession* session, uint32_t key,
                                                          VqsOverrideMetadata* metadata);

/*
 * Sensors, battery and the platform's identity.
 */

/**
 * Makes the driver see a sensor update.
 *
 * @param[in] session  an open session
 * @param[in] update   the update
 * @retval VQS_SUCCESS            the driver took it
 * @retval VQS_REQUEST_FAILED     the request failed, or update is null (nothing is sent then)
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsAtstSimulateSensorUpdate(QtfSession* session, const VqsSensorUpdate* update);

/**
 * Reads the sensor block.
 *
 * @param[in]  session  an open session
 * @param[out] data     the driver writes straight into it; a null one is for the driver to refuse
 * @retval VQS_SUCCESS            data is written
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsGetSensorData(QtfSession* session, VqsSensorData* data);

/**
 * Reads the platform's OEM identifier.
 *
 * @param[in]  session  an open session
 * @param[out] oemId    VQS_OEM_ID_SIZE bytes. Empty when the driver's text does not fit with its NUL, which is a case
 *                      of rule 11 (the C runtime's invalid-parameter condition).
 * @retval VQS_SUCCESS            oemId is written
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; oemId is null
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsGetOEMID(QtfSession* session, char oemId[7]);

/**
 * Passes two words to the driver's TA control.
 *
 * @param[in] session  an open session
 * @param[in] first    first word
 * @param[in] second   second word
 * @retval VQS_SUCCESS            the driver took them
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsTAControl(QtfSession* session, uint32_t first, uint32_t second);

/**
 * Sets the battery's charge rate, over a handle of its own.
 *
 * @param[in] rate  the rate
 * @retval VQS_SUCCESS           the driver took it
 * @retval VQS_REQUEST_FAILED    the device could not be opened, or the request failed
 * @retval VQS_OUT_OF_MEMORY     the device list could not be allocated
 * @retval VQS_DRIVER_NOT_FOUND  the driver is not loaded
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsSetChargeRate(uint32_t rate);

/**
 * Reads the battery's temperature, over a handle of its own.
 *
 * @param[out] temperature  receives the driver's word
 * @retval VQS_SUCCESS            temperature is written
 * @retval VQS_REQUEST_FAILED     the device could not be opened, or the request failed
 * @retval VQS_INVALID_PARAMETER  temperature is null
 * @retval VQS_OUT_OF_MEMORY      the device list could not be allocated
 * @retval VQS_DRIVER_NOT_FOUND   the driver is not loaded
 * @note Threads: any.
 */
VQS_API vqsStatus VQS_CALL vqsGetBatteryTemperature(uint32_t* temperature);

/**
 * Reads the battery's four limits.
 *
 * @param[in]  session  an open session
 * @param[out] first    receives the first limit
 * @param[out] second   receives the second limit
 * @param[out] third    receives the third limit
 * @param[out] fourth   receives the fourth limit
 * @retval VQS_SUCCESS            all four are written
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; an output is null
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsGetBatteryLimits(QtfSession* session, uint16_t* first, uint16_t* second, uint16_t* third,
                                               uint16_t* fourth);

/*
 * Events.
 */

/**
 * Registers an object for one of the driver's events.
 *
 * @param[in] session  an open session
 * @param[in] index    the event, 0 to VQS_EVENTS - 1
 * @param[in] object   what the driver is to notify, which it keeps until it is taken back
 * @retval VQS_SUCCESS            the driver took it
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule; index is out of range; object is null
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsRegisterEvent(QtfSession* session, int32_t index, void* object);
/** Takes a registration back; as vqsRegisterEvent. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsUnRegisterEvent(QtfSession* session, int32_t index, void* object);

/**
 * Notifies the driver of a firmware event. The record that travels is all zero. Before it does, this is a case of rule
 * 11 (the C runtime's invalid-parameter condition).
 *
 * @param[in] session  an open session
 * @retval VQS_SUCCESS            the driver took it
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsAtstNotifyBiosEvent(QtfSession* session);
/** The same function under a second name. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqSetBiosAMTEvent(QtfSession* session);
/** The same function under a third name. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqSetBiosCQLEvent(QtfSession* session);
/** As vqsAtstNotifyBiosEvent, with the longer record of the event's second version. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsAtstNotifyBiosEventV2(QtfSession* session);

/*
 * Policy binaries that the driver itself loads. Their outputs are written whether the request succeeded or not: after a
 * failure they hold what the request record held.
 */

/**
 * Loads a policy binary from the caller's memory, which the driver reads during the call.
 *
 * @param[in]  session  an open session
 * @param[in]  size     bytes at data, 1 to VQS_DYNAMIC_POLICY_MAX_SIZE
 * @param[in]  data     the policy binary
 * @param[out] first    receives the driver's first result word; may be null
 * @param[out] second   receives the driver's second result word; may be null
 * @retval VQS_SUCCESS            the driver answered
 * @retval VQS_REQUEST_FAILED     the request failed; the outputs are written
 * @retval VQS_INVALID_PARAMETER  the session rule; size is out of range; data is null
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsExLoadDynamicPolicy(QtfSession* session, uint64_t size, const void* data, uint32_t* first,
                                                  uint32_t* second);

/**
 * Makes the driver clear the dynamic policy.
 *
 * @param[in] session  an open session
 * @retval VQS_SUCCESS            the driver took it
 * @retval VQS_REQUEST_FAILED     the request failed
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsExClearDynamicPolicy(QtfSession* session);

/**
 * Reads the version of the driver's policy binary.
 *
 * @param[in]  session  an open session
 * @param[out] first    receives the first version word
 * @param[out] second   receives the second version word
 * @retval VQS_SUCCESS            both are written
 * @retval VQS_REQUEST_FAILED     the request failed; the outputs are written
 * @retval VQS_INVALID_PARAMETER  the session rule; an output is null
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsExGetPolicyBinaryVersion(QtfSession* session, uint32_t* first, uint32_t* second);

/**
 * Makes the driver load its static policy binary.
 *
 * @param[in]  session  an open session
 * @param[out] first    receives the driver's first result word; may be null
 * @param[out] second   receives the driver's second result word; may be null
 * @retval VQS_SUCCESS            the driver answered
 * @retval VQS_REQUEST_FAILED     the request failed; the outputs are written
 * @retval VQS_INVALID_PARAMETER  the session rule
 * @note Threads: as the driver allows.
 */
VQS_API vqsStatus VQS_CALL vqsExLoadStaticBinary(QtfSession* session, uint32_t* first, uint32_t* second);
/** As vqsExLoadStaticBinary, for the policy binary on disk. Threads: as the driver allows. */
VQS_API vqsStatus VQS_CALL vqsExLoadDiskBinary(QtfSession* session, uint32_t* first, uint32_t* second);

#ifdef __cplusplus
}
#endif

#endif
