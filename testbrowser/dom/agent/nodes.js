// The tree of nodes.
let lastUniqueId = 0;
const uniqueIds = new WeakMap();
function uniqueIdOf(node) {
  if (!uniqueIds.has(node)) uniqueIds.set(node, `ms__id${++lastUniqueId}`);
  return uniqueIds.get(node);
}

/** "!" for comments and what counts as one. */
function tagNameOf(element) {
  return isCommentElement(element) ? '!' : element.tagName || '';
}

/** Before mode 9 the doctype is a comment. */
const nodeTypeOf = (node) =>
  node.nodeType === Node.DOCUMENT_TYPE_NODE && !isModern() ? Node.COMMENT_NODE : node.nodeType;

define('IHTMLDOMNode', {
  get_nodeType: nodeTypeOf,
  get_nodeName: (node) => (nodeTypeOf(node) === Node.COMMENT_NODE ? '#comment' : node.nodeName),
  get_nodeValue(node) {
    return node.nodeValue === null ? null : textVariant(node.nodeValue);
  },
  put_nodeValue(node, value) {
    node.nodeValue = value;
  },
  get_parentNode: (node) => node.parentNode,
  hasChildNodes: (node) => node.hasChildNodes(),
  get_childNodes: (node) => node.childNodes,
  get_attributes: (node) => node.attributes,
  get_firstChild: (node) => node.firstChild,
  get_lastChild: (node) => node.lastChild,
  get_previousSibling: (node) => node.previousSibling,
  get_nextSibling: (node) => node.nextSibling,
  appendChild: (node, child) => node.appendChild(child),
  insertBefore: (node, child, before) => node.insertBefore(child, before || null),
  removeChild: (node, child) => node.removeChild(child),
  replaceChild: (node, child, old) => node.replaceChild(child, old),
  cloneNode: (node, deep) => node.cloneNode(deep),
  removeNode(node, deep) {
    if (!deep) node.replaceWith(...node.childNodes);
    else node.remove();
    return node;
  },
  swapNode(node, other) {
    const place = document.createComment('');
    node.replaceWith(place);
    other.replaceWith(node);
    place.replaceWith(other);
    return node;
  },
  replaceNode(node, other) {
    node.replaceWith(other);
    return node;
  },
});
define('IHTMLDOMNode2', { get_ownerDocument: (node) => node.ownerDocument });

define('IHTMLDOMTextNode', {
  get_data: (text) => textOrNull(text.data),
  put_data(text, data) {
    text.data = data;
  },
  get_length: (text) => text.length,
  toString: () => '[object]',
  splitText: (text, offset) => text.splitText(offset),
});
define('IHTMLCommentElement', {
  get_text: (comment) => (comment.nodeType === Node.COMMENT_NODE ? `<!--${comment.data}-->` : null),
});
define('IHTMLUniqueName', {
  get_uniqueNumber: (element) => Number(uniqueIdOf(element).slice('ms__id'.length)),
  get_uniqueID: uniqueIdOf,
});

define('IHTMLAttributeCollection', {
  get_length: (attributes) => attributes.length,
  item(attributes, name) {
    const found = typeof name === 'string' ? attributes.getNamedItem(name) : attributes[name];
    if (!found) throw new ComError(E_INVALIDARG);
    return found;
  },
});
define('IHTMLDOMAttribute', {
  get_nodeName: (attribute) => attribute.name,
  get_nodeValue: (attribute) => textVariant(attribute.value),
  put_nodeValue(attribute, value) {
    attribute.value = String(value);
  },
  get_specified: () => true,
});
define('IHTMLDOMAttribute2', {
  get_name: (attribute) => attribute.name,
  get_value: (attribute) => textOrNull(attribute.value),
  get_expando: () => false,
});
