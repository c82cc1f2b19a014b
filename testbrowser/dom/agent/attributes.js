// getAttribute, setAttribute and attribute nodes. In modes 5 and 7 an attribute is the element's property. In mode 8 it
// is partly so. From mode 9 on it is the text in the source.
const FLAG_CASE_SENSITIVE = 1;
const FLAG_LITERAL = 2;

// In old modes, scripts and callers can set values of any type under names that are not properties.
const expandos = new WeakMap();
function expandosOf(element) {
  if (!expandos.has(element)) expandos.set(element, new Map());
  return expandos.get(element);
}

function expandoName(element, name, flags) {
  if (flags & FLAG_CASE_SENSITIVE) return name;
  const wanted = name.toLowerCase();
  return [...expandosOf(element).keys()].find((key) => key.toLowerCase() === wanted) || name;
}

// "class" and "for" are reserved words of the script language, so their properties have other names.
const HIDDEN_NAMES = { class: 'className', for: 'htmlFor' };
const isHidden = (name) => name.toLowerCase() in HIDDEN_NAMES;
/** The name in the page's source of the attribute that a property reflects. */
function sourceName(property) {
  const behind = (name) => HIDDEN_NAMES[name].toLowerCase() === property.toLowerCase();
  return Object.keys(HIDDEN_NAMES).find(behind) || property;
}

function propertyName(element, name, flags) {
  if (isHidden(name)) return null;
  if (name in element) return name;
  return flags & FLAG_CASE_SENSITIVE ? null : findName(element, name);
}

const isMeasure = (element, name) => /^(width|height)$/.test(name) && /^\d+$/.test(element.getAttribute(name));

function propertyValue(element, name) {
  // A picture that is not loaded yet has the size written in the page.
  const value = isMeasure(element, name) ? Number(element.getAttribute(name)) : element[name];
  if (name === 'maxLength' && value < 0) return 0x7fffffff;
  return typeof value === 'string' ? textVariant(value) : value;
}

function literalText(element, name) {
  const text = element.getAttribute(name);
  return text === null ? null : textVariant(text);
}

function ancientAttribute(element, name, flags) {
  const expando = expandoName(element, name, flags);
  if (expandosOf(element).has(expando)) return expandosOf(element).get(expando);
  const property = propertyName(element, name, flags);
  if (property) return propertyValue(element, property);
  return isHidden(name) ? null : literalText(element, name);
}

/** Styles and event handlers are returned as objects, with any flags. */
const isObjectName = (name) => /^(style|on[a-z]+)$/i.test(name);

/** The value as text, as written in the source. A value that was set to null is the text "null". */
function literalAttribute(element, name, flags) {
  const expando = expandoName(element, name, flags);
  if (expandosOf(element).has(expando)) return String(expandosOf(element).get(expando));
  if (isHidden(name)) return null;
  if (isObjectName(name) && isChosen('literal-style', 'text')) return element.getAttribute(name) || textVariant('');
  if (isObjectName(name)) return ancientAttribute(element, name, flags);
  const isCurrent = name.toLowerCase() === 'value' && isChosen('literal-value', 'current');
  const source = sourceName(name);
  if (element.hasAttribute(source) && !isCurrent) return literalText(element, source);
  const value = ancientAttribute(element, name, flags);
  return value === null || value instanceof Encoded ? value : String(value);
}

const isBooleanAttribute = (element, name) => typeof element[name] === 'boolean' && name !== 'draggable';

function modeEightAttribute(element, name) {
  if (name === 'value' && element instanceof HTMLInputElement) return textVariant(element.value);
  if (isBooleanAttribute(element, name)) return String(element[name]);
  if (expandosOf(element).has(name)) return String(expandosOf(element).get(name));
  if (element.hasAttribute(name)) return literalText(element, name);
  const own = Object.prototype.hasOwnProperty.call(element, name);
  return own ? String(element[name]) : null;
}

function getAttribute(element, name, flags) {
  if (isCommentElement(element)) return null;
  if (isModern()) return literalText(element, name);
  if (documentMode() === 8) return modeEightAttribute(element, name);
  return flags & FLAG_LITERAL ? literalAttribute(element, name, flags) : ancientAttribute(element, name, flags);
}

function setAncientAttribute(element, name, value, flags) {
  const property = propertyName(element, name, flags);
  if (property && property !== 'style') {
    element[property] = value;
    return;
  }
  expandosOf(element).set(expandoName(element, name, flags), value);
  if (!isHidden(name) && typeof value !== 'object') element.setAttribute(name, String(value));
}

function setModeEightAttribute(element, name, value) {
  if (name === 'value' && element instanceof HTMLInputElement) element.value = value;
  else if (isBooleanAttribute(element, name)) element[name] = Boolean(value);
  else if (value !== null && typeof value === 'object') expandosOf(element).set(name, value);
  else element.setAttribute(name, String(value));
}

function setAttribute(element, name, value, flags) {
  const isValue = name.toLowerCase() === 'value';
  const isListValue = isValue && element instanceof HTMLSelectElement;
  const isAreaValue = isValue && element instanceof HTMLTextAreaElement;
  const isChosenValue = (...answers) => (isListValue && isChosen('select-value-attribute', answers[0]))
    || (isAreaValue && isChosen('area-value-attribute', answers[1]));
  if (isChosenValue('selects', 'shown')) element.value = value;
  else if (isChosenValue('plain', 'plain')) element.setAttribute(name, String(value));
  else if (isModern()) element.setAttribute(name, String(value));
  else if (documentMode() === 8) setModeEightAttribute(element, name, value);
  else setAncientAttribute(element, name, value, flags);
}

define('IHTMLElement', { getAttribute, setAttribute });

/** The node of an attribute that an element could have but has not: it exists in modes 5 and 7. */
class UnsetAttribute {
  constructor(nodeName) {
    Object.assign(this, { nodeName, nodeValue: null, specified: false });
  }
}

function getAttributeNode(element, name) {
  const node = element.getAttributeNode(isAncient() ? sourceName(name) : name);
  if (node || !isAncient()) return node;
  const property = propertyName(element, name, 0);
  return property && typeof element[property] !== 'function' ? new UnsetAttribute(property) : null;
}
define('IHTMLElement4', { getAttributeNode });
