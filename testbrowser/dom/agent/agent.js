// What the browser outside calls.
Object.defineProperty(window, AGENT, {
  configurable: true,
  value: {
    token,
    call,
    numberOf,
    mode: documentMode,
    /** The object of a number; undefined when it was dropped. */
    element: (number) => held.get(number),
    object: (number) => held.get(number),
    /** A reference to an object of this document, for an agent of another. */
    reference: ownReference,
  },
});
