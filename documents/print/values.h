// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/vocabulary/vocabulary.h"

namespace documents {

/// What words there are for a value: the text of an option, or those of the options whose bits it is. Nothing where a
/// number has to do.
std::vector<std::string_view> wordsFor(const Word& word, std::uint32_t value);

/// The number that a value is to a word, with its sign where the word has signed values. The word may be null.
std::string numberFor(const Word* word, std::uint32_t value);

/// "#77", or the name that the word has.
std::string nameOf(const Word* word, std::uint32_t id);

}  // namespace documents
