// Reads scripts for SQL Server and says what an independent grammar, and five checks of what that lets pass,
// find in them:   npm ci && node check.js SCRIPT...
// Status 0 when nothing is found. The grammar knows words in upper case only; literals are left as they are.
'use strict';

const fs = require('fs');
const { ANTLRInputStream, CommonTokenStream } = require('antlr4ts');
const { TSqlLexer } = require('antlr4ts-sql/dist/src/grammar-output/tsql/TSqlLexer.js');
const { TSqlParser } = require('antlr4ts-sql/dist/src/grammar-output/tsql/TSqlParser.js');

const TYPES = /^(SMALLINT|INTEGER|BIGINT|REAL|FLOAT\(53\)|DECIMAL\(\d+,\d+\)|(VAR)?CHAR\((\d+|MAX)\))$/;

function upperCase(script) {
  return script
    .split('\n')
    .filter((line) => !line.startsWith('--'))
    .map((line) => line.split(/('(?:[^']|'')*')/).map((part, i) => (i % 2 ? part : part.toUpperCase())).join(''))
    .join('\n');
}

function grammarMistakes(script) {
  const mistakes = [];
  const listener = {
    syntaxError: (_recognizer, _symbol, line, column, words) => mistakes.push(`line ${line}:${column} ${words}`),
  };
  const lexer = new TSqlLexer(new ANTLRInputStream(script));
  lexer.removeErrorListeners();
  lexer.addErrorListener(listener);
  const parser = new TSqlParser(new CommonTokenStream(lexer));
  parser.removeErrorListeners();
  parser.addErrorListener(listener);
  parser.tsql_file();
  return mistakes;
}

// What the grammar accepts and the server does not: unknown types, types that are too long, two IDENTITY
// columns, a column twice, a comma at the end.
function tableMistakes(script) {
  const mistakes = [];
  for (const [, table, body] of script.matchAll(/CREATE TABLE (\S+|\[[^\n]*?\]) \(\n([^]*?)\n\);/g)) {
    const say = (words) => mistakes.push(`${table}: ${words}`);
    if (body.endsWith(',')) say('a comma at the end');
    const names = new Set();
    let identities = 0;
    for (const line of body.split('\n')) {
      const text = line.trim().replace(/,$/, '');
      if (/^(PRIMARY KEY|CHECK|CONSTRAINT) /.test(text)) continue;
      const column = /^(\[(?:[^\]]|\]\])*\]|\S+) (.*?)( IDENTITY\(1,1\))?( NOT NULL)?$/.exec(text);
      if (!column) {
        say(`no column: ${text}`);
        continue;
      }
      const [, name, type, identity] = column;
      if (names.has(name.toUpperCase())) say(`the column ${name} twice`);
      names.add(name.toUpperCase());
      if (identity) identities += 1;
      const known = TYPES.exec(type);
      if (!known) say(`the type ${type}`);
      if (known && /^\d+$/.test(known[3] || '') && Number(known[3]) > 8000) say(`the type ${type} is too long`);
    }
    if (identities > 1) say('two IDENTITY columns');
    if (names.size > 1024) say(`${names.size} columns`);
  }
  return mistakes;
}

// The checks must find what they are for.
function proveChecks() {
  const wrong = {
    'CREATE TABLE T (\n    A INTEGR\n);': tableMistakes,
    'CREATE TABLE T (\n    A VARCHAR(9000)\n);': tableMistakes,
    'CREATE TABLE T (\n    A BIGINT IDENTITY(1,1) NOT NULL,\n    B BIGINT IDENTITY(1,1) NOT NULL\n);': tableMistakes,
    'CREATE TABLE T (\n    A INTEGER,\n    [A] INTEGER,\n    A INTEGER\n);': tableMistakes,
    'CREATE TABLE T (\n    A INTEGER,\n);': tableMistakes,
    'CREATE TABLE T (\n    ORDER INTEGER\n);': grammarMistakes,
    'CREATE INDEX I ON T (A DESCENDING);': grammarMistakes,
  };
  for (const [script, check] of Object.entries(wrong)) {
    if (check(script).length === 0) throw new Error(`not found wrong: ${script}`);
  }
}

proveChecks();
let found = 0;
for (const file of process.argv.slice(2)) {
  const script = upperCase(fs.readFileSync(file, 'utf8'));
  const mistakes = [...grammarMistakes(script), ...tableMistakes(script)];
  for (const words of mistakes) console.log(`${file}: ${words}`);
  const tables = (script.match(/^CREATE TABLE /gm) || []).length;
  console.log(`${file}: ${tables} tables, ${mistakes.length} mistakes`);
  found += mistakes.length;
}
process.exit(found === 0 ? 0 : 1);
