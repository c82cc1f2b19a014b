// Events that callers raise.
/** Raises "onchange" and its like. Before mode 9 a change does not bubble. @return false when a handler cancelled it. */
function fireEvent(target, name) {
  const type = name.replace(/^on/i, '').toLowerCase();
  return target.dispatchEvent(new Event(type, { bubbles: isModern() || type !== 'change', cancelable: true }));
}
define('IHTMLElement3', { fireEvent });
