// Elements: their names and texts, and what a user's hand does to them.
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

function refuseRoots(element) {
  if (element === document.documentElement || element === document.body) throw new ComError(HTML_ERROR_READ_ONLY);
}


/** Text properties that answer a null BSTR when they are empty. */
function defineTexts(name, ...properties) {
  for (const property of properties) {
    define(name, {
      [`get_${property}`]: (element) => textOrNull(element[property]),
      [`put_${property}`](element, text) {
        element[property] = text;
      },
    });
  }
}

/** Properties handed on as they are. */
function defineValues(name, ...properties) {
  for (const property of properties) {
    define(name, {
      [`get_${property}`]: (object) => object[property],
      [`put_${property}`](object, value) {
        object[property] = value;
      },
    });
  }
}

/** Properties that give a link's whole address, however the page wrote it. */
function defineAddresses(name, ...properties) {
  for (const property of properties) {
    define(name, {
      [`get_${property}`]: (element) => textOrNull(element[property]),
      [`put_${property}`](element, url) {
        element[property] = url;
      },
    });
  }
}

const classNameOf = (element) => (typeof element.className === 'string' ? element.className : element.getAttribute('class'));

defineTexts('IHTMLElement', 'id', 'title', 'lang');
define('IHTMLElement', {
  get_tagName: tagNameOf,
  get_className: (element) => textOrNull(classNameOf(element)),
  put_className: (element, names) => element.setAttribute('class', names),
  get_language: (element) => textOrNull(element.getAttribute('language')),
  put_language: (element, language) => element.setAttribute('language', language),
  get_innerText: (element) => textOrNull(windowsLines(innerTextOf(element))),
  put_innerText: putInnerText,
  get_innerHTML: (element) => textOrNull(element.innerHTML),
  put_innerHTML(element, html) {
    element.innerHTML = html;
  },
  get_outerText: (element) => (element.parentNode ? textOrNull(windowsLines(innerTextOf(element))) : null),
  put_outerText(element, text) {
    refuseRoots(element);
    element.outerText = text;
  },
  get_outerHTML: (element) => textOrNull(element.outerHTML),
  put_outerHTML(element, html) {
    refuseRoots(element);
    element.outerHTML = html;
  },
  insertAdjacentHTML: (element, where, html) => element.insertAdjacentHTML(where, html),
  insertAdjacentText: (element, where, text) => element.insertAdjacentText(where, text),
  get_parentElement: (element) => element.parentElement,
  get_children: (element) => childElements(element),
  get_all: (element) => allUnder(element),
  contains: (element, other) => Boolean(other) && element.contains(other),
  get_document(element) {
    const isFrame = /^I?FRAME$/.test(element.tagName);
    return isFrame && element.contentWindow ? frameReference('frameDocument', element) : element.ownerDocument;
  },
  get_sourceIndex(element) {
    return element.isConnected ? listOf(allUnder(document)).indexOf(element) : -1;
  },
  get_style: (element) => element.style,
  get_isTextEdit: (element) => /^(BODY|BUTTON|TEXTAREA|INPUT)$/.test(element.tagName),
  click(element) {
    if (element.click) element.click();
    else element.dispatchEvent(new MouseEvent('click', { bubbles: true, cancelable: true, composed: true }));
  },
  toString: (element) => (element instanceof HTMLAnchorElement ? element.href : '[object]'),
});

defineValues('IHTMLElement2', 'accessKey', 'dir', 'scrollLeft', 'scrollTop', 'tabIndex');
define('IHTMLElement2', {
  get_tagUrn: () => null,
  get_scopeName: () => 'HTML',
  get_readyState: () => 'complete',
  get_canHaveChildren: (element) => !isCommentElement(element) && !/^(BR|HR|IMG|INPUT|LINK|META)$/.test(element.tagName),
  getElementsByTagName: (element, tag) => elementsByTag(element, tag),
  focus(element) {
    if (element.focus) element.focus();
  },
  blur(element) {
    if (element.blur) element.blur();
  },
  insertAdjacentElement: (element, where, other) => element.insertAdjacentElement(where, other),
  getAdjacentText: (element) => element.textContent,
});

const isDisabledByAncestors = (element) => element.matches(':disabled') || Boolean(element.closest('fieldset[disabled]'));

define('IHTMLElement3', {
  get_disabled: (element) => (typeof element.disabled === 'boolean' ? element.disabled : element.hasAttribute('disabled')),
  put_disabled(element, disabled) {
    if (typeof element.disabled === 'boolean') element.disabled = disabled;
    else element.toggleAttribute('disabled', disabled);
  },
  get_isDisabled: isDisabledByAncestors,
  get_isMultiLine: (element) => element instanceof HTMLTextAreaElement,
  get_isContentEditable: (element) => element.isContentEditable,
  get_contentEditable: (element) => element.contentEditable,
  put_contentEditable(element, value) {
    element.contentEditable = value;
  },
  get_hideFocus: () => false,
  setActive: (element) => element.focus({ preventScroll: true }),
  fireEvent: (element, name, event) => fireEvent(element, name, event),
});

define('IHTMLElement4', {
  normalize: (element) => element.normalize(),
  getAttributeNode: (element, name) => element.getAttributeNode(name),
});
define('IHTMLElement6', {
  getElementsByClassName: (element, names) => elementsByClass(element, names),
  hasAttribute: (element, name) => element.hasAttribute(name),
  hasAttributeNS: (element, space, name) => element.hasAttributeNS(space, name),
  getAttributeNS: (element, space, name) => element.getAttributeNS(space, name),
  msMatchesSelector: (element, selector) => element.matches(selector),
});
