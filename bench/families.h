// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/harness/report.h"

// Each measures some of the items. The programs that they start, and the sample files, come from the build.

namespace bench {

/// Of the harness itself: how much one work differs from itself.
void measureNoise(Report& report);

void measureReads(Report& report);
void measureSizeCalls(Report& report);
void measureFirstCall(Report& report);
void measureGrowth(Report& report);
void measureConversions(Report& report);
void measureWriting(Report& report);
void measureRegistryText(Report& report);
void measureDocuments(Report& report);
void measurePeers(Report& report);
void measureTelemetry(Report& report);
void measureStoreCalls(Report& report);
void measureCommands(Report& report);
void measureCommandRequests(Report& report);

}  // namespace bench
