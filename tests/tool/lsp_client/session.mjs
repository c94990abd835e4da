// SPDX-License-Identifier: Apache-2.0
// One session of an editor with the language server. session.mjs COMMAND...: the tool, whose "policy lsp" is the server.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { readFileSync } from 'node:fs';
import protocol from 'vscode-languageserver-protocol/node.js';

const {
  CodeActionKind, CodeActionRequest, CompletionItemKind, CompletionRequest, DefinitionRequest, DiagnosticSeverity,
  DidChangeTextDocumentNotification, DidCloseTextDocumentNotification, DidOpenTextDocumentNotification,
  DidSaveTextDocumentNotification, DocumentFormattingRequest, DocumentSymbolRequest, ErrorCodes, ExitNotification,
  HoverRequest, InitializedNotification, InitializeRequest, InsertTextFormat, MarkupKind,
  PositionEncodingKind, PublishDiagnosticsNotification, SetTraceNotification, ShutdownRequest, StreamMessageReader,
  StreamMessageWriter, SymbolKind, TextDocumentSyncKind, WorkspaceSymbolRequest, createProtocolConnection
} = protocol;

const uri = 'file:///policies/quiet.json';
const document = readFileSync(new URL('document.json', import.meta.url), 'utf8');
const range = (line, start, end) => ({ start: { line, character: start }, end: { line, character: end } });
const capabilities = {
  general: { positionEncodings: [PositionEncodingKind.UTF8, PositionEncodingKind.UTF16] },
  textDocument: {
    codeAction: { codeActionLiteralSupport: { codeActionKind: { valueSet: [CodeActionKind.QuickFix] } } },
    completion: {
      completionItem: { snippetSupport: true, documentationFormat: [MarkupKind.Markdown, MarkupKind.PlainText] }
    },
    documentSymbol: { hierarchicalDocumentSymbolSupport: true },
    hover: { contentFormat: [MarkupKind.Markdown, MarkupKind.PlainText] },
    publishDiagnostics: { relatedInformation: true }
  },
  workspace: { workspaceEdit: { documentChanges: true } }
};

// What went wrong anywhere else than in an answer.
const troubles = [];
process.on('exit', (code) => {
  if (code !== 0) console.error('the session did not come to its end', troubles);
});

/** A running server, and what it has said about the document that nobody has looked at yet. */
function start(command) {
  const server = spawn(command[0], [...command.slice(1), 'policy', 'lsp', '--stdio'], { stdio: 'pipe' });
  const connection = createProtocolConnection(new StreamMessageReader(server.stdout),
    new StreamMessageWriter(server.stdin));
  const published = [];
  const waiting = [];
  connection.onNotification(PublishDiagnosticsNotification.type, (parameters) => {
    if (waiting.length > 0) waiting.shift()(parameters);
    else published.push(parameters);
  });
  connection.onUnhandledNotification((message) => troubles.push(`unexpected: ${message.method}`));
  connection.onError((error) => troubles.push(error));
  server.stderr.on('data', (text) => troubles.push(`on standard error: ${text}`));
  connection.listen();
  return {
    connection,
    ended: once(server, 'exit'),
    stdin: server.stdin,
    /** The diagnostics that come next. */
    diagnostics: () => published.length > 0 ? Promise.resolve(published.shift())
                                            : new Promise((resolve) => waiting.push(resolve))
  };
}

async function refused(request, code) {
  await assert.rejects(request, (error) => {
    assert.equal(error.code, code);
    return true;
  });
}

const command = process.argv.slice(2);
const { connection, diagnostics, ended } = start(command);
const textDocument = { uri };
const ask = (type, line, character) => connection.sendRequest(type, { textDocument, position: { line, character } });
let version = 1;
function change(contentChanges) {
  version += 1;
  connection.sendNotification(DidChangeTextDocumentNotification.type,
    { textDocument: { uri, version }, contentChanges });
  return diagnostics();
}

// Nothing is answered before the introduction.
await refused(ask(HoverRequest.type, 0, 0), ErrorCodes.ServerNotInitialized);

const introduction = await connection.sendRequest(InitializeRequest.type,
  { processId: process.pid, rootUri: null, capabilities });
assert.equal(introduction.serverInfo.name, 'vqs');
assert.match(introduction.serverInfo.version, /^\d+\.\d+\.\d+$/);
assert.equal(introduction.capabilities.positionEncoding, PositionEncodingKind.UTF16);
assert.equal(introduction.capabilities.textDocumentSync.change, TextDocumentSyncKind.Incremental);
assert.deepEqual(introduction.capabilities.codeActionProvider.codeActionKinds,
  [CodeActionKind.QuickFix, CodeActionKind.SourceFixAll]);
connection.sendNotification(InitializedNotification.type, {});
connection.sendNotification(SetTraceNotification.type, { value: 'verbose' });
await refused(connection.sendRequest(InitializeRequest.type, { processId: null, rootUri: null, capabilities }),
  ErrorCodes.InvalidRequest);
await refused(connection.sendRequest('policies/sing', {}), ErrorCodes.MethodNotFound);

// Opened, the document has no findings.
connection.sendNotification(DidOpenTextDocumentNotification.type,
  { textDocument: { uri, languageId: 'jsonc', version, text: document } });
assert.deepEqual(await diagnostics(), { uri, version: 1, diagnostics: [] });

// Somebody writes what is no option; in the line above, a character of two units makes way for one of one.
const wrong = await change([
  { range: range(8, 26, 36), text: '"Solar"' },
  { range: range(1, 21, 23), text: 'ä' }
]);
assert.equal(wrong.version, 2);
assert.equal(wrong.diagnostics.length, 1);
assert.deepEqual(wrong.diagnostics[0].range, range(8, 26, 33));
assert.equal(wrong.diagnostics[0].code, 'P0012');
assert.equal(wrong.diagnostics[0].severity, DiagnosticSeverity.Error);
assert.equal(wrong.diagnostics[0].source, 'vqs');
assert.match(wrong.diagnostics[0].message, /"AC Power" \(0\) or "DC Power" \(1\) is expected/);

// The finding is explained where it is.
const explained = await ask(HoverRequest.type, 8, 28);
assert.equal(explained.contents.kind, MarkupKind.Markdown);
assert.match(explained.contents.value, /^\*\*Power Source\*\*: condition 0, one of 2 options/);
assert.match(explained.contents.value, /\*\*P0012\*\*: no such option/);
assert.deepEqual(explained.range, range(8, 26, 33));

// The options are proposed, and take the place of what stands between the quotes.
const options = await ask(CompletionRequest.type, 8, 30);
assert.deepEqual(options.map((item) => item.label), ['AC Power', 'DC Power']);
assert.equal(options[1].kind, CompletionItemKind.EnumMember);
assert.deepEqual(options[1].textEdit, { range: range(8, 27, 32), newText: 'DC Power' });
assert.deepEqual((await change([{ range: range(8, 27, 32), text: 'DC Power' }])).diagnostics, []);

// Names, with their values, where somebody has begun an object in the list of actions.
assert.equal((await change([{ range: range(11, 24, 24), text: ', { "Fan' }])).diagnostics.length > 0, true);
const names = await ask(CompletionRequest.type, 11, 32);
const mode = names.find((item) => item.label === 'Fan Mode');
assert.equal(mode.kind, CompletionItemKind.Function);
assert.equal(mode.insertTextFormat, InsertTextFormat.Snippet);
assert.deepEqual(mode.textEdit.range, range(11, 29, 32));
assert.match(mode.textEdit.newText, /^Fan Mode": \$\{1\|"/);
assert.equal(mode.documentation.kind, MarkupKind.Markdown);
assert.equal(names.find((item) => item.label === 'SPL').detail, 'action 2, 0 to 4294967295, in mW');
assert.deepEqual((await change([{ range: range(11, 24, 32), text: '' }])).diagnostics, []);

// Members that a policy has not yet.
const members = await ask(CompletionRequest.type, 14, 5);
assert.deepEqual(members.map((item) => item.label), ['do', 'flag0', 'flag1', 'flag2', 'param0', 'param1', 'param2']);

// The document is canonical; with two blanks too many one edit makes it so again.
const formatting = { textDocument, options: { tabSize: 2, insertSpaces: true } };
assert.deepEqual(await connection.sendRequest(DocumentFormattingRequest.type, formatting), []);
await change([{ range: range(11, 9, 10), text: '   ' }]);
const edits = await connection.sendRequest(DocumentFormattingRequest.type, formatting);
assert.deepEqual(edits, [{ range: range(11, 10, 12), newText: '' }]);
assert.deepEqual((await change([{ range: edits[0].range, text: edits[0].newText }])).diagnostics, []);

// An id in a comment, in a description and of a policy leads to the policy.
const quiet = { uri, range: range(5, 12, 14) };
assert.deepEqual(await ask(DefinitionRequest.type, 1, 15), quiet);
assert.deepEqual(await ask(DefinitionRequest.type, 17, 27), quiet);
assert.deepEqual(await ask(DefinitionRequest.type, 15, 13), { uri, range: range(15, 12, 14) });
assert.equal(await ask(DefinitionRequest.type, 11, 19), null);

const symbols = await connection.sendRequest(DocumentSymbolRequest.type, { textDocument });
assert.deepEqual(symbols.map((symbol) => symbol.name), ['10 Quiet', '20 Loud']);
assert.equal(symbols[0].kind, SymbolKind.Object);
assert.deepEqual(symbols[0].selectionRange, range(5, 12, 14));
assert.deepEqual(symbols[1].children.map((symbol) => [symbol.name, symbol.detail]),
  [['Skin Temperature', '{ "op": 3, "value": 4600 }'], ['a.exe', '']]);
assert.deepEqual((await connection.sendRequest(WorkspaceSymbolRequest.type, { query: '20' }))
  .map((symbol) => symbol.name), ['20 Loud']);

// Two policies of one id: the second is marked, and leads to the first.
const twice = await change([{ range: range(15, 12, 14), text: '10' }]);
assert.equal(twice.diagnostics.length, 1);
assert.equal(twice.diagnostics[0].code, 'P0033');
assert.deepEqual(twice.diagnostics[0].relatedInformation,
  [{ location: quiet, message: 'the first policy with this id' }]);
assert.deepEqual(await ask(DefinitionRequest.type, 15, 13), quiet);
await change([{ range: range(15, 12, 14), text: '20' }]);

// A name in another case has a fix that is certain.
const small = await change([{ range: range(8, 11, 23), text: 'power source' }]);
assert.equal(small.diagnostics.length, 1);
const actions = await connection.sendRequest(CodeActionRequest.type,
  { textDocument, range: range(8, 12, 12), context: { diagnostics: small.diagnostics } });
assert.deepEqual(actions.map((action) => [action.title, action.kind, action.isPreferred]),
  [['Write "Power Source"', CodeActionKind.QuickFix, true],
    ['Apply every fix that is certain', CodeActionKind.SourceFixAll, undefined]]);
assert.deepEqual(actions[0].diagnostics, small.diagnostics);
assert.deepEqual(actions[0].edit.documentChanges,
  [{ textDocument: { uri, version }, edits: [{ range: range(8, 10, 24), newText: '"Power Source"' }] }]);
const all = await connection.sendRequest(CodeActionRequest.type, {
  textDocument, range: range(0, 0, 0), context: { diagnostics: [], only: [CodeActionKind.SourceFixAll] }
});
assert.equal(all.length, 1);
const [fix] = all[0].edit.documentChanges[0].edits;
assert.deepEqual(fix, { range: range(8, 11, 18), newText: 'Power S' });
assert.deepEqual((await change([{ range: fix.range, text: fix.newText }])).diagnostics, []);

// The editor thinks better of a request, saves, replaces everything, and closes the document.
const source = new protocol.CancellationTokenSource();
const abandoned = connection.sendRequest(HoverRequest.type, { textDocument, position: { line: 8, character: 12 } },
  source.token);
source.cancel();
assert.match((await abandoned).contents.value, /^\*\*Power Source\*\*/);
connection.sendNotification(DidSaveTextDocumentNotification.type, { textDocument });
const broken = await change([{ text: '{ "policies": [' }]);
assert.equal(broken.diagnostics.every((diagnostic) => diagnostic.source === 'vqs'), true);
assert.notEqual(broken.diagnostics.length, 0);
assert.deepEqual(await connection.sendRequest(DocumentFormattingRequest.type, formatting), []);
connection.sendNotification(DidCloseTextDocumentNotification.type, { textDocument });
assert.deepEqual(await diagnostics(), { uri, diagnostics: [] });
await refused(ask(HoverRequest.type, 0, 0), ErrorCodes.InvalidParams);

// Once it is shut down it does nothing more, and ends when it is told to.
assert.equal(await connection.sendRequest(ShutdownRequest.type), null);
await refused(ask(HoverRequest.type, 0, 0), ErrorCodes.InvalidRequest);
connection.sendNotification(ExitNotification.type);
assert.deepEqual(await ended, [0, null]);
assert.deepEqual(troubles, []);

// An editor that is gone without a word leaves a server that ends too.
const second = start(command);
await second.connection.sendRequest(InitializeRequest.type, { processId: null, rootUri: null, capabilities });
second.stdin.end();
assert.deepEqual(await second.ended, [1, null]);
assert.deepEqual(troubles, []);
console.log('one session, as expected');
process.exit(0);
