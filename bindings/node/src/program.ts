import { type ChildProcessWithoutNullStreams, spawn } from "node:child_process";
import { existsSync } from "node:fs";
import { fileURLToPath } from "node:url";
import { Lines } from "./lines.js";

const PROGRAM = "quillmate-play.exe";

/** The words that start the program: those given, the environment's, the program packed here, or the path's. */
export function playerWords(given?: string | readonly string[]): string[] {
  if (typeof given === "string") return [given];
  if (given !== undefined) return [...given];
  if (process.env["QUILLMATE_PLAYER"] !== undefined) return [process.env["QUILLMATE_PLAYER"]];
  const packed = fileURLToPath(new URL(`../bin/${PROGRAM}`, import.meta.url));
  return [existsSync(packed) ? packed : PROGRAM];
}

/** The program as a stream of lines. */
export class Program {
  readonly ended: Promise<string>;
  #process: ChildProcessWithoutNullStreams;
  #lines: string[] = [];
  #errors = "";
  #over = false;
  #wake: (() => void) | undefined;

  constructor(words: readonly string[]) {
    const [file, ...rest] = words;
    this.#process = spawn(file ?? "", rest, { windowsHide: true });
    const lines = new Lines((line) => this.#add(line));
    this.#process.stdout.on("data", (block: Buffer) => lines.add(block));
    this.#process.stderr.on("data", (block: Buffer) => (this.#errors += block.toString("utf8")));
    this.#process.stdin.on("error", () => {}); // it no longer reads: its end says why
    this.ended = new Promise((resolve) => {
      const finish = (how: string) => {
        this.#over = true;
        this.#wake?.();
        resolve(how);
      };
      this.#process.on("error", (error) => finish(`cannot start ${file}: ${error.message}`));
      this.#process.on("close", (code, signal) => finish(this.#describe(code ?? signal)));
    });
  }

  write(line: string): void {
    this.#process.stdin.write(line + "\n");
  }

  /** The next line; undefined at the end, null when none comes in time. */
  async read(timeOut?: number): Promise<string | undefined | null> {
    let late = false;
    const timer = timeOut === undefined ? undefined : setTimeout(() => ((late = true), this.#wake?.()), timeOut);
    while (this.#lines.length === 0 && !this.#over && !late)
      await new Promise<void>((resolve) => (this.#wake = resolve));
    clearTimeout(timer);
    return this.#lines.shift() ?? (this.#over ? undefined : null);
  }

  /** Closes the program's input and, when it is not gone in time, ends it. */
  async finish(patience: number): Promise<void> {
    this.#process.stdin.end();
    const timers = [setTimeout(() => this.#process.kill(), patience),
                    setTimeout(() => this.#process.kill("SIGKILL"), patience + 5000)];
    await this.ended;
    timers.forEach(clearTimeout);
  }

  #add(line: string): void {
    this.#lines.push(line);
    this.#wake?.();
  }

  #describe(code: number | string | null): string {
    const said = this.#errors.trim();
    return `the program ended with exit code ${code}` + (said === "" ? "" : `: ${said}`);
  }
}
