// SPDX-License-Identifier: Apache-2.0
#include "tests/documents/syntax/random_document.h"

#include <array>
#include <string_view>

namespace documents {
namespace {

using Tokens = std::vector<std::string>;

constexpr std::array<std::string_view, 20> kTextPieces = {"a",
                                                          "Power Source",
                                                          "\\\"",
                                                          "\\\\",
                                                          "\\/",
                                                          "\\b\\f\\n\\r\\t",
                                                          "\\u0041",
                                                          "\\u00e4",
                                                          "\\ud83d\\ude00",
                                                          "\\u20AC",
                                                          "\xC3\xA4",
                                                          "\xE2\x82\xAC",
                                                          "/*",
                                                          "\xF0\x9F\x98\x80",
                                                          "// ] } ,",
                                                          "]",
                                                          "\x7F",
                                                          " ",
                                                          "'",
                                                          ":"};
constexpr std::array<std::string_view, 14> kNumbers = {
    "0",   "-0",   "1",       "10",     "-7",     "0.5",   "4294967295",
    "1e3", "2E-2", "3.25e+1", "-0.0e0", "1e-400", "15000", "9007199254740993"};
constexpr std::array<std::string_view, 9> kBlanks = {"", "", " ", "  ", "\n", "\r\n", "\t", "\n\n\n", "\r"};
constexpr std::array<std::string_view, 9> kComments = {
    "// a\n", "//\r\n", "/* b */", "/**/", "/* c\n   d */", "// e \r", "/* // f */", "//g, ]\n", "/*\r\n * h\r\n */"};

}  // namespace

Tokens RandomDocument::tokens() {
  Tokens tokens;
  if (below(8) == 0)
    appendValue(tokens, 4);
  else
    appendObject(tokens, 0);
  return tokens;
}

void RandomDocument::appendValue(Tokens& tokens, int depth) {
  const std::size_t kind = below(depth < 6 ? 8 : 6);
  if (kind < 2) return tokens.push_back(string());
  if (kind < 4) return tokens.push_back(number());
  if (kind == 4) return tokens.push_back(below(2) == 0 ? "true" : "false");
  if (kind == 5) return tokens.push_back("null");
  if (kind == 6) return appendList(tokens, depth);
  appendObject(tokens, depth);
}

void RandomDocument::appendList(Tokens& tokens, int depth) {
  tokens.emplace_back("[");
  const std::size_t count = below(4);
  for (std::size_t i = 0; i < count; ++i) {
    if (i != 0) tokens.emplace_back(",");
    appendValue(tokens, depth + 1);
  }
  tokens.emplace_back("]");
}

void RandomDocument::appendObject(Tokens& tokens, int depth) {
  tokens.emplace_back("{");
  const std::size_t count = below(5);
  for (std::size_t i = 0; i < count; ++i) {
    if (i != 0) tokens.emplace_back(",");
    std::string name = string();
    name.insert(1, 1, static_cast<char>('0' + i));
    tokens.push_back(name);
    tokens.emplace_back(":");
    appendValue(tokens, depth + 1);
  }
  tokens.emplace_back("}");
}

std::string RandomDocument::string() {
  std::string text = "\"";
  for (std::size_t count = below(4); count > 0; --count) text += kTextPieces[below(kTextPieces.size())];
  return text + '"';
}

std::string RandomDocument::number() { return std::string{kNumbers[below(kNumbers.size())]}; }
std::string RandomDocument::blank() { return std::string{kBlanks[below(kBlanks.size())]}; }
std::string RandomDocument::comment() { return std::string{kComments[below(kComments.size())]}; }

std::string RandomDocument::spaced(const Tokens& tokens, bool hasComments) {
  std::string text;
  for (std::size_t i = 0; i <= tokens.size(); ++i) {
    text += blank();
    for (std::size_t count = hasComments && below(4) == 0 ? 1 + below(2) : 0; count > 0; --count)
      text += comment() + blank();
    if (i == tokens.size()) break;
    const bool isClosing = tokens[i] == "]" || tokens[i] == "}";
    const bool hasMembers = i > 0 && tokens[i - 1] != "[" && tokens[i - 1] != "{";
    if (hasComments && isClosing && hasMembers && below(3) == 0) text += "," + blank();
    text += tokens[i];
  }
  return text;
}

std::string RandomDocument::withOneComment(const Tokens& tokens, std::size_t gap, const std::string& comment) {
  std::string text;
  for (std::size_t i = 0; i <= tokens.size(); ++i) {
    if (i == gap) text += comment;
    if (i < tokens.size()) text += tokens[i];
  }
  return text;
}

std::string RandomDocument::mutated(std::string text) {
  constexpr std::string_view kBytes = "{}[],:\"\\/*01-+.eEtfn u\n\t\x01\x80\xC3\xE2\xF0\xFF'";
  for (std::size_t count = 1 + below(3); count > 0; --count) {
    const std::size_t at = below(text.size() + 1);
    const std::size_t length = at == text.size() ? 0 : 1 + below(std::min<std::size_t>(3, text.size() - at));
    switch (below(4)) {
      case 0:
        text.erase(at, length);
        break;
      case 1:
        text.insert(at, 1, kBytes[below(kBytes.size())]);
        break;
      case 2:
        text.insert(at, text.substr(at, length));
        break;
      default:
        if (at < text.size()) text[at] = kBytes[below(kBytes.size())];
    }
  }
  return text;
}

}  // namespace documents
