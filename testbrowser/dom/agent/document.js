// Element searches of documents.
const nameOf = (element) => element.getAttribute('name') || '';

/** Finds by id. In modes 5 and 7 it ignores case and finds names too; the first element in the document wins. */
function elementById(id) {
  if (!isAncient()) return document.getElementById(id);
  const wanted = id.toLowerCase();
  const matches = (element) => element.id.toLowerCase() === wanted || nameOf(element).toLowerCase() === wanted;
  return Array.from(document.querySelectorAll('[id], [name]')).find(matches) || null;
}

// MSHTML ignores the name attribute of tags that HTML does not define.
const isInvented = (element) => element instanceof HTMLUnknownElement;

/** Finds by name and ignores case. Before mode 10 it finds ids too. */
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
  // A missing title is an empty text, not a null one.
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
