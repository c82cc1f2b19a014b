// Documents.
const liveCollection = (read) => new Collection(read);

/** By id; in modes 5 and 7 by id or name, whichever element comes first. */
function elementById(id) {
  if (!isAncient()) return document.getElementById(id);
  const wanted = id.toLowerCase();
  const matches = (element) => element.id.toLowerCase() === wanted || nameOf(element).toLowerCase() === wanted;
  const exact = document.getElementById(id);
  for (const element of document.querySelectorAll('[id], [name]')) {
    if (matches(element)) return element;
  }
  return exact;
}

// Elements of tags that HTML does not know have no name for MSHTML.
const isInvented = (element) => element instanceof HTMLUnknownElement;

/** By name in either case, and before mode 10 by id too. */
function elementsByName(name) {
  const wanted = name.toLowerCase();
  const hasName = (element) => !isInvented(element) && nameOf(element).toLowerCase() === wanted;
  const hasId = (element) => documentMode() < 10 && element.id.toLowerCase() === wanted;
  const matches = (element) => hasName(element) || hasId(element);
  return liveCollection(() => Array.from(document.querySelectorAll('[id], [name]')).filter(matches));
}

function elementsByClass(root, names) {
  return collectionUnder(root, () => root.getElementsByClassName(names));
}

const READY_STATES = { loading: 'loading', interactive: 'interactive', complete: 'complete' };

define('IHTMLDocument2', {
  get_all: () => allUnder(document),
  get_body: () => document.body,
  get_activeElement: () => document.activeElement,
  get_images: () => liveCollection(() => document.images),
  get_applets: () => liveCollection(() => document.getElementsByTagName('applet')),
  get_links: () => liveCollection(() => document.links),
  get_forms: () => liveCollection(() => document.forms),
  get_anchors: () => liveCollection(() => document.anchors),
  get_scripts: () => liveCollection(() => document.scripts),
  get_embeds: () => liveCollection(() => document.embeds),
  get_plugins: () => liveCollection(() => document.plugins),
  get_title: () => document.title,
  put_title(self, title) {
    document.title = title;
  },
  get_readyState: () => READY_STATES[document.readyState],
  get_location: () => window.location,
  get_URL: () => textOrNull(document.URL),
  put_URL(self, url) {
    window.location.href = url;
  },
  get_cookie: () => textOrNull(document.cookie),
  put_cookie(self, text) {
    document.cookie = text;
  },
  get_domain: () => textOrNull(document.domain),
  put_domain(self, domain) {
    try {
      document.domain = domain;
    } catch {
      throw new ComError(E_INVALIDARG);
    }
  },
  get_referrer: () => textOrNull(document.referrer),
  get_lastModified: () => textOrNull(document.lastModified),
  get_charset: () => document.characterSet.toLowerCase(),
  get_designMode: () => document.designMode,
  put_designMode(self, mode) {
    document.designMode = mode;
  },
  get_nameProp: () => document.title || textOrNull(document.URL),
  get_selection: () => {
    throw new ComError(E_NOTIMPL);
  },
  createElement: (self, tag) => document.createElement(tag.replace(/^<\s*([\w:-]+).*$/s, '$1')),
  elementFromPoint: (self, x, y) => document.elementFromPoint(x, y),
  write: (self, texts) => document.write(...texts),
  writeln: (self, texts) => document.writeln(...texts),
  open: () => {
    document.open();
    return window;
  },
  close: () => document.close(),
  execCommand: (self, command, showUi, value) => document.execCommand(command, showUi, value),
  queryCommandEnabled: (self, command) => document.queryCommandEnabled(command),
  queryCommandState: (self, command) => document.queryCommandState(command),
  queryCommandSupported: (self, command) => document.queryCommandSupported(command),
  toString: () => (isModern() ? '[object Document]' : '[object]'),
});

define('IHTMLDocument3', {
  get_documentElement: () => document.documentElement,
  getElementById: (self, id) => elementById(id),
  getElementsByName: (self, name) => elementsByName(name),
  getElementsByTagName: (self, tag) => elementsByTag(document, tag),
  get_childNodes: () => document.childNodes,
  createTextNode: (self, text) => document.createTextNode(text),
  get_uniqueID: () => uniqueIdOf(document),
  recalc: () => undefined,
  get_dir: () => textOrNull(document.dir),
});

define('IHTMLDocument4', {
  focus: () => window.focus(),
  hasFocus: () => document.hasFocus(),
  get_URLUnencoded: () => textOrNull(decodeURI(document.URL)),
  createEventObject: (self, like) => new CustomEvent('', { detail: like }),
  fireEvent: (self, name, event) => fireEvent(document, name, event),
});

define('IHTMLDocument5', {
  get_compatMode: compatMode,
  get_doctype: () => (isModern() ? document.doctype : null),
  createAttribute: (self, name) => document.createAttribute(name),
  createComment: (self, text) => document.createComment(text),
});

define('IHTMLDocument6', {
  get_documentMode: () => new Encoded({ $: 'r4', v: documentMode() }),
  getElementById: (self, id) => document.getElementById(id),
});

define('IHTMLDocument7', {
  getElementsByClassName: (self, names) => elementsByClass(document, names),
  getElementsByTagNameNS: (self, space, tag) => liveCollection(() => document.getElementsByTagNameNS(space, tag)),
  createElement: (self, tag) => document.createElement(tag),
  createElementNS: (self, space, tag) => document.createElementNS(space, tag),
  get_characterSet: () => document.characterSet.toLowerCase(),
  get_inputEncoding: () => document.inputEncoding.toLowerCase(),
  get_all: () => allUnder(document),
  get_body: () => document.body,
  get_head: () => document.head,
});
