// Element collections. They are live: each call reads the list anew.
/** MSHTML treats comments, and before mode 9 the doctype, as elements with the tag name "!". */
function isCommentElement(node) {
  return node.nodeType === Node.COMMENT_NODE || node.nodeType === Node.DOCUMENT_TYPE_NODE;
}

const tagNameOf = (element) => (isCommentElement(element) ? '!' : element.tagName);

/** A collection for which the engine has no list of its own. */
class Collection {
  #source;
  /** @param source returns an array. */
  constructor(source) {
    this.#source = source;
  }
  get list() {
    return this.#source();
  }
}

const listOf = (collection) => (collection instanceof Collection ? collection.list : collection);

function item(collection, position) {
  if (typeof position !== 'number') throw new ComError(E_NOTIMPL);
  const isRefused = isChosen('negative-item', 'refused') || (!isModern() && !isChosen('negative-item', 'null'));
  if (position < 0 && isRefused) throw new ComError(E_INVALIDARG);
  return listOf(collection)[position] || null;
}

function tagsIn(collection, tag) {
  if (typeof tag !== 'string') throw new ComError(DISP_E_MEMBERNOTFOUND);
  const wanted = tag.toUpperCase();
  const hasTag = (element) => tagNameOf(element).toUpperCase() === wanted;
  return new Collection(() => Array.from(listOf(collection)).filter(hasTag));
}

define('IHTMLElementCollection', {
  get_length: (collection) => listOf(collection).length,
  item,
  tags: tagsIn,
});

/** One part of the members that an enumeration walks over. */
const members = (object, start, count) => Array.from(listOf(object)).slice(start, start + count);
define('Collection', { members: (...which) => new Encoded(members(...which).map(encode)) });

/** All elements under a node in document order. Before mode 9 they include comments. */
function elementsUnder(root) {
  if (isModern()) return root.getElementsByTagName('*');
  return new Collection(() => {
    const kinds = NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_COMMENT | NodeFilter.SHOW_DOCUMENT_TYPE;
    const walker = document.createTreeWalker(root, kinds);
    const found = [];
    while (walker.nextNode()) found.push(walker.currentNode);
    return found;
  });
}

const elementsByTag = (root, tag) => (tag === '*' ? elementsUnder(root) : root.getElementsByTagName(tag));

function childElements(root) {
  if (isModern()) return root.children;
  const isChild = (node) => node.nodeType === Node.ELEMENT_NODE || isCommentElement(node);
  return new Collection(() => Array.from(root.childNodes).filter(isChild));
}
