// getAttribute and its like. In modes 5 and 7 attributes are the element's properties, in mode 8 half so, from mode 9
// on they are what the source says.
const FLAG_CASE_SENSITIVE = 1;
const FLAG_LITERAL = 2;

// What scripts and callers set in the old modes under names that are no properties: values of any type.
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

// "class" and "for" are words of the language, so the properties have other names and the attributes none.
const HIDDEN_NAMES = new Set(['class', 'for']);

function propertyName(element, name, flags) {
  if (HIDDEN_NAMES.has(name.toLowerCase())) return null;
  if (name in element) return name;
  return flags & FLAG_CASE_SENSITIVE ? null : findName(element, name);
}

const isEventName = (name) => /^on[a-z]/i.test(name);

const isMeasure = (element, name) => /^(width|height)$/.test(name) && /^\d+$/.test(element.getAttribute(name));

function propertyValue(element, name) {
  // A picture that is not loaded yet has the size that the page wrote.
  const value = isMeasure(element, name) ? Number(element.getAttribute(name)) : element[name];
  if (name === 'maxLength' && value < 0) return 0x7fffffff;
  if (isEventName(name)) return value;
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
  return HIDDEN_NAMES.has(name.toLowerCase()) ? null : literalText(element, name);
}

/** The value as the source spells it, as text; also of a value set as null. */
function literalAttribute(element, name, flags) {
  const expando = expandoName(element, name, flags);
  if (expandosOf(element).has(expando)) return String(expandosOf(element).get(expando));
  if (HIDDEN_NAMES.has(name.toLowerCase())) return null;
  const source = name.toLowerCase() === 'classname' ? 'class' : name;
  if (element.hasAttribute(source)) return literalText(element, source);
  const value = ancientAttribute(element, name, flags);
  return value === null || value instanceof Encoded || typeof value === 'object' ? value : String(value);
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
  if (!HIDDEN_NAMES.has(name.toLowerCase()) && typeof value !== 'object') element.setAttribute(name, String(value));
}

function setModeEightAttribute(element, name, value) {
  if (name === 'value' && element instanceof HTMLInputElement) element.value = value;
  else if (isBooleanAttribute(element, name)) element[name] = Boolean(value);
  else if (value !== null && typeof value === 'object') expandosOf(element).set(name, value);
  else element.setAttribute(name, String(value));
}

function setAttribute(element, name, value, flags) {
  if (isModern()) element.setAttribute(name, String(value));
  else if (documentMode() === 8) setModeEightAttribute(element, name, value);
  else setAncientAttribute(element, name, value, flags);
}

function removeAttribute(element, name, flags) {
  const expando = expandoName(element, name, flags);
  const removed = expandosOf(element).delete(expando);
  const source = isAncient() && name.toLowerCase() === 'classname' ? 'class' : name;
  const had = element.hasAttribute(source);
  element.removeAttribute(source);
  return removed || had;
}

define('IHTMLElement', { getAttribute, setAttribute, removeAttribute });
define('IHTMLElement5', {
  getAttribute: (element, name) => getAttribute(element, name, 0),
  setAttribute: (element, name, value) => setAttribute(element, name, value, 0),
  removeAttribute: (element, name) => removeAttribute(element, name, 0),
  hasAttribute: (element, name) => element.hasAttribute(name),
});
