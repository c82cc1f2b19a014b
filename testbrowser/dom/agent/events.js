// Events that callers raise, and events that MSHTML raises later than the engine does.
/** Raises an event by its old name ("onchange"). Before mode 9 a change does not bubble. @return false if cancelled. */
function fireEvent(target, name) {
  const type = name.replace(/^on/i, '').toLowerCase();
  return target.dispatchEvent(new Event(type, { bubbles: isModern() || type !== 'change', cancelable: true }));
}
define('IHTMLElement3', { fireEvent });

// When a caller moves the focus, MSHTML runs the page's handlers after the call, as soon as its thread pumps messages.
// The engine raises the events inside focus(). They are stopped there and raised again after the call.
const FOCUS_EVENTS = ['focus', 'focusin', 'blur', 'focusout'];
const CANNOT_MOVE_FOCUS = 0x800a083e;
const laterTasks = window.scheduler;
let heldEvents = null;

function holdEvent(event) {
  if (!heldEvents) return;
  event.stopImmediatePropagation();
  const { type, target, relatedTarget, bubbles } = event;
  heldEvents.push([target, new FocusEvent(type, { relatedTarget, bubbles, composed: true, view: window })]);
}

/** The agent must listen before the page does. document.open() removes listeners, so this runs before each use. */
function listenToFocus() {
  for (const type of FOCUS_EVENTS) window.addEventListener(type, holdEvent, true);
}
listenToFocus();

function focusElement(element) {
  if (!element.focus) return;
  const canTakeIt = element.disabled !== true && element.getClientRects().length > 0;
  if (!canTakeIt && isChosen('hidden-focus', 'refused')) throw new ComError(CANNOT_MOVE_FOCUS);
  listenToFocus();
  const events = [];
  heldEvents = events;
  try {
    element.focus();
  } finally {
    heldEvents = null;
  }
  laterTasks.postTask(() => events.forEach(([target, event]) => target.dispatchEvent(event)), {
    priority: 'user-blocking',
  });
}
define('IHTMLElement2', { focus: focusElement });
