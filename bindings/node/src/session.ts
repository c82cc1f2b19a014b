import { Commands, type Value } from "./commands.js";
import { Failure } from "./failure.js";
import { Program, playerWords } from "./program.js";

const PROTOCOL = 1;
const START_TIME_OUT = 60_000; // milliseconds
const END_TIME_OUT = 30_000; // closing browsers takes its time

export interface BrowserOptions {
  /** quillmate-play.exe, or the words of a command line that starts it. */
  player?: string | readonly string[];
  /** A folder for a picture after each failure. */
  shots?: string;
  /** Whether the browsers that the session opens are closed at its end, whatever ends it; true without it. */
  closeBrowsers?: boolean;
  /** Another library than the one beside the program. */
  dll?: string;
  /** Milliseconds that a call may take unless it says otherwise. */
  timeOut?: number;
}

export interface Hello {
  version: string;
  protocol: number;
  "code-page": number;
  commands: Record<string, string[]>;
}

interface Answer {
  success: boolean;
  result?: unknown;
  log?: string;
  error?: string;
  picture?: string;
  notes?: string[];
  crashed?: boolean;
}

/** A session of its own: one current surface, one set of selected frames. */
export class Browser extends Commands implements AsyncDisposable {
  hello!: Hello;
  #program: Program;
  #timeOut: number | undefined;
  #over: string | undefined;
  #last: Promise<unknown> = Promise.resolve();

  private constructor(options: BrowserOptions) {
    super();
    const words = [...playerWords(options.player), "--serve"];
    if (options.shots !== undefined) words.push("--shots", options.shots);
    if (options.closeBrowsers !== false) words.push("--close-browsers");
    if (options.dll !== undefined) words.push("--dll", options.dll);
    this.#timeOut = options.timeOut;
    this.#program = new Program(words);
  }

  /** Begins a session. */
  static async start(options: BrowserOptions = {}): Promise<Browser> {
    const browser = new Browser(options);
    await browser.#readHello();
    return browser;
  }

  /**
   * Carries out a command by its name and gives its result. Parameters that are undefined are left out. Calls
   * that are not awaited are carried out one after the other; the time-out of each begins with its turn.
   */
  async call(command: string, parameters: Record<string, Value> = {}, timeOut = this.#timeOut): Promise<unknown> {
    const given = textsOf(parameters);
    const turn = this.#last.then(() => this.#ask(command, given, timeOut));
    this.#last = turn.catch(() => {});
    const answer = await turn;
    if (answer.success) return answer.result;
    throw new Failure(command, given, answer.error ?? answer.log ?? "",
                      { picture: answer.picture, notes: answer.notes });
  }

  /** Ends the session after the calls that were begun. Later calls fail. */
  async end(): Promise<void> {
    await this.#last;
    if (this.#over === undefined) await this.#finish("the session has ended", END_TIME_OUT);
  }

  async [Symbol.asyncDispose](): Promise<void> {
    await this.end();
  }

  async #ask(command: string, given: Record<string, string>, timeOut: number | undefined): Promise<Answer> {
    if (this.#over !== undefined) throw new Failure(command, given, this.#over);
    this.#program.write(JSON.stringify({ command, ...given }));
    const line = await this.#program.read(timeOut);
    if (line === null) {
      const reason = `no answer within ${timeOut} ms; the program was ended`;
      await this.#finish(reason, 0);
      throw new Failure(command, given, reason, { timedOut: true });
    }
    if (line === undefined) throw new Failure(command, given, (this.#over = await this.#program.ended));
    const answer = JSON.parse(line) as Answer;
    if (answer.crashed) await this.#finish(answer.log ?? "the library crashed", END_TIME_OUT);
    return answer;
  }

  async #readHello(): Promise<void> {
    const line = await this.#program.read(START_TIME_OUT);
    if (line === undefined) throw new Failure("", {}, await this.#program.ended);
    const hello = line === null ? undefined : (JSON.parse(line) as Hello);
    if (hello?.protocol !== PROTOCOL) {
      await this.#finish("", 0);
      throw new Failure("", {}, hello ? `the program speaks protocol ${hello.protocol}, not ${PROTOCOL}`
                                      : "the program does not say hello");
    }
    this.hello = hello;
  }

  async #finish(why: string, patience: number): Promise<void> {
    this.#over = why;
    await this.#program.finish(patience);
  }
}

function textsOf(parameters: Record<string, Value>): Record<string, string> {
  const given = Object.entries(parameters).filter(([, value]) => value !== undefined);
  return Object.fromEntries(given.map(([name, value]) => [name, textOf(value)]));
}

function textOf(value: Value): string {
  if (typeof value === "boolean") return value ? "True" : "False";
  return typeof value === "object" ? value.join(",") : String(value);
}
