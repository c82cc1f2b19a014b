// Message boxes and modal dialogs. The caller stands at the `debugger` statement, as it stands in its box in the real
// browser, until the engine has put the user's answer into `answer`. (Where a script runs while another one stands so,
// the statement does nothing and the box counts as dismissed.)
(() => {
  function testbrowserAsk(request) {
    let answer = null;
    debugger;
    return answer;
  }
  const ask = (request) => testbrowserAsk(request) ?? { accepted: false };

  window.alert = function alert(...args) {
    ask({ kind: 'alert', text: args.length > 0 ? String(args[0]) : '' });
  };
  window.confirm = function confirm(...args) {
    return ask({ kind: 'confirm', text: args.length > 0 ? String(args[0]) : '' }).accepted;
  };
  window.prompt = function prompt(...args) {
    const [text, value] = args.map(String);
    const answer = ask({ kind: 'prompt', text: text ?? '', value: value ?? '' });
    return answer.accepted ? answer.text : null;
  };
  window.showModalDialog = function showModalDialog(url, dialogArguments, features) {
    const address = new URL(String(url), document.baseURI).href;
    // Both ways only what JSON can carry: the dialog lives in another process.
    const request = { kind: 'dialog', url: address, arguments: dialogArguments, features: String(features ?? '') };
    try {
      JSON.stringify(request);
    } catch {
      delete request.arguments;
    }
    return ask(request).value;
  };
})();
