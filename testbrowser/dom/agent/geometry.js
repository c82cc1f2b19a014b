// Where elements are, and what the page looks like.
/** A rectangle in whole client pixels, as it was when it was asked for. */
class Rectangle {
  constructor(rect) {
    for (const side of ['left', 'top', 'right', 'bottom']) this[side] = Math.round(rect[side]);
  }
}

function clientRectangle(element) {
  if (!element.isConnected) throw new ComError(E_FAIL);
  return new Rectangle(element.getBoundingClientRect());
}

// The frame that old modes draw around a page does not show in the root's own measures in quirks mode.
const isQuirksRoot = (element) => documentMode() === 5 && element === document.documentElement;

define('IHTMLElement2', {
  getBoundingClientRect: clientRectangle,
  get_clientLeft: (element) => (isQuirksRoot(element) ? 0 : element.clientLeft),
  get_clientTop: (element) => (isQuirksRoot(element) ? 0 : element.clientTop),
  get_currentStyle: (element) => (element.isConnected ? new CurrentStyle(element) : null),
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

/** How strong a selector is: its ids, its classes and their like, its tags. */
function weightOf(selector) {
  const count = (pattern) => (selector.match(pattern) || []).length;
  const tags = count(/(^|[\s>+~])[a-z]/gi);
  return count(/#[\w-]/g) * 1e6 + count(/\.[\w-]|\[|(?<!:):(?!:)/g) * 1e3 + tags;
}

/** A comma inside brackets does not part selectors; such a rule counts as one. */
const selectorsOf = ({ selectorText }) => (/[([]/.test(selectorText) ? [selectorText] : selectorText.split(','));

/** Every style rule that applies under the window's conditions, in the order of the sheets. */
function* rulesIn(list) {
  for (const rule of list) {
    if (rule instanceof CSSStyleRule) yield rule;
    const applies = rule instanceof CSSMediaRule ? matchMedia(rule.conditionText).matches : rule instanceof CSSSupportsRule;
    if (applies) yield* rulesIn(rule.cssRules);
  }
}

function* pageRules() {
  for (const sheet of document.styleSheets) {
    try {
      if (!sheet.disabled && matchMedia(sheet.media.mediaText).matches) yield* rulesIn(sheet.cssRules);
    } catch {
      // A sheet of another origin does not show its rules.
    }
  }
}

const INLINE_WEIGHT = 1e9;
const IMPORTANT_WEIGHT = 1e10;

/** What the page's author wrote for a property, the strongest declaration; empty when nobody did. */
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

/** The style in force, in the units that the page wrote. */
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

// Modes 5 and 7 draw a frame of two pixels around the page, inside the root element: everything lies two pixels further
// right and down, for the pointer as for getBoundingClientRect. It is drawn without a colour.
const frameSheet = new CSSStyleSheet();
// What is placed absolutely must hang in the frame as well, and the root still has to fill the window. A document in a
// frame draws the frame's border itself.
frameSheet.replaceSync(`html {
  border: 2px solid transparent !important; position: relative; box-sizing: border-box; min-height: 100vh;
}
`);

/** Whether the page around wants no border around this one. */
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
