// Events raised by callers: fireEvent for every mode, createEvent and dispatchEvent from mode 9 on.
const EVENT_CLASSES = [
  [/^(click|dblclick|contextmenu|mouse\w+)$/, MouseEvent],
  [/^key(down|up|press)$/, KeyboardEvent],
  [/^(focus|blur|focusin|focusout)$/, FocusEvent],
];
const NOT_BUBBLING = /^(focus|blur|load|unload|scroll|mouseenter|mouseleave)$/;

function newEvent(type) {
  const [, Class] = EVENT_CLASSES.find(([pattern]) => pattern.test(type)) || [null, Event];
  return new Class(type, { bubbles: !NOT_BUBBLING.test(type), cancelable: true, composed: true, view: window });
}

/** Raises "onchange" and its like. @return false when a handler cancelled it. */
function fireEvent(target, name) {
  return target.dispatchEvent(newEvent(name.replace(/^on/i, '').toLowerCase()));
}

define('IDocumentEvent', { createEvent: (self, kind) => document.createEvent(kind) });
define('IEventTarget', { dispatchEvent: (target, event) => target.dispatchEvent(event) });
define('IDOMEvent', {
  initEvent: (event, type, bubbles, cancelable) => event.initEvent(type, bubbles, cancelable),
  preventDefault: (event) => event.preventDefault(),
  stopPropagation: (event) => event.stopPropagation(),
  stopImmediatePropagation: (event) => event.stopImmediatePropagation(),
});
defineValues('IDOMEvent', 'type', 'bubbles', 'cancelable', 'target', 'currentTarget', 'eventPhase', 'timeStamp');
defineValues('IDOMEvent', 'defaultPrevented', 'isTrusted', 'cancelBubble', 'srcElement');
defineValues('IHTMLEventObj', 'type', 'srcElement', 'keyCode', 'altKey', 'ctrlKey', 'shiftKey', 'x', 'y', 'clientX');
defineValues('IHTMLEventObj', 'clientY', 'offsetX', 'offsetY', 'screenX', 'screenY', 'button', 'cancelBubble', 'returnValue');

/** The handler properties (put_onclick and its like) of elements, documents and windows. */
function handlerMember(target, method, handler) {
  const [, kind, name] = /^(get|put)_(on\w+)$/.exec(method) || [];
  if (!name) throw new ComError(E_NOTIMPL);
  if (kind === 'get') return target[name] || null;
  target[name] = handler === undefined ? null : handler;
  return undefined;
}
const WITH_HANDLERS = 'Element Element2 Element3 Document2 Document3 Document4 Document7 Window2 Window3 SelectElement';
for (const name of WITH_HANDLERS.split(' ')) defineRest(`IHTML${name}`, handlerMember);
