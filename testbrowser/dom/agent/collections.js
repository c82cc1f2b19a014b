// Element collections: live, over whatever list the source gives at the moment of the call.
/** Comments, and the doctype before mode 9, are elements with the tag name "!" to MSHTML. */
function isCommentElement(node) {
  return node.nodeType === Node.COMMENT_NODE || node.nodeType === Node.DOCUMENT_TYPE_NODE;
}

// A changed page makes remembered lists void.
let pageVersion = 0;
let pageObserver;
function currentPageVersion() {
  if (!pageObserver || pageObserver.watched !== document) {
    pageObserver = new MutationObserver(() => ++pageVersion);
    pageObserver.watched = document;
    pageObserver.observe(document, { subtree: true, childList: true, attributes: true });
    ++pageVersion;
  }
  if (pageObserver.takeRecords().length > 0) ++pageVersion;
  return pageVersion;
}

class Collection {
  #source;
  #version = -1;
  #list = [];

  /** @param source gives an array or another list with length and numbered members. */
  constructor(source) {
    this.#source = source;
  }

  /** Lists of the engine keep themselves up to date; arrays are made again after a change of the page. */
  get list() {
    if (!Array.isArray(this.#list)) return this.#list;
    const version = currentPageVersion();
    if (version !== this.#version) [this.#version, this.#list] = [version, this.#source()];
    return this.#list;
  }
}

/** A collection over nodes outside the page too, whose changes nobody watches. */
class UnwatchedCollection extends Collection {
  #read;
  constructor(source) {
    super(source);
    this.#read = source;
  }
  get list() {
    return this.#read();
  }
}

const collectionUnder = (root, source) =>
  root.isConnected ? new Collection(source) : new UnwatchedCollection(source);

const listOf = (collection) => (collection instanceof Collection ? collection.list : collection);

const nameOf = (element) => (element.getAttribute && element.getAttribute('name')) || '';

function matchesName(element, name) {
  if (isModern()) return element.id === name || nameOf(element) === name;
  const wanted = name.toLowerCase();
  return (element.id || '').toLowerCase() === wanted || nameOf(element).toLowerCase() === wanted;
}

function itemByPosition(list, position) {
  if (position < 0 && !isModern()) throw new ComError(E_INVALIDARG);
  return list[position] || null;
}

function itemByName(collection, name, position) {
  const find = () => Array.from(listOf(collection)).filter((element) => matchesName(element, name));
  const found = find();
  if (typeof position === 'number' && documentMode() !== 8) return itemByPosition(found, position);
  if (found.length < 2 || documentMode() === 8) return found[0] || null;
  return new UnwatchedCollection(find);
}

function item(collection, name, position) {
  if (typeof name === 'number') return itemByPosition(listOf(collection), name);
  if (typeof name === 'string') return itemByName(collection, name, position);
  throw new ComError(E_NOTIMPL);
}

function tagsIn(collection, tag) {
  if (typeof tag !== 'string') throw new ComError(DISP_E_MEMBERNOTFOUND);
  const wanted = tag.toUpperCase();
  return new UnwatchedCollection(() =>
    Array.from(listOf(collection)).filter((element) => tagNameOf(element).toUpperCase() === wanted),
  );
}

define('IHTMLElementCollection', {
  get_length: (collection) => listOf(collection).length,
  item,
  tags: tagsIn,
  toString: () => '[object]',
});
define('IHTMLElementCollection2', { urns: () => new UnwatchedCollection(() => []) });

define('IHTMLDOMChildrenCollection', {
  get_length: (nodes) => nodes.length,
  item(nodes, position) {
    if (position < 0 || position >= nodes.length) throw new ComError(E_INVALIDARG);
    return nodes[position];
  },
});

/** What an enumeration walks over: a collection's members, a window's frames. */
const membersOf = (object) => (isWindow(object) ? frameElements() : Array.from(listOf(optionsOrSelf(object))));
const optionsOrSelf = (object) => (classOf(object) === 'HTMLSelectElement' ? object.options : object);

define('Collection', {
  count: (object) => membersOf(object).length,
  members(object, start, count) {
    const found = membersOf(object).slice(start, start + count);
    const asValue = (member) => (isWindow(object) ? frameReference('frame', member).json : encode(member));
    return new Encoded(found.map(asValue));
  },
});

/** All elements under a node in document order; before mode 9 with comments. */
function elementsUnder(root) {
  const kinds = NodeFilter.SHOW_ELEMENT | (isModern() ? 0 : NodeFilter.SHOW_COMMENT | NodeFilter.SHOW_DOCUMENT_TYPE);
  const walker = document.createTreeWalker(root, kinds);
  const found = [];
  while (walker.nextNode()) found.push(walker.currentNode);
  return found;
}

const allUnder = (root) => collectionUnder(root, () => elementsUnder(root));

function elementsByTag(root, tag) {
  return tag === '*' ? allUnder(root) : collectionUnder(root, () => root.getElementsByTagName(tag));
}

function childElements(root) {
  if (isModern()) return collectionUnder(root, () => root.children);
  return collectionUnder(root, () =>
    Array.from(root.childNodes).filter((node) => node.nodeType === Node.ELEMENT_NODE || isCommentElement(node)),
  );
}
