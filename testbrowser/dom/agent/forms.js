// Form controls. MSHTML raises no event when a caller changes a value.
const LATE_INPUT_TYPES =
  /^(color|date|datetime|datetime-local|email|month|number|range|search|tel|time|url|week)$/i;

define('IHTMLInputElement', {
  get_type: (input) => (documentMode() < 10 && LATE_INPUT_TYPES.test(input.type) ? 'text' : input.type),
  // Only the user may choose a file.
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

/** From mode 9 on, an option without a value attribute has its text as value. */
function optionValue(option) {
  const isText = isModern() || isChosen('option-value', 'text');
  return isText || option.hasAttribute('value') ? option.value : '';
}
define('IHTMLOptionElement', { get_value: (option) => textVariant(optionValue(option)) });
