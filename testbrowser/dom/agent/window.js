// Windows: their frames, scrolling, scripts. Parents, documents and screen positions are answered outside, where the
// frames of other origins are known too.
const CO_E_CLASSSTRING = 0x800401f3;
const SCRIPT_E_REPORTED = 0x80020101;

const frameElements = () => Array.from(document.querySelectorAll('frame, iframe')).filter((frame) => frame.contentWindow);

define('IHTMLFramesCollection2', {
  get_length: () => frameElements().length,
  item(self, index) {
    if (index === undefined || index === null) return self;
    if (typeof index === 'boolean') throw new ComError(E_INVALIDARG);
    const frames = frameElements();
    const wanted = (frame) => nameOf(frame) === index || frame.id === index;
    const found = typeof index === 'string' ? frames.find(wanted) : frames[index];
    if (!found) throw new ComError(DISP_E_MEMBERNOTFOUND);
    return frameReference('frame', found);
  },
});

let scriptRan = false;

define('IHTMLWindow2', {
  get_name: () => textOrNull(window.name),
  put_name(self, name) {
    window.name = name;
  },
  get_location: () => window.location,
  get_closed: () => window.closed,
  get_opener: () => (window.opener === null ? undefined : window.opener),
  get_status: () => textOrNull(window.status),
  get_defaultStatus: () => textOrNull(window.defaultStatus),
  get_event: () => window.event || null,
  alert: (self, text) => window.alert(text),
  confirm: (self, text) => window.confirm(text),
  prompt: (self, text, fallback) => window.prompt(text, fallback),
  navigate(self, url) {
    window.location.href = url;
  },
  focus: () => window.focus(),
  blur: () => window.blur(),
  scroll: (self, x, y) => window.scrollTo(x, y),
  scrollTo: (self, x, y) => window.scrollTo(x, y),
  scrollBy: (self, x, y) => window.scrollBy(x, y),
  toString: () => '[object]',
  setTimeout: (self, code, delay) => window.setTimeout(() => runScript(code), delay),
  setInterval: (self, code, delay) => window.setInterval(() => runScript(code), delay),
  clearTimeout: (self, timer) => window.clearTimeout(timer),
  clearInterval: (self, timer) => window.clearInterval(timer),
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
define('IHTMLWindow4', { get_frameElement: () => window.frameElement });

/** Runs a text as the page's own global code. */
function runScript(code) {
  scriptRan = true;
  return (0, globalEval)(code);
}

define('IHTMLLocation', {
  get_href: (place) => textOrNull(place.href),
  put_href(place, url) {
    place.href = url;
  },
  get_protocol: (place) => textOrNull(place.protocol),
  get_host: (place) => textOrNull(place.host),
  get_hostname: (place) => textOrNull(place.hostname),
  get_port: (place) => textOrNull(place.port),
  get_pathname: (place) => textOrNull(place.pathname),
  get_search: (place) => textOrNull(place.search),
  get_hash: (place) => textOrNull(place.hash),
  reload: (place) => place.reload(),
  replace: (place, url) => place.replace(url),
  assign: (place, url) => place.assign(url),
  toString: (place) => place.href,
});
