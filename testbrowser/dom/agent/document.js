// Documents: how they find elements.
const nameOf = (element) => element.getAttribute('name') || '';

/** By id; in modes 5 and 7 by id or name in either case, whichever element comes first. */
function elementById(id) {
  if (!isAncient()) return document.getElementById(id);
  const wanted = id.toLowerCase();
  const matches = (element) => element.id.toLowerCase() === wanted || nameOf(element).toLowerCase() === wanted;
  return Array.from(document.querySelectorAll('[id], [name]')).find(matches) || null;
}

// Elements of tags that HTML does not know have no name for MSHTML.
const isInvented = (element) => element instanceof HTMLUnknownElement;

/** By name in either case, and before mode 10 by id too. */
function elementsByName(name) {
  const wanted = name.toLowerCase();
  const hasName = (element) => !isInvented(element) && nameOf(element).toLowerCase() === wanted;
  const hasId = (element) => documentMode() < 10 && element.id.toLowerCase() === wanted;
  const matches = (element) => hasName(element) || hasId(element);
  return new Collection(() => Array.from(document.querySelectorAll('[id], [name]')).filter(matches));
}

function elementsByClass(self, names) {
  if (!isModern() && isChosen('class-search', 'absent')) throw new ComError(E_NOTIMPL);
  return document.getElementsByClassName(names);
}

define('IHTMLDocument2', {
  get_all: () => elementsUnder(document),
  // A document without a title has an empty one, not none.
  get_title: () => document.title,
});
define('IHTMLDocument3', {
  getElementById: (self, id) => elementById(id),
  getElementsByName: (self, name) => elementsByName(name),
  getElementsByTagName: (self, tag) => elementsByTag(document, tag),
});
define('IHTMLDocument5', { get_compatMode: compatMode });
define('IHTMLDocument6', { get_documentMode: () => new Encoded({ $: 'r4', v: documentMode() }) });
define('IHTMLDocument7', { getElementsByClassName: elementsByClass });
