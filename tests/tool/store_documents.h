// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace test {

/// Three policies, of version 3.41.
inline constexpr char kLaptop[] = R"({
  "version": "3.41",
  "policies": [
    { "id": 10, "name": "Quiet on battery", "when": [{ "Power Source": "DC Power" }], "do": [{ "SPL": 15000 }] },
    { "id": 120, "name": "Hot chassis", "when": [{ "Skin Temperature": { "op": 4, "value": 4600 } }] },
    { "id": 140, "name": "Dark room", "when": [{ "Power Source": "AC Power" }] }
  ]
}
)";

/// What was there before: 120 said something else, 140 was not there yet, 7 was, and 10 was the last one.
inline constexpr char kBefore[] = R"({
  "version": "3.40",
  "policies": [
    { "id": 120, "name": "Hot chassis", "when": [{ "Skin Temperature": { "op": 4, "value": 4800 } }] },
    { "id": 7, "name": "Old", "when": [{ "Power Source": "AC Power" }] },
    { "id": 10, "name": "Quiet on battery", "when": [{ "Power Source": "DC Power" }], "do": [{ "SPL": 15000 }] }
  ]
}
)";

/// The policies of kLaptop in another order.
inline constexpr char kTurned[] = R"({
  "version": "3.41",
  "policies": [
    { "id": 120, "name": "Hot chassis", "when": [{ "Skin Temperature": { "op": 4, "value": 4600 } }] },
    { "id": 140, "name": "Dark room", "when": [{ "Power Source": "AC Power" }] },
    { "id": 10, "name": "Quiet on battery", "when": [{ "Power Source": "DC Power" }], "do": [{ "SPL": 15000 }] }
  ]
}
)";

}  // namespace test
