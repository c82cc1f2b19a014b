// Windows: their frames and scripts. Parents, documents and screen positions are answered outside, where the frames
// of other origins are known too.
const CO_E_CLASSSTRING = 0x800401f3;
const SCRIPT_E_REPORTED = 0x80020101;

const allFrames = () => Array.from(document.querySelectorAll('frame, iframe'));
const frameElements = () => allFrames().filter((frame) => frame.contentWindow);

define('IHTMLFramesCollection2', {
  get_length: () => frameElements().length,
  item(self, index) {
    const found = frameElements()[index];
    if (!found) throw new ComError(DISP_E_MEMBERNOTFOUND);
    return frameReference('frame', found);
  },
});

let scriptRan = false;
const globalEval = window.eval;

/** Runs a text as the page's own global code. */
function runScript(code) {
  scriptRan = true;
  return (0, globalEval)(code);
}

define('IHTMLWindow2', {
  execScript(self, code, language) {
    if (!/^(jscript|javascript|livescript|ecmascript)?[\d.]*$/i.test(language || '')) {
      throw new ComError(CO_E_CLASSSTRING);
    }
    try {
      runScript(code);
    } catch {
      throw new ComError(SCRIPT_E_REPORTED);
    }
  },
});
