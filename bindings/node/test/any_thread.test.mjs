// The library itself in Windows' Node.js, by koffi's asynchronous calls: each runs on whichever thread of a pool is free.
import assert from "node:assert/strict";
import { writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";
import { test } from "node:test";

const { MODULES, QUILLMATE_DLL, TEST_FOLDER } = process.env;
const koffi = createRequire(join(MODULES, "host.js"))("koffi");
const library = koffi.load(QUILLMATE_DLL);
const threadOf = koffi.load("kernel32.dll").func("GetCurrentThreadId", "uint32", []);
const WORDS = ["ink", "paper", "wax", "seal", "nib"];
const PAGE = `<!DOCTYPE html><title>Any thread</title>${WORDS.map((word) => `<p id=${word}>${word}</p>`).join("")}`;

const run = (called, ...words) =>
  new Promise((resolve, reject) => called.async(...words, (error, answer) => (error ? reject(error) : resolve(answer))));

function command(name) {
  const called = library.func(name, "str", ["str"]);
  return async (parameters) => JSON.parse(await run(called, JSON.stringify(parameters)));
}

const [open, gettext, haselement, selectframe, select, quit] =
  ["open", "gettext", "haselement", "selectframe", "selectwindowuntop", "quit"].map(command);

test("answers on every thread of a pool", { timeout: 120_000 }, async () => {
  const path = join(TEST_FOLDER, "any_thread.html");
  writeFileSync(path, PAGE);
  const address = (path.startsWith("/") ? "Z:" + path : path).replaceAll("\\", "/");
  assert.deepEqual(await open({ target: "file:///" + address }), { success: true, result: true });
  const threads = new Set();
  for (let round = 0; round < 20; ++round) {
    const word = WORDS[round % WORDS.length];
    assert.deepEqual(await gettext({ target: "id=" + word }), { success: true, result: word }, `round ${round}`);
    threads.add(await run(threadOf));
  }
  assert.ok(threads.size > 1, "the calls came from one thread only");
  // At once. What is not copied yet must not differ: the library has one buffer for all of them.
  const answers = await Promise.all(Array.from({ length: 8 }, () => haselement({ target: "id=wax" })));
  for (const answer of answers) assert.deepEqual(answer, { success: true, result: true });
  assert.match((await selectframe({ target: "id=none" })).log, /^Can't find frame by/);
  assert.deepEqual(await quit({}), { success: true, result: true });
  assert.deepEqual((await select({ target: "title=Any thread" })).log, "Browser not found!");
});
