// Values as JSON. Objects are references, from which the browser process makes COM objects.
const classOf = (object) => Object.prototype.toString.call(object).slice(8, -1);

function isWindow(object) {
  try {
    return object.window === object;
  } catch {
    return false;
  }
}

const isNode = (object) => typeof object.nodeType === 'number' && typeof object.nodeName === 'string';

function encode(value) {
  if (value === undefined || value === null) return value;
  if (value instanceof Encoded) return value.json;
  if (typeof value === 'number') return Number.isFinite(value) ? value : { $: 'number', v: String(value) };
  if (typeof value === 'string' || typeof value === 'boolean') return value;
  if (typeof value === 'bigint' || typeof value === 'symbol') return String(value);
  if (isWindow(value)) return windowReference(value);
  return isNode(value) ? nodeReference(value) : ownReference(value);
}

function ownReference(object) {
  return { $: 'object', t: token, o: numberOf(object), k: kindOf(object) };
}

/** The agent of another document; undefined when scripts here have no access to it. */
function agentOf(otherWindow) {
  try {
    return otherWindow ? otherWindow[AGENT] : undefined;
  } catch {
    return undefined;
  }
}

function nodeReference(node) {
  const isDocument = node.nodeType === Node.DOCUMENT_NODE;
  const agent = agentOf((isDocument ? node : node.ownerDocument).defaultView);
  if (!agent || agent.token === token) return isDocument && agent ? { $: 'document', t: token } : ownReference(node);
  return isDocument ? { $: 'document', t: agent.token } : agent.reference(node);
}

function windowReference(other) {
  const agent = agentOf(other);
  if (agent) return { $: 'window', t: agent.token };
  const element = frameElements().find((frame) => frame.contentWindow === other);
  return element ? frameReference('frame', element).json : null;
}

/** The window ("frame") or document ("frameDocument") in a FRAME or IFRAME, of whatever origin. */
function frameReference(what, element) {
  return new Encoded({ $: what, t: token, o: numberOf(element) });
}

const KINDS = {
  HTMLCollection: 'collection',
  HTMLAllCollection: 'collection',
  HTMLOptionsCollection: 'collection',
  Attr: 'attribute',
  CSSStyleDeclaration: 'style',
};

/** Which COM interfaces an object gets, by the names of object_kind.cpp. */
function kindOf(object) {
  if (object instanceof Collection) return 'collection';
  if (object instanceof Rectangle) return 'rect';
  if (object instanceof CurrentStyle) return 'currentStyle';
  if (object instanceof UnsetAttribute) return 'attribute';
  if (object instanceof Event) return 'event';
  if (object instanceof HTMLElement) return `element:${object.tagName}`;
  if (object.nodeType === Node.ELEMENT_NODE) return 'element';
  return isNode(object) && isCommentElement(object) ? 'comment' : KINDS[classOf(object)] || 'object';
}

/** Every window to which scripts here have access, from the outermost on. */
function* reachableWindows(from = outermostWindow()) {
  yield from;
  for (let i = 0; i < from.length; ++i) {
    if (agentOf(from[i])) yield* reachableWindows(from[i]);
  }
}

function outermostWindow() {
  let outermost = window;
  while (outermost.parent !== outermost && agentOf(outermost.parent)) outermost = outermost.parent;
  return outermost;
}

function decode(value) {
  if (Array.isArray(value)) return value.map(decode);
  if (value === null || typeof value !== 'object') return value;
  if (value.$ === 'missing') return undefined;
  for (const other of reachableWindows()) {
    const agent = agentOf(other);
    if (agent.token === value.t) return agent.object(value.o);
  }
  throw new ComError(E_INVALIDARG);
}
