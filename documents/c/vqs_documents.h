/* SPDX-License-Identifier: Apache-2.0 */
#ifndef VQS_DOCUMENTS_H
#define VQS_DOCUMENTS_H

#include <stddef.h>
#include <stdint.h>

/*
 * Policies in words, for any language that can call C: checks policy documents, makes policy binaries and registry text
 * of them, turns these back into documents, and compares them. Needs no driver, opens no file and keeps nothing between
 * two calls. Text is UTF-8. Every function may be called from any thread; one result may be used by one thread at a
 * time.
 *
 * Each operation returns a result that is never null and that its caller releases. A result has a status, an output and
 * findings, which belong to it and live as long as it does.
 */

#if defined(_WIN32) && defined(VQS_DOCUMENTS_BUILDING)
#define VQS_DOCUMENTS_API __declspec(dllexport)
#elif defined(_WIN32) && !defined(VQS_DOCUMENTS_STATIC)
#define VQS_DOCUMENTS_API __declspec(dllimport)
#elif defined(__GNUC__)
#define VQS_DOCUMENTS_API __attribute__((visibility("default")))
#else
#define VQS_DOCUMENTS_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** What became of an operation. */
enum {
  /** It is done, and what has an output has it. There may be findings, all of them warnings when it was a check. */
  VQS_DOCUMENTS_DONE = 0,
  /** The input has errors, which the findings say, and there is no output. */
  VQS_DOCUMENTS_ERRORS = 1,
  /** An argument was refused: a null pointer with a size, or an option's value that does not exist. */
  VQS_DOCUMENTS_INVALID_PARAMETER = 2,
  /** Memory ran out. A build without exceptions, as for WebAssembly, ends instead. */
  VQS_DOCUMENTS_OUT_OF_MEMORY = 3
};

/** What vqsDocumentsCompile makes. */
enum {
  /** a policy binary of revision 5 */
  VQS_DOCUMENTS_BINARY = 0,
  /** registry text that sets the value of the Asm store, of the BalanceProfile store */
  VQS_DOCUMENTS_REGISTRY_ASM = 1,
  VQS_DOCUMENTS_REGISTRY_BALANCE_PROFILE = 2
};

/** Encodings of registry text. */
enum {
  /** UTF-8 without a byte order mark, lines end in LF */
  VQS_DOCUMENTS_UTF8 = 0,
  /** UTF-16, little-endian, with a byte order mark, lines end in CR LF */
  VQS_DOCUMENTS_UTF16 = 1
};

/** How documents are read. All zero but structureVersion, which is usually 2. */
typedef struct VqsDocumentsOptions {
  /** the layout that the policies are for, 0 to 2; 0 and 1 hold 8-bit text: names of 63 bytes, texts of 32 */
  uint32_t structureVersion;
  /** not 0: what the catalogues do not know is a warning and no error */
  uint32_t allowUnknown;
  /** of vqsDocumentsCompile: VQS_DOCUMENTS_BINARY or one of VQS_DOCUMENTS_REGISTRY_ */
  uint32_t target;
  /** of registry text: VQS_DOCUMENTS_UTF8 or VQS_DOCUMENTS_UTF16 */
  uint32_t encoding;
} VqsDocumentsOptions;

/** What an operation gave. */
typedef struct VqsDocumentsResult VqsDocumentsResult;

/**
 * Checks a document, or a policy binary or registry text, which are told from documents by how they begin. The output
 * is empty. Null options stand for structure version 2 and nothing else.
 */
VQS_DOCUMENTS_API VqsDocumentsResult* vqsDocumentsCheck(const void* bytes, size_t size,
                                                        const VqsDocumentsOptions* options);

/**
 * Makes a policy binary or registry text of a document, or of what else vqsDocumentsCheck takes. Errors of any kind end
 * it without output.
 */
VQS_DOCUMENTS_API VqsDocumentsResult* vqsDocumentsCompile(const void* bytes, size_t size,
                                                          const VqsDocumentsOptions* options);

/**
 * Makes a document of a policy binary of any revision, or of registry text; a document comes out in its canonical form.
 * What the catalogues have to say does not stop it.
 */
VQS_DOCUMENTS_API VqsDocumentsResult* vqsDocumentsDecompile(const void* bytes, size_t size);

/** A document in its canonical layout, with its comments. Whether it makes sense as policies is not looked at. */
VQS_DOCUMENTS_API VqsDocumentsResult* vqsDocumentsFormat(const void* bytes, size_t size);

/**
 * Compares two documents, policy binaries or registry texts. The output is a JSON object whose "same" tells whether
 * they say the same, and whose other members say what differs. The findings are those of the first that cannot be read.
 */
VQS_DOCUMENTS_API VqsDocumentsResult* vqsDocumentsDiff(const void* first, size_t firstSize, const void* second,
                                                       size_t secondSize);

/** The JSON Schema (draft-07) of documents. */
VQS_DOCUMENTS_API VqsDocumentsResult* vqsDocumentsSchema(void);

/** One of the statuses above. Invalid parameter for a null result. */
VQS_DOCUMENTS_API uint32_t vqsDocumentsStatus(const VqsDocumentsResult* result);

/** The output and its size in bytes. A zero follows it that is not counted. Never null; empty for a null result. */
VQS_DOCUMENTS_API const void* vqsDocumentsOutput(const VqsDocumentsResult* result);
VQS_DOCUMENTS_API size_t vqsDocumentsOutputSize(const VqsDocumentsResult* result);

/**
 * The findings, as a JSON array that ends in a zero. Each has "code", "title", "severity" ("error" or "warning"),
 * "message", "path", its place, and "suggestions": "message", "certain" (nothing else can have been meant) and "edits",
 * each with its place and "replacement". A place is "offset" and "length" in bytes, "line", "column", "endLine" and
 * "endColumn" from 1 on, columns in characters; it is the beginning where a finding about a policy binary has a path
 * alone. Of registry text in UTF-16 places are those of the same text in UTF-8. Never null; "[]" for a null result.
 */
VQS_DOCUMENTS_API const char* vqsDocumentsFindings(const VqsDocumentsResult* result);

/** Ends the life of a result; null is allowed. */
VQS_DOCUMENTS_API void vqsDocumentsRelease(VqsDocumentsResult* result);

#ifdef __cplusplus
}
#endif

#endif
