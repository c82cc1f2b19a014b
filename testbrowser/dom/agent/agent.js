// The entry points that the browser process calls.
Object.defineProperty(window, AGENT, {
  configurable: true,
  value: {
    token,
    call,
    numberOf,
    mode: documentMode,
    /** The object with this number; undefined after it was dropped. */
    element: (number) => held.get(number),
    object: (number) => held.get(number),
    /** A reference to an object of this document, for the agent of another document. */
    reference: ownReference,
  },
});
