// A program that serves commands from a table, for tests of the conversation alone.
import { createInterface } from "node:readline";

const say = (answer) => process.stdout.write(JSON.stringify(answer) + "\n");
const answers = { gettable: [[0], ["a"]], haselement: false, pagesource: "a\u2028b\rc" };

if (process.argv.includes("--no-hello")) {
  console.error("cannot load quillmate.dll");
  process.exit(2);
}
say({ hello: "quillmate", protocol: process.argv.includes("--newer") ? 7 : 1, commands: {} });
const lines = createInterface({ input: process.stdin });
lines.on("close", () => process.exit(0));
lines.on("line", (line) => {
  const { command, ...given } = JSON.parse(line);
  if (command === "refresh") {
    say({ id: null, success: false, result: 0, log: "refresh: the library crashed", crashed: true });
    process.exit(1);
  }
  if (command === "quit") process.exit(1);
  if (command === "waitshow") return;
  if (command === "click")
    return say({ id: null, success: false, result: 0, log: "Element not found!", picture: "C:\\a.png", notes: ["note"] });
  if (command === "back") return say({ id: null, success: false, error: "no", line: 1, column: 2 });
  say({ id: null, success: true, result: answers[command] ?? JSON.stringify(given), log: "" });
});
