/** Splits bytes into lines at line feeds only: other line breaks may stand in a text. */
export class Lines {
  #parts: Buffer[] = [];

  constructor(private readonly take: (line: string) => void) {}

  add(block: Buffer): void {
    let start = 0;
    for (let end; (end = block.indexOf(0x0a, start)) >= 0; start = end + 1) {
      this.#parts.push(block.subarray(start, end));
      const line = Buffer.concat(this.#parts).toString("utf8");
      this.#parts = [];
      this.take(line);
    }
    if (start < block.length) this.#parts.push(block.subarray(start));
  }
}
