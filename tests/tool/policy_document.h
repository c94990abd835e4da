// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace test {

/// A document in which nothing is wrong, in its canonical layout, and with one comment.
inline constexpr char kQuietDocument[] = R"({
  "version": "3.41",
  "policies": [
    {
      "id": 10,
      "name": "Quiet on battery",
      "description": "low power, low noise",
      // A comment.
      "when": [
        { "Power Source": "DC Power" },
        { "Skin Temperature": { "op": 3, "value": 4600 } }
      ],
      "do": [
        { "SPL": 15000 },
        { "Fan Mode": "Auto" }
      ],
      "texts": ["teams.exe", { "text": "obs64.exe", "flag": 1 }]
    }
  ]
}
)";

/// A document with one piece of it replaced.
inline std::string documentBut(std::string text, const std::string& piece, const std::string& replacement) {
  return text.replace(text.find(piece), piece.size(), replacement);
}
inline std::string quietBut(const std::string& piece, const std::string& replacement) {
  return documentBut(kQuietDocument, piece, replacement);
}

}  // namespace test
