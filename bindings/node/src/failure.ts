export interface FailureDetails {
  picture?: string | undefined;
  notes?: string[] | undefined;
  timedOut?: boolean;
}

/** A command that failed, or a session that ended. */
export class Failure extends Error {
  override readonly name = "Failure";
  /** The path of a picture of the browser, when the session keeps pictures. */
  readonly picture: string | undefined;
  /** What the library wrote for debuggers meanwhile, for instance the text of a message box. */
  readonly notes: readonly string[];
  /** Whether the call took longer than its time-out. The program has been ended then. */
  readonly timedOut: boolean;

  /**
   * @param command its name; "" when no session could be begun.
   * @param parameters as they were sent.
   * @param reason why it failed, without the command.
   */
  constructor(readonly command: string, readonly parameters: Readonly<Record<string, string>>, readonly reason: string,
              details: FailureDetails = {}) {
    super(describe(command, parameters, reason, details.picture));
    this.picture = details.picture;
    this.notes = details.notes ?? [];
    this.timedOut = details.timedOut ?? false;
  }
}

function describe(command: string, parameters: Readonly<Record<string, string>>, reason: string,
                  picture: string | undefined): string {
  const given = Object.entries(parameters).map(([name, value]) => `${name}=${JSON.stringify(value)}`);
  const text = command === "" ? reason : `${command}(${given.join(", ")}): ${reason}`;
  return picture === undefined ? text : `${text} (picture: ${picture})`;
}
