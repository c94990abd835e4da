// SPDX-License-Identifier: Apache-2.0
#include "simulator/device/device.h"

namespace device {
namespace {

/// Where the file of a request has room for its session.
SessionSlot& sessionOf(PIRP irp) { return IoGetCurrentIrpStackLocation(irp)->FileObject->FsContext; }

/// The status of a request that arrives while the device does not serve requests.
NTSTATUS refusalIn(PnpState state) {
  return state == PnpState::removePending ? STATUS_DELETE_PENDING : STATUS_NO_SUCH_DEVICE;
}

bool isServing(PnpState state) { return state == PnpState::started || state == PnpState::removePending; }

NTSTATUS statusOf(simulator::Outcome outcome) {
  switch (outcome) {
    case simulator::Outcome::success:
      return STATUS_SUCCESS;
    case simulator::Outcome::unknownRequest:
      return STATUS_INVALID_DEVICE_REQUEST;
    case simulator::Outcome::wrongLength:
      return STATUS_INFO_LENGTH_MISMATCH;
    case simulator::Outcome::malformed:
      return STATUS_INVALID_PARAMETER;
    case simulator::Outcome::refused:
      break;
  }
  return STATUS_REQUEST_NOT_ACCEPTED;
}

bool isBuffered(std::uint32_t code) { return (code & 3) == METHOD_BUFFERED; }

/// The request's buffer, with nothing in it but the input.
std::span<std::byte> systemBuffer(PIRP irp, std::uint32_t inputLength, std::uint32_t outputLength) {
  auto* const start = static_cast<std::byte*>(irp->AssociatedIrp.SystemBuffer);
  if (start == nullptr) return {};
  const std::span<std::byte> buffer{start, std::max(inputLength, outputLength)};
  std::ranges::fill(buffer.subspan(inputLength), std::byte{});
  return buffer;
}

}  // namespace

NTSTATUS NTAPI dispatchCreate(PDEVICE_OBJECT device, PIRP irp) {
  Extension& extension = extensionOf(device);
  const DeviceUse use{extension};
  if (!use) return complete(irp, STATUS_DELETE_PENDING);
  if (extension.state != PnpState::started) return complete(irp, refusalIn(extension.state));
  extension.simulation->awaitOutputEvent();
  extension.simulation->openSession(sessionOf(irp));
  return complete(irp, STATUS_SUCCESS);
}

NTSTATUS NTAPI dispatchControl(PDEVICE_OBJECT device, PIRP irp) {
  Extension& extension = extensionOf(device);
  const DeviceUse use{extension};
  if (!use) return complete(irp, STATUS_DELETE_PENDING);
  if (!isServing(extension.state)) return complete(irp, refusalIn(extension.state));
  const auto& parameters = IoGetCurrentIrpStackLocation(irp)->Parameters.DeviceIoControl;
  const ULONG code = parameters.IoControlCode;
  const ULONG inputLength = parameters.InputBufferLength;
  const ULONG outputLength = parameters.OutputBufferLength;
  if (!isBuffered(code)) return complete(irp, STATUS_INVALID_DEVICE_REQUEST);
  if (IoGetCurrentIrpStackLocation(irp)->FileObject == nullptr) return complete(irp, STATUS_INVALID_HANDLE);

  const auto buffer = systemBuffer(irp, inputLength, outputLength);
  const auto answer = extension.simulation->control(sessionOf(irp), code, buffer, inputLength, outputLength);
  return complete(irp, statusOf(answer.outcome), std::min<ULONG_PTR>(answer.length, outputLength));
}

NTSTATUS NTAPI dispatchEnd(PDEVICE_OBJECT device, PIRP irp) {
  Extension& extension = extensionOf(device);
  const DeviceUse use{extension};
  if (use && extension.simulation != nullptr) extension.simulation->closeSession(sessionOf(irp));
  return complete(irp, STATUS_SUCCESS);
}

}  // namespace device
