// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

#include "documents/text/utf.h"
#include "documents/vocabulary/vocabulary.h"
#include "tests/documents/findings/said.h"

namespace documents {
namespace {

/// Policies and the document that says them, made side by side: a value is chosen, written down, and has to come back.
class Author {
 public:
  explicit Author(unsigned seed) : random_(seed) {}

  std::string write(PolicySet& set) {
    set.version1 = number16();
    set.version2 = number16();
    std::string text = "{\"version\": \"" + std::to_string(set.version1) + '.' + std::to_string(set.version2) + "\",";
    text += "\"policies\": [";
    const std::size_t count = below(4) + 1;
    for (std::uint32_t i = 0; i < count; ++i) {
      Policy& policy = set.policies.emplace_back();
      policy.id = number() / 8 * 8 + i + 1;
      text += (i == 0 ? "" : ",") + writePolicy(policy);
    }
    return text + "]}";
  }

 private:
  std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
  std::uint16_t number16() { return static_cast<std::uint16_t>(random_()); }
  std::uint32_t number() { return below(2) == 0 ? below(1000) : static_cast<std::uint32_t>(random_()) >> 4; }

  std::string writePolicy(Policy& policy) {
    std::string text = "{\"id\":" + std::to_string(policy.id);
    // Names differ, by the id that they end in.
    policy.name = units(50) + toUtf16(std::to_string(policy.id));
    text += ",\"name\":" + escaped(policy.name);
    policy.description.assign(below(32), 'd');
    text += ",\"description\":\"" + policy.description + "\",\"when\":[";
    const std::size_t conditions = below(15) + 1;
    for (std::size_t i = 0; i < conditions; ++i) {
      policy.conditions.emplace_back();
      text += (i == 0 ? "" : ", ") + writeCondition(policy.conditions.back());
    }
    text += "], \"do\": [";
    const std::size_t actions = below(33);
    for (std::size_t i = 0; i < actions; ++i) {
      policy.actions.emplace_back();
      text += (i == 0 ? "" : ", ") + writeAction(policy.actions.back());
    }
    text += "], \"texts\": [";
    const std::size_t texts = below(6);
    for (std::size_t i = 0; i < texts; ++i) {
      PolicyText& entry = policy.texts.emplace_back();
      entry.text = units(255);
      entry.flag = static_cast<std::uint8_t>(below(2));
      text += (i == 0 ? "{" : ", {") + ("\"flag\":" + std::to_string(entry.flag)) + ",\"text\":" + escaped(entry.text) +
              '}';
    }
    policy.flag0 = static_cast<std::uint8_t>(below(256));
    policy.param1 = number();
    return text + "],\"flag0\":" + std::to_string(policy.flag0) + ",\"param1\":" + std::to_string(policy.param1) + '}';
  }

  /// Any units but zero, with and without partners.
  std::u16string units(std::uint32_t most) {
    std::u16string text(below(most + 1), u'a');
    for (auto& unit : text)
      if (below(4) == 0)
        unit = below(2) == 0 ? static_cast<char16_t>(0xD800 + below(0x800)) : static_cast<char16_t>(1 + below(0xFFFF));
    return text;
  }

  static std::string escaped(const std::u16string& text) {
    std::string result = "\"";
    for (const char16_t unit : text) {
      if (unit >= u'a' && unit <= u'z') {
        result += static_cast<char>(unit);
        continue;
      }
      constexpr char kDigits[] = "0123456789ABCDEF";
      result += "\\u";
      for (int shift = 12; shift >= 0; shift -= 4) result += kDigits[unit >> shift & 15];
    }
    return result + '"';
  }

  /// A value of a word, as one of the forms that it has.
  std::string writeValue(const Word& word, std::uint32_t& value) {
    if (word.form == ValueForm::kOption) {
      const auto& option = word.options[below(static_cast<std::uint32_t>(word.options.size()))];
      value = static_cast<std::uint32_t>(option.Value);
      return below(2) == 0 ? std::to_string(value) : '"' + std::string(option.Text) + '"';
    }
    if (word.form == ValueForm::kBits) {
      std::string list;
      value = 0;
      for (const auto& option : word.options) {
        if (below(2) == 0) continue;
        value |= static_cast<std::uint32_t>(option.Value);
        list += (list.empty() ? "\"" : ", \"") + std::string(option.Text) + '"';
      }
      return below(2) == 0 ? std::to_string(value) : '[' + list + ']';
    }
    const auto width = static_cast<std::uint64_t>(word.most - word.least) + 1;
    const std::int64_t chosen = word.least + static_cast<std::int64_t>(random_() % width);
    value = static_cast<std::uint32_t>(chosen);
    return std::to_string(chosen);
  }

  std::string writeCondition(VqsPolicyCondition& condition) {
    const Word& word = conditionWords()[below(static_cast<std::uint32_t>(conditionWords().size()))];
    condition.conditionId = word.id;
    const std::string value = writeValue(word, condition.value);
    const std::string name = "{\"" + std::string(word.name) + "\": ";
    condition.op = 2;
    if (word.operators == 4 && below(2) == 0) return name + value + '}';
    while (true) {
      condition.op = below(5);
      if ((word.operators >> condition.op & 1) != 0) break;
    }
    condition.value2 = number();
    return name + "{\"value2\": " + std::to_string(condition.value2) + ", \"op\": " + std::to_string(condition.op) +
           ", \"value\": " + value + "}}";
  }

  std::string writeAction(VqsPolicyAction& action) {
    const Word& word = actionWords()[below(static_cast<std::uint32_t>(actionWords().size()))];
    action.actionId = word.id;
    const std::string value = writeValue(word, action.value);
    const std::string name = "{\"" + std::string(word.name) + "\": ";
    if (below(2) == 0) return name + value + '}';
    action.value3 = number();
    action.option1 = static_cast<std::uint8_t>(below(256));
    return name + "{\"value\": " + value + ", \"option1\": " + std::to_string(action.option1) +
           ", \"value3\": " + std::to_string(action.value3) + "}}";
  }

  std::mt19937_64 random_;
};

bool isSame(const VqsPolicyCondition& a, const VqsPolicyCondition& b) {
  return a.conditionId == b.conditionId && a.op == b.op && a.value == b.value && a.value2 == b.value2;
}

bool isSame(const VqsPolicyAction& a, const VqsPolicyAction& b) {
  return a.actionId == b.actionId && a.value == b.value && a.value2 == b.value2 && a.value3 == b.value3 &&
         a.value4 == b.value4 && a.option1 == b.option1 && a.option2 == b.option2 && a.option3 == b.option3;
}

template <class List>
bool areSame(const List& a, const List& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (!isSame(a[i], b[i])) return false;
  return true;
}

void expectSame(const Policy& read, const Policy& written) {
  EXPECT_EQ(read.id, written.id);
  EXPECT_EQ(read.name, written.name);
  EXPECT_EQ(read.description, written.description);
  EXPECT_TRUE(areSame(read.conditions, written.conditions));
  EXPECT_TRUE(areSame(read.actions, written.actions));
  EXPECT_EQ(read.texts, written.texts);
  EXPECT_EQ(read.flag0, written.flag0);
  EXPECT_EQ(read.param1, written.param1);
}

/// What random choice may give, without anything being wrong with it.
const std::set<Rule> kHarmless = {Rule::kContradiction, Rule::kActionTwice, Rule::kNotEnabled, Rule::kDuplicateId};

TEST(RandomDocuments, are_bound_to_the_values_that_were_typed) {
  for (unsigned seed = 0; seed < 3000; ++seed) {
    SCOPED_TRACE(seed);
    PolicySet written;
    const std::string document = Author{seed}.write(written);
    const auto result = readDocument(document);
    for (const Finding& finding : result.findings)
      ASSERT_TRUE(kHarmless.contains(finding.rule)) << finding.path << ": " << finding.sentence;
    ASSERT_TRUE(result.policies);
    EXPECT_EQ(result.policies->version1, written.version1);
    EXPECT_EQ(result.policies->version2, written.version2);
    ASSERT_EQ(result.policies->policies.size(), written.policies.size());
    for (std::size_t i = 0; i < written.policies.size(); ++i)
      expectSame(result.policies->policies[i], written.policies[i]);
    if (HasFailure()) break;
  }
}

/// Whatever somebody breaks, the reader ends, and what it says lies inside of the document.
TEST(RandomDocuments, that_are_broken_are_read_to_their_end) {
  std::mt19937 random{1};
  for (unsigned seed = 0; seed < 3000; ++seed) {
    PolicySet written;
    std::string document = Author{seed}.write(written);
    const int changes = 1 + static_cast<int>(random() % 8);
    for (int i = 0; i < changes; ++i) {
      const std::size_t place = random() % document.size();
      constexpr char kBytes[] = "{}[],:\"\\#0-.e \n\x80/*";
      if (random() % 2 == 0)
        document[place] = kBytes[random() % (sizeof kBytes - 1)];
      else
        document.erase(place, 1 + random() % 20);
      if (document.empty()) document = " ";
    }
    const auto result = readDocument(document);
    ASSERT_LE(result.findings.size(), 1000U);
    for (const Finding& finding : result.findings) {
      ASSERT_LE(finding.span.end(), document.size()) << seed;
      ASSERT_FALSE(finding.sentence.empty()) << seed;
      for (const Suggestion& suggestion : finding.suggestions)
        for (const Edit& edit : suggestion.edits) ASSERT_LE(edit.span.end(), document.size()) << seed;
    }
  }
}

}  // namespace
}  // namespace documents
