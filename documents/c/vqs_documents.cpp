// SPDX-License-Identifier: Apache-2.0
#include "documents/c/vqs_documents.h"

#include <iterator>
#include <new>
#include <span>
#include <string>
#include <string_view>

#include "documents/c/json.h"
#include "documents/documents.h"

struct VqsDocumentsResult {
  std::uint32_t status = VQS_DOCUMENTS_DONE;
  std::string output;
  std::string findings = "[]";
};

namespace documents {
namespace {

/// What there is to hand out when there is no memory for a result. It is never released.
VqsDocumentsResult& outOfMemory() {
  static VqsDocumentsResult result{.status = VQS_DOCUMENTS_OUT_OF_MEMORY, .output = {}, .findings = "[]"};
  return result;
}

/// The result of an operation that fills one in. Nothing of an operation that ran out of memory is left.
template <class Operation>
VqsDocumentsResult* resultOf(Operation operation) {
#ifdef __cpp_exceptions
  VqsDocumentsResult* result = nullptr;
  try {
    result = new VqsDocumentsResult;
    operation(*result);
    return result;
  } catch (const std::bad_alloc&) {
    delete result;
    return &outOfMemory();
  }
#else
  auto* const result = new VqsDocumentsResult;
  operation(*result);
  return result;
#endif
}

constexpr VqsDocumentsOptions kUsualOptions{
    .structureVersion = VQS_STRUCTURE_VERSION_2, .allowUnknown = 0, .target = VQS_DOCUMENTS_BINARY, .encoding = 0};

bool isSound(const VqsDocumentsOptions& options) {
  return options.structureVersion <= VQS_STRUCTURE_VERSION_2 &&
         options.target <= VQS_DOCUMENTS_REGISTRY_BALANCE_PROFILE && options.encoding <= VQS_DOCUMENTS_UTF16;
}

/// Bytes that a caller names.
struct Input {
  const void* bytes;
  std::size_t size;

  [[nodiscard]] bool isSound() const { return bytes != nullptr || size == 0; }
  [[nodiscard]] std::span<const std::byte> span() const { return {static_cast<const std::byte*>(bytes), size}; }
  [[nodiscard]] std::string_view text() const {
    return size != 0 ? std::string_view{static_cast<const char*>(bytes), size} : std::string_view{};
  }
};

ReadOptions readOptions(const VqsDocumentsOptions& options) {
  return {.structureVersion = options.structureVersion, .allowUnknown = options.allowUnknown != 0};
}

/// Hands out findings about an input, and an output where there is one.
void conclude(VqsDocumentsResult& result, const Findings& findings, std::string_view text, bool isDone) {
  result.findings = toJson(findings, text);
  result.status = isDone ? VQS_DOCUMENTS_DONE : VQS_DOCUMENTS_ERRORS;
}

void conclude(VqsDocumentsResult& result, const ReadResult& read, const Input& input, bool isDone) {
  conclude(result, read.findings, read.textOf(input.span()), isDone);
}

std::string asString(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string compiled(const PolicySet& policies, const VqsDocumentsOptions& options) {
  const auto binary = writeBinary(policies);
  if (options.target == VQS_DOCUMENTS_BINARY) return asString(binary);
  return writeRegistry(
      binary, options.target == VQS_DOCUMENTS_REGISTRY_ASM ? RegistryValue::kAsm : RegistryValue::kBalanceProfile,
      options.encoding == VQS_DOCUMENTS_UTF16 ? RegistryEncoding::kUtf16 : RegistryEncoding::kUtf8);
}

void check(VqsDocumentsResult& result, const Input& input, const VqsDocumentsOptions& options) {
  const auto read = checkPolicies(input.span(), readOptions(options));
  conclude(result, read, input, read.policies && !hasErrors(read.findings));
}

void compile(VqsDocumentsResult& result, const Input& input, const VqsDocumentsOptions& options) {
  const auto read = checkPolicies(input.span(), readOptions(options));
  const bool isDone = read.policies && !hasErrors(read.findings);
  if (isDone) result.output = compiled(*read.policies, options);
  conclude(result, read, input, isDone);
}

void decompile(VqsDocumentsResult& result, const Input& input) {
  const auto read = readPolicies(input.span(), {.allowUnknown = true});
  if (read.policies) result.output = printDocument(*read.policies);
  conclude(result, read, input, read.policies.has_value());
}

void format(VqsDocumentsResult& result, const Input& input) {
  auto formatted = formatDocument(input.text());
  if (formatted.text) result.output = std::move(*formatted.text);
  conclude(result, formatted.findings, input.text(), formatted.text.has_value());
}

void diff(VqsDocumentsResult& result, const Input& first, const Input& second) {
  const auto one = readPolicies(first.span(), {.allowUnknown = true});
  if (!one.policies) return conclude(result, one, first, false);
  const auto other = readPolicies(second.span(), {.allowUnknown = true});
  if (!other.policies) return conclude(result, other, second, false);
  result.output = toJson(compare(*one.policies, *other.policies));
}

void refuse(VqsDocumentsResult& result) { result.status = VQS_DOCUMENTS_INVALID_PARAMETER; }

/// An operation on one input with options.
template <class Operation>
VqsDocumentsResult* withOptions(Operation operation, const Input& input, const VqsDocumentsOptions* options) {
  const VqsDocumentsOptions& taken = options != nullptr ? *options : kUsualOptions;
  if (!input.isSound() || !isSound(taken)) return resultOf(refuse);
  return resultOf([&](VqsDocumentsResult& result) { operation(result, input, taken); });
}

}  // namespace
}  // namespace documents

VqsDocumentsResult* vqsDocumentsCheck(const void* bytes, size_t size, const VqsDocumentsOptions* options) {
  return documents::withOptions(documents::check, {bytes, size}, options);
}

VqsDocumentsResult* vqsDocumentsCompile(const void* bytes, size_t size, const VqsDocumentsOptions* options) {
  return documents::withOptions(documents::compile, {bytes, size}, options);
}

VqsDocumentsResult* vqsDocumentsDecompile(const void* bytes, size_t size) {
  const documents::Input input{bytes, size};
  if (!input.isSound()) return documents::resultOf(documents::refuse);
  return documents::resultOf([&](VqsDocumentsResult& result) { documents::decompile(result, input); });
}

VqsDocumentsResult* vqsDocumentsFormat(const void* bytes, size_t size) {
  const documents::Input input{bytes, size};
  if (!input.isSound()) return documents::resultOf(documents::refuse);
  return documents::resultOf([&](VqsDocumentsResult& result) { documents::format(result, input); });
}

VqsDocumentsResult* vqsDocumentsDiff(const void* first, size_t firstSize, const void* second, size_t secondSize) {
  const documents::Input one{first, firstSize};
  const documents::Input other{second, secondSize};
  if (!one.isSound() || !other.isSound()) return documents::resultOf(documents::refuse);
  return documents::resultOf([&](VqsDocumentsResult& result) { documents::diff(result, one, other); });
}

VqsDocumentsResult* vqsDocumentsSchema() {
  return documents::resultOf([](VqsDocumentsResult& result) { result.output = documents::documentSchema(); });
}

uint32_t vqsDocumentsStatus(const VqsDocumentsResult* result) {
  return result != nullptr ? result->status : std::uint32_t{VQS_DOCUMENTS_INVALID_PARAMETER};
}

const void* vqsDocumentsOutput(const VqsDocumentsResult* result) {
  return result != nullptr ? result->output.c_str() : "";
}

size_t vqsDocumentsOutputSize(const VqsDocumentsResult* result) {
  return result != nullptr ? result->output.size() : 0;
}

const char* vqsDocumentsFindings(const VqsDocumentsResult* result) {
  return result != nullptr ? result->findings.c_str() : "[]";
}

void vqsDocumentsRelease(VqsDocumentsResult* result) {
  if (result != &documents::outOfMemory()) delete result;
}
