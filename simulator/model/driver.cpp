// SPDX-License-Identifier: Apache-2.0
#include "simulator/model/driver.h"

#include "simulator/model/wire.h"

namespace simulator {

Answer Driver::control(SessionId session, std::uint32_t code, std::span<std::byte> buffer, std::uint32_t inputLength,
                       std::uint32_t outputLength) {
  if (buffer.size() < std::max(inputLength, outputLength)) return failed(Outcome::wrongLength);
  const Request request{session, code, buffer, inputLength, outputLength};
  switch (code) {
    case kCodeAppIo:
      return sessions_.control(request);
    case kCodePolicyReadPb:
      return policies_.read(kStorePb, request);
    case kCodePolicyReadAsm:
      return policies_.read(kStoreAsm, request);
    case kCodePolicyReadBalanceProfile:
      return policies_.read(kStoreBalanceProfile, request);
    case kCodePolicyModifyPb:
      return policies_.modify(kStorePb, request);
    case kCodePolicyModifyAsm:
      return policies_.modify(kStoreAsm, request);
    case kCodePolicyModifyBalanceProfile:
      return policies_.modify(kStoreBalanceProfile, request);
    case kCodePolicyLookup:
      return policies_.lookup(request);
    default:
      return failed(Outcome::unknownRequest);
  }
}

}  // namespace simulator
