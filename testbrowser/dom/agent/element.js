// Elements: their texts, their place in the tree, and what a user's hand does to them.
const HTML_ERROR_READ_ONLY = 0x800a0258;

/** Text that MSHTML hands out ends its lines as Windows does. */
const windowsLines = (text) => text.replace(/\r?\n/g, '\r\n');

function innerTextOf(element) {
  if (isCommentElement(element)) return '';
  if (element instanceof HTMLSelectElement) return Array.from(element.options, (option) => option.text).join('');
  if (element instanceof HTMLTextAreaElement) return element.value;
  return element.innerText === undefined ? element.textContent : element.innerText;
}

function putInnerText(element, text) {
  if (element instanceof HTMLInputElement) throw new ComError(HTML_ERROR_READ_ONLY);
  if (element instanceof HTMLTextAreaElement) element.value = text;
  else if (/[\r\n]/.test(text) && element.innerText !== undefined) element.innerText = text;
  else element.textContent = text;
}

const classNameOf = (element) => (typeof element.className === 'string' ? element.className : element.getAttribute('class') || '');

/** Of a FRAME or IFRAME the document inside it. */
function documentOf(element) {
  const isFrame = /^I?FRAME$/.test(element.tagName);
  return isFrame && element.contentWindow ? frameReference('frameDocument', element) : element.ownerDocument;
}

function click(element) {
  if (element.click) element.click();
  else element.dispatchEvent(new MouseEvent('click', { bubbles: true, cancelable: true, composed: true }));
}

define('IHTMLElement', {
  // A comment has no id for the engine, and an empty one for MSHTML.
  get_id: (element) => textVariant(element.id || ''),
  get_tagName: tagNameOf,
  get_className: (element) => textVariant(classNameOf(element)),
  get_innerText: (element) => textVariant(windowsLines(innerTextOf(element))),
  put_innerText: putInnerText,
  get_children: childElements,
  get_all: elementsUnder,
  get_document: documentOf,
  click,
});
define('IHTMLElement2', { getElementsByTagName: elementsByTag });
