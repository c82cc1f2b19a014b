// The window of a modal HTML dialog. Called with the opener's dialogArguments; runs after the other shims.
((dialogArguments) => {
  if (window !== window.top) return;
  const engine = window[Symbol.for('testbrowser.engine')];
  window.dialogArguments = dialogArguments;
  // A script may not close a window that no script opened, and this one's value has to be read first.
  window.close = function close() {
    engine.report('closeDialog', { value: window.returnValue });
  };
})
