// The conversation with the program, with a program of the tests' own.
import assert from "node:assert/strict";
import { test } from "node:test";
import { Browser, Failure } from "../src/index.js";

const FAKE = [process.execPath, process.env["FAKE_SERVER"] ?? ""];
const start = (...words: string[]) => Browser.start({ player: [...FAKE, ...words], closeBrowsers: false });

async function failureOf(call: Promise<unknown>): Promise<Failure> {
  const error: unknown = await call.then(() => undefined, (reason: unknown) => reason);
  assert.ok(error instanceof Failure, `no Failure but ${String(error)}`);
  return error;
}

test("sends each parameter as a text and gives values back", async () => {
  await using browser = await start();
  assert.equal(await browser.gettext("id=é"), '{"target":"id=é"}');
  assert.equal(await browser.executescript("1"), '{"value":"1"}');
  assert.equal(await browser.call("x", { a: [3, -4], b: true, c: undefined, d: 7 }), '{"a":"3,-4","b":"True","d":"7"}');
  assert.deepEqual(await browser.gettable("id=t"), [[0], ["a"]]);
  assert.equal(await browser.haselement("id=t"), false);
  assert.equal(await browser.type_m("id=a", "x"), undefined);
  assert.equal(await browser.pagesource(), "a\u2028b\rc");
});

test("rejects with what failed", async () => {
  await using browser = await start();
  const failure = await failureOf(browser.click("id=a", { manualClick: true }));
  assert.equal(failure.command, "click");
  assert.deepEqual(failure.parameters, { "target": "id=a", "manual-click": "True" });
  assert.equal(failure.reason, "Element not found!");
  assert.equal(failure.message, 'click(target="id=a", manual-click="True"): Element not found! (picture: C:\\a.png)');
  assert.deepEqual([failure.picture, failure.notes, failure.timedOut], ["C:\\a.png", ["note"], false]);
  assert.equal((await failureOf(browser.back())).reason, "no");
});

test("carries out calls one after the other", async () => {
  await using browser = await start();
  const calls = Array.from({ length: 50 }, (_, i) => browser.gettext(`id=${i}`));
  const answers = await Promise.all(calls);
  answers.forEach((answer, i) => assert.equal(answer, `{"target":"id=${i}"}`));
});

test("ends the program when a call takes too long", async () => {
  await using browser = await start();
  const failure = await failureOf(browser.waitshow("id=a", { timeOut: 200 }));
  assert.equal(failure.reason, "no answer within 200 ms; the program was ended");
  assert.ok(failure.timedOut);
  assert.match((await failureOf(browser.pagesource())).reason, /the program was ended/);
});

test("says how the program ended", async () => {
  await using browser = await start();
  assert.match((await failureOf(browser.refresh())).reason, /the library crashed/);
  assert.match((await failureOf(browser.pagesource())).reason, /the library crashed/);
  await using other = await start();
  assert.match((await failureOf(other.quit())).reason, /ended with exit code 1/);
});

test("says why no session begins", async () => {
  assert.match((await failureOf(start("--no-hello"))).reason, /exit code 2: cannot load quillmate.dll/);
  assert.match((await failureOf(start("--newer"))).reason, /protocol 7, not 1/);
  assert.match((await failureOf(Browser.start({ player: "/no/such/program" }))).reason, /cannot start/);
});

test("is over at its end", async () => {
  const browser = await start();
  await browser.end();
  await browser.end();
  assert.match((await failureOf(browser.pagesource())).reason, /has ended/);
});
