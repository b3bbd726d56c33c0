// DuckDB's ROLLUP on the comparison's table, on one thread. Obeys the lines that peer_worker.py
// tells of. The first argument is the folder that has node_modules/@duckdb.
import fs from 'node:fs';
import path from 'node:path';
import readline from 'node:readline';
import {createRequire} from 'node:module';

const [folder, table, casesFile] = process.argv.slice(2);
const require = createRequire(path.join(path.resolve(folder), 'package.json'));
const {DuckDBInstance} = require('@duckdb/node-api');
const cases = JSON.parse(fs.readFileSync(casesFile, 'ascii'));

function reply(answer) {
  process.stdout.write(JSON.stringify(answer) + '\n');
}

function sqlOf(asked) {
  const tests = ['true'];
  if (asked.spec !== null) tests.push(`spec = ${asked.spec}`);
  if (asked.floor !== null) tests.push(`floor = ${asked.floor}`);
  if (asked.codes !== null) tests.push(`code IN (${asked.codes.join(',')})`);
  if (asked.only_main) tests.push('is_main = 1');
  const keys = asked.keys.join(', ');
  const order = asked.keys.map((key) => `${key} NULLS FIRST`).join(', ');
  return `SELECT ${keys}, sum(quantity) FROM flat WHERE ${tests.join(' AND ')} ` +
         `GROUP BY ROLLUP (${keys}) ORDER BY ${order}`;
}

// All rows are fetched, in DuckDB's own columns; none is made a JavaScript object.
async function ask(connection, asked) {
  return connection.runAndReadAll(sqlOf(asked));
}

async function timed(connection, asked, seconds) {
  const times = [];
  let elapsed = 0;
  let rows = 0;
  do {
    const begin = process.hrtime.bigint();
    const reader = await ask(connection, asked);
    const took = Number(process.hrtime.bigint() - begin) / 1e6;
    rows = reader.currentRowCount;
    times.push(took);
    elapsed += took;
  } while (elapsed < seconds * 1000);
  times.sort((a, b) => a - b);
  const middle = times.length >> 1;
  const ms = times.length % 2 ? times[middle] : (times[middle - 1] + times[middle]) / 2;
  return {ms, rows};
}

const begin = process.hrtime.bigint();
const instance = await DuckDBInstance.create(':memory:', {threads: '1'});
const connection = await instance.connect();
const quoted = table.replaceAll("'", "''");
const small = ['spec', 'kind', 'attr', 'item', 'floor', 'code', 'shown_floor', 'shown_code',
               'is_main'];
const columns = small.map((name) => `'${name}': 'USMALLINT'`).join(', ');
await connection.run(`CREATE TABLE flat AS SELECT * FROM read_csv('${quoted}', header = true,
                      columns = {${columns}, 'quantity': 'DOUBLE'})`);
const version = (await connection.runAndReadAll('SELECT version()')).getRows()[0][0];
reply({version, prepare_ms: Number(process.hrtime.bigint() - begin) / 1e6});

for await (const line of readline.createInterface({input: process.stdin})) {
  const command = line.slice(0, line.indexOf(' '));
  const argument = line.slice(line.indexOf(' ') + 1);
  const answers = {};
  for (const asked of cases) {
    answers[asked.name] = command === 'answers' ?
        (await ask(connection, asked)).getRows() :
        await timed(connection, asked, Number(argument));
  }
  if (command === 'answers') {
    fs.writeFileSync(argument, JSON.stringify(answers));
    reply({});
  } else {
    reply(answers);
  }
}
