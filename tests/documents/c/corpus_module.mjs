// SPDX-License-Identifier: Apache-2.0
// What corpus_client.c does, with the WebAssembly module: node corpus_module.mjs MODULE FOLDER FILE...
import { readFileSync, writeFileSync } from "node:fs";
import { WASI } from "node:wasi";

const [modulePath, folder, ...paths] = process.argv.slice(2);
if (paths.length === 0) throw new Error("corpus_module: needs a module, a folder and files");

const wasi = new WASI({ version: "preview1" });
const module = await WebAssembly.compile(readFileSync(modulePath));
const instance = await WebAssembly.instantiate(module, wasi.getImportObject());
wasi.initialize(instance);
const library = instance.exports;

/** The module's memory, which moves when it grows. */
const memory = () => new Uint8Array(library.memory.buffer);

function place(bytes) {
  const address = library.malloc(bytes.length + 1);
  memory().set(bytes, address);
  return { address, size: bytes.length };
}

function placeOptions(...words) {
  return place(new Uint8Array(Uint32Array.from(words).buffer)).address;
}

function terminated(address) {
  return memory().slice(address, memory().indexOf(0, address));
}

function keep(index, operation, result) {
  const start = library.vqsDocumentsOutput(result);
  const output = memory().slice(start, start + library.vqsDocumentsOutputSize(result));
  const findings = terminated(library.vqsDocumentsFindings(result));
  const head = Buffer.from(`${library.vqsDocumentsStatus(result)}\n`);
  writeFileSync(`${folder}/${index}-${operation}`, Buffer.concat([head, findings, Buffer.from("\n"), output]));
  library.vqsDocumentsRelease(result);
}

const binary = placeOptions(2, 1, 0, 0);
const narrow = placeOptions(1, 0, 1, 0);
const wide = placeOptions(2, 0, 2, 1);

function putThrough(index, file, before) {
  keep(index, "check", library.vqsDocumentsCheck(file.address, file.size, 0));
  keep(index, "binary", library.vqsDocumentsCompile(file.address, file.size, binary));
  keep(index, "narrow", library.vqsDocumentsCompile(file.address, file.size, narrow));
  keep(index, "wide", library.vqsDocumentsCompile(file.address, file.size, wide));
  keep(index, "decompile", library.vqsDocumentsDecompile(file.address, file.size));
  keep(index, "format", library.vqsDocumentsFormat(file.address, file.size));
  keep(index, "diff", library.vqsDocumentsDiff(before.address, before.size, file.address, file.size));
}

keep(0, "schema", library.vqsDocumentsSchema());
let before = { address: 0, size: 0 };
paths.forEach((path, i) => {
  const file = place(readFileSync(path));
  putThrough(i + 1, file, before);
  library.free(before.address);
  before = file;
});
