// Form controls. Nothing here raises a page's events: a change by program is none to MSHTML.
define('IHTMLInputElement', {
  // The path of a file is nobody's to set but the user's.
  put_value(input, value) {
    if (input.type !== 'file') input.value = value;
  },
});

define('IHTMLTextAreaElement', {
  get_value(area) {
    const plain = isModern() && !isChosen('textarea-lines', 'windows');
    return textVariant(plain ? area.value : windowsLines(area.value));
  },
});

define('IHTMLSelectElement', {
  item(select, position) {
    if (position < 0) throw new ComError(E_INVALIDARG);
    return select.options[position] || null;
  },
});

/** Without a value attribute the value is the text only from mode 9 on. */
function optionValue(option) {
  const isText = isModern() || isChosen('option-value', 'text');
  return isText || option.hasAttribute('value') ? option.value : '';
}
define('IHTMLOptionElement', { get_value: (option) => textVariant(optionValue(option)) });
