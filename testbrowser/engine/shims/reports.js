// How the engine's scripts report to it, out of the page's sight; and the report of the title, which Chromium's own
// events give late or not at all.
(() => {
  const notify = window.testbrowserNotify;
  delete window.testbrowserNotify;
  const engine = {
    report(kind, details) {
      notify(JSON.stringify({ kind, ...details }));
    },
  };
  Object.defineProperty(window, Symbol.for('testbrowser.engine'), { value: engine });

  if (window !== window.top) return;
  const reportTitle = () => engine.report('title', { title: document.title });
  // At the window, not at the document: the first page of a window that a script opened takes over the window of
  // the blank one, with its listeners, and these scripts do not run again.
  window.addEventListener('DOMContentLoaded', () => {
    reportTitle();
    const watched = document.head ?? document;
    new MutationObserver(reportTitle).observe(watched, { childList: true, characterData: true, subtree: true });
  });
})();
