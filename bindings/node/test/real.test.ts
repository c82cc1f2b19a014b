// The real program and a real page.
import assert from "node:assert/strict";
import { writeFileSync } from "node:fs";
import { join } from "node:path";
import { test } from "node:test";
import { Browser, Failure } from "../src/index.js";

const PLAYER = JSON.parse(process.env["REAL_PLAYER"] ?? "[]") as string[];
const FOLDER = process.env["TEST_FOLDER"] ?? ".";
const PAGE = `<!DOCTYPE html><meta charset=utf-8><title>P</title><p id=p>café</p>
<input id=i value=x><table id=t><tr><td>A</td></tr></table>`;

test("drives a page and closes it", { timeout: 120_000 }, async () => {
  const path = join(FOLDER, "page.html");
  writeFileSync(path, PAGE);
  const address = path.startsWith("/") ? "Z:" + path : path.replaceAll("\\", "/");
  await using page = await Browser.start({ player: PLAYER, shots: FOLDER });
  await page.open("file:///" + address);
  assert.equal(await page.gettext("id=p"), "café");
  await page.type_m("id=i", "ü€");
  assert.equal((await page.getcontrolinfo("id=i"))["text"], "ü€");
  assert.deepEqual(await page.gettable("id=t"), [[0], ["A"]]);
  const methods = Object.getOwnPropertyNames(Object.getPrototypeOf(Browser.prototype)).filter((n) => n !== "constructor");
  assert.deepEqual(methods.sort(), Object.keys(page.hello.commands).sort());
  const error: unknown = await page.gettext("id=none").catch((reason: unknown) => reason);
  assert.ok(error instanceof Failure && error.picture?.endsWith(".png"), String(error));
});
