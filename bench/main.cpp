// SPDX-License-Identifier: Apache-2.0
#include "bench/families.h"

int main() {
  constexpr void (*kFamilies[])(bench::Report&) = {
      bench::measureNoise, bench::measureReads, bench::measureSizeCalls, bench::measureFirstCall, bench::measureGrowth,
      bench::measureConversions, bench::measureWriting, bench::measureRegistryText, bench::measureDocuments,
      bench::measurePeers, bench::measureTelemetry, bench::measureStoreCalls, bench::measureCommands,
      // Once more at the end: a machine that was quiet at first may not have stayed so.
      bench::measureCommandRequests, bench::measureNoise};
  bench::Report report;
  for (const auto measure : kFamilies) measure(report);
  report.print();
  return report.isComplete() ? 0 : 1;
}
