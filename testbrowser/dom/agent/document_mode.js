// The document mode: MSHTML chooses it by the doctype and by the page's X-UA-Compatible list.
const NEWEST_MODE = 11;
const MODES = [5, 7, 8, 9, 10, 11];

function hasCommentBeforeDoctype() {
  for (const node of document.childNodes) {
    if (node === document.doctype) return false;
    if (node.nodeType === Node.COMMENT_NODE) return true;
  }
  return false;
}

/** Whether the doctype asks for standards. MSHTML ignores a doctype that follows a comment. */
const hasStandardsDoctype = () => document.compatMode === 'CSS1Compat' && !hasCommentBeforeDoctype();

/** The mode of one entry in an X-UA-Compatible list. Undefined ends the list. */
function modeOfWish(entry, standards) {
  const text = entry.trim().toLowerCase();
  if (text === 'edge') return NEWEST_MODE;
  const emulated = /^emulateie(\d+)$/.exec(text);
  const version = Number((emulated || /^(\d+)$/.exec(text) || [])[1]);
  if (version > NEWEST_MODE) return NEWEST_MODE;
  if (!MODES.includes(version)) return undefined;
  return emulated && !standards && version < 10 ? 5 : version;
}

/** The highest mode in the list before the first invalid entry. */
function wishedMode(content, standards) {
  const list = /^\s*ie\s*=(.*)$/is.exec(content);
  if (!list) return undefined;
  let best;
  for (const part of list[1].split(',')) {
    const [entry, ...more] = part.split(';');
    const mode = modeOfWish(entry, standards);
    if (mode === undefined) break;
    best = Math.max(best || 0, mode);
    if (more.length > 0) break;
  }
  return best;
}

function inheritedMode() {
  const parentAgent = parent !== window && location.href === 'about:blank' ? agentOf(parent) : undefined;
  if (!parentAgent) return undefined;
  return parentAgent.mode() >= 9 ? parentAgent.mode() : 5;
}

function computeMode() {
  const inherited = inheritedMode();
  if (inherited) return inherited;
  const standards = hasStandardsDoctype();
  const meta = document.head && document.head.querySelector('meta[http-equiv="x-ua-compatible" i]');
  return (meta && wishedMode(meta.content, standards)) || (standards ? NEWEST_MODE : 5);
}

let settledMode;
let settledDocument;

function documentMode() {
  if (settledDocument === document && settledMode) return settledMode;
  const mode = computeMode();
  // Nothing in the head can change the mode once the body has begun.
  if (document.body) [settledMode, settledDocument] = [mode, document];
  return mode;
}

const isModern = () => documentMode() >= 9;
/** Whether attributes are properties: modes 5 and 7. */
const isAncient = () => documentMode() < 8;

const compatMode = () => (documentMode() !== 5 && hasStandardsDoctype() ? 'CSS1Compat' : 'BackCompat');
