// Places, sizes and styles of elements.
/** A rectangle in whole client pixels at the time of the call. */
class Rectangle {
  constructor(rect) {
    for (const side of ['left', 'top', 'right', 'bottom']) this[side] = Math.round(rect[side]);
  }
}

function clientRectangle(element) {
  if (!element.isConnected) throw new ComError(E_FAIL);
  return new Rectangle(element.getBoundingClientRect());
}

// In quirks mode the root element does not report the border that is drawn around the page.
const isQuirksRoot = (element) => documentMode() === 5 && element === document.documentElement;

define('IHTMLElement2', {
  getBoundingClientRect: clientRectangle,
  get_clientLeft: (element) => (isQuirksRoot(element) ? 0 : element.clientLeft),
  get_clientTop: (element) => (isQuirksRoot(element) ? 0 : element.clientTop),
  get_currentStyle(element) {
    if (element.isConnected) return new CurrentStyle(element);
    if (isChosen('detached-style', 'refused')) throw new ComError(E_FAIL);
    return null;
  },
});

define('Agent', {
  contentOrigin(self, number) {
    const frame = held.get(number);
    const rect = frame.getBoundingClientRect();
    const style = getComputedStyle(frame);
    const x = rect.left + frame.clientLeft + parseFloat(style.paddingLeft);
    const y = rect.top + frame.clientTop + parseFloat(style.paddingTop);
    return new Encoded({ x: Math.round(x), y: Math.round(y) });
  },
});

/** The specificity of a selector: ids, then classes, attributes and pseudo-classes, then tags. */
function weightOf(selector) {
  const count = (pattern) => (selector.match(pattern) || []).length;
  const tags = count(/(^|[\s>+~])[a-z]/gi);
  return count(/#[\w-]/g) * 1e6 + count(/\.[\w-]|\[|(?<!:):(?!:)/g) * 1e3 + tags;
}

/** A comma inside brackets separates nothing, so such a rule counts as one selector. */
const selectorsOf = ({ selectorText }) => (/[([]/.test(selectorText) ? [selectorText] : selectorText.split(','));

/** The style rules whose media and feature conditions hold, in order. */
function* rulesIn(list) {
  for (const rule of list) {
    if (rule instanceof CSSStyleRule) yield rule;
    const isShown = rule instanceof CSSMediaRule && matchMedia(rule.conditionText).matches;
    if (isShown || rule instanceof CSSSupportsRule) yield* rulesIn(rule.cssRules);
  }
}

function* pageRules() {
  for (const sheet of document.styleSheets) {
    try {
      if (!sheet.disabled && matchMedia(sheet.media.mediaText).matches) yield* rulesIn(sheet.cssRules);
    } catch {
      // The rules of a sheet from another origin cannot be read.
    }
  }
}

const INLINE_WEIGHT = 1e9;
const IMPORTANT_WEIGHT = 1e10;

/** The declaration that wins for a property, as the page's author wrote it; empty when there is none. */
function writtenStyle(element, name) {
  let best = { weight: -1, text: '' };
  const offer = (style, weight) => {
    const text = style.getPropertyValue(name);
    const total = weight + (style.getPropertyPriority(name) ? IMPORTANT_WEIGHT : 0);
    if (text && total >= best.weight) best = { weight: total, text };
  };
  for (const rule of pageRules()) {
    const matching = selectorsOf(rule).filter((selector) => element.matches(selector));
    if (matching.length > 0) offer(rule.style, Math.max(...matching.map(weightOf)));
  }
  if (element.style) offer(element.style, INLINE_WEIGHT);
  return best.text;
}

/** An element's style in the units that the page uses. */
class CurrentStyle {
  constructor(element) {
    this.element = element;
  }
  read(property) {
    const name = property.replace(/[A-Z]/g, (letter) => `-${letter.toLowerCase()}`);
    const written = writtenStyle(this.element, name);
    if (written && !/^(inherit|initial|unset|revert)|var\(/.test(written)) return written;
    const computed = this.element.computedStyleMap().get(name);
    return computed ? String(computed) : getComputedStyle(this.element).getPropertyValue(name);
  }
}

// In modes 5 and 7 a border of two pixels surrounds the page, inside the root element. It moves everything two pixels
// to the right and down, for the pointer and for getBoundingClientRect alike. It has no colour here.
const frameSheet = new CSSStyleSheet();
// Absolutely placed elements must move too, and the root must still fill the window.
frameSheet.replaceSync(`html {
  border: 2px solid transparent !important; position: relative; box-sizing: border-box; min-height: 100vh;
}
`);

/** Whether the parent page turns the border of this frame off. */
function isBorderless() {
  try {
    return window.frameElement !== null && /^(0|no)$/i.test(window.frameElement.getAttribute('frameborder') || '');
  } catch {
    return false;
  }
}

function drawFrame() {
  const sheets = document.adoptedStyleSheets.filter((sheet) => sheet !== frameSheet);
  document.adoptedStyleSheets = isAncient() && !isBorderless() ? [...sheets, frameSheet] : sheets;
}
document.addEventListener('readystatechange', () => document.readyState === 'interactive' && drawFrame());
