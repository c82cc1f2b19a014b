// Calls into a page that is being left. Once a page begins to navigate, Chromium holds back all that a session asks of
// it until the next document is there, for as long as the server takes. So a page about to be left fetches its calls:
// by a request that the engine keeps, and answers with the next call.
(() => {
  const engine = window[Symbol.for('testbrowser.engine')];
  const fetchNow = window.fetch;
  let departures = 0;
  let asking = false;
  let last = 0;

  /** Runs a call once, by whichever way it comes first; calls have rising numbers. */
  engine.once = (number, name, args) => {
    if (number <= last) return { late: true };
    last = number;
    return name ? window[Symbol.for('testbrowser.agent')][name](...args) : undefined;
  };

  const answer = ({ number, name, args }) => {
    if (number <= last) return;
    try {
      engine.report('answer', { number, value: engine.once(number, name, args) });
    } catch (error) {
      engine.report('answer', { number, error: String((error && error.stack) || error) });
    }
  };

  const ask = async () => {
    if (asking) return;
    asking = true;
    try {
      for (;;) {
        const reply = await fetchNow(`https://testbrowser.invalid/calls?${departures}`);
        const call = await reply.json();
        if (call.number) answer(call);
        else if (call.stay >= departures) break;
      }
    } catch {
      // The page is gone, or nobody answers any more.
    }
    asking = false;
  };
  window.addEventListener('beforeunload', () => {
    ++departures;
    ask();
  }, true);
})();
