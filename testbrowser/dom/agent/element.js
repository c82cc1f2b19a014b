// Elements: their texts, their place in the tree, and clicks.
const HTML_ERROR_READ_ONLY = 0x800a0258;

/** MSHTML ends lines as Windows does in the texts that it returns. */
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

/** Of SVG elements too, whose property is no text. */
const classNameOf = (element) => element.getAttribute('class') || '';

/** For a FRAME or IFRAME this is the document inside it. */
function documentOf(element) {
  const isFrame = /^I?FRAME$/.test(element.tagName);
  return isFrame && element.contentWindow ? frameReference('frameDocument', element) : element.ownerDocument;
}

/** A click on a disabled control. By default no handler runs. */
function clickDisabled(element) {
  if (isChosen('disabled-click', 'refused')) throw new ComError(E_FAIL);
  element.disabled = !isChosen('disabled-click', 'runs');
  element.click();
  element.disabled = true;
}

function click(element) {
  if (element.disabled === true) return clickDisabled(element);
  if (element.click) return element.click();
  element.dispatchEvent(new MouseEvent('click', { bubbles: true, cancelable: true, composed: true }));
  return undefined;
}

define('IHTMLElement', {
  // In MSHTML a comment has an empty id; in the engine it has none.
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
