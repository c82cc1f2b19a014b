// Where elements are, how the page is scrolled, and what it looks like.
/** A rectangle in whole client pixels, as it was when it was asked for. */
class Rectangle {
  constructor(rect) {
    for (const side of ['left', 'top', 'right', 'bottom']) this[side] = Math.round(rect[side]);
  }
}

function refuseDetached(element) {
  if (!element.isConnected) throw new ComError(E_FAIL);
}

define('IHTMLElement2', {
  getBoundingClientRect(element) {
    refuseDetached(element);
    return new Rectangle(element.getBoundingClientRect());
  },
  getClientRects: (element) => element.getClientRects(),
  get_clientLeft: (element) => (isQuirksRoot(element) ? 0 : element.clientLeft),
  get_clientTop: (element) => (isQuirksRoot(element) ? 0 : element.clientTop),
  get_currentStyle: (element) => (element.isConnected ? new CurrentStyle(element) : null),
  get_runtimeStyle: (element) => element.style,
});
defineValues('IHTMLElement2', 'clientWidth', 'clientHeight', 'scrollWidth', 'scrollHeight');
// The frame that old modes draw around a page does not show in the root's own measures in quirks mode.
const isQuirksRoot = (element) => documentMode() === 5 && element === document.documentElement;

defineValues('IHTMLElement', 'offsetLeft', 'offsetTop', 'offsetWidth', 'offsetHeight', 'offsetParent');
define('IHTMLElement', {
  scrollIntoView: (element, top) => element.scrollIntoView(top !== false),
});

defineValues('IHTMLRect', 'left', 'top', 'right', 'bottom');
define('IHTMLRectCollection', {
  get_length: (rects) => rects.length,
  item: (rects, index) => (rects[index] ? new Rectangle(rects[index]) : null),
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

/** The style in force, in the units of the style sheet where the engine still knows them. */
class CurrentStyle {
  constructor(element) {
    this.element = element;
  }
  read(property) {
    const name = property.replace(/[A-Z]/g, (letter) => `-${letter.toLowerCase()}`);
    const inline = this.element.style && this.element.style.getPropertyValue(name);
    if (inline && !/^(inherit|initial|unset|revert|var\()/.test(inline)) return inline;
    const computed = this.element.computedStyleMap().get(name);
    return computed ? String(computed) : getComputedStyle(this.element).getPropertyValue(name);
  }
}

const STYLE_NAMES = { styleFloat: 'cssFloat' };
const stylePropertyOf = (method) => STYLE_NAMES[method.slice(4)] || method.slice(4);

defineRest('IHTMLCurrentStyle', (style, method) => {
  const property = stylePropertyOf(method);
  return textVariant(style.read(property === 'cssFloat' ? 'float' : property));
});

function styleMember(style, method, value) {
  const property = stylePropertyOf(method);
  if (!/^(get|put)_/.test(method) || !(property in style)) throw new ComError(E_NOTIMPL);
  if (method.startsWith('get_')) return textVariant(style[property]);
  style[property] = typeof value === 'number' ? `${value}px` : value;
  return undefined;
}
defineRest('IHTMLStyle', styleMember);

const pixels = (text) => Math.round(parseFloat(text) || 0);
for (const side of ['Left', 'Top', 'Width', 'Height']) {
  const property = side.toLowerCase();
  define('IHTMLStyle', {
    [`get_pixel${side}`]: (style) => pixels(style[property]),
    [`put_pixel${side}`](style, value) {
      style[property] = `${value}px`;
    },
  });
}

// Modes 5 and 7 draw a frame of two pixels around the page, inside the root element: everything lies two pixels further
// right and down, for the pointer as for getBoundingClientRect. It is drawn without a colour.
const frameSheet = new CSSStyleSheet();
// What is placed absolutely must hang in the frame as well, and the root still has to fill the window.
frameSheet.replaceSync(`html {
  border: 2px solid transparent !important; position: relative; box-sizing: border-box; min-height: 100vh;
}`);

function drawFrame() {
  const sheets = document.adoptedStyleSheets.filter((sheet) => sheet !== frameSheet);
  document.adoptedStyleSheets = isAncient() && window === window.top ? [...sheets, frameSheet] : sheets;
}
document.addEventListener('readystatechange', () => document.readyState === 'interactive' && drawFrame());
