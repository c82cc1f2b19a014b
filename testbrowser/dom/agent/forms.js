// Form controls. Nothing here raises a page's events: a change by program is none to MSHTML.
const CTL_E_INVALIDPROPERTYVALUE = 0x800a017c;

defineTexts('IHTMLInputElement', 'name', 'defaultValue', 'alt', 'align', 'useMap');
defineValues('IHTMLInputElement', 'checked', 'defaultChecked', 'disabled', 'readOnly', 'indeterminate', 'type', 'form');
define('IHTMLInputElement', {
  // Types that HTML5 brought are plain text before mode 10.
  get_type: (input) => (documentMode() < 10 && isNewInputType(input.type) ? 'text' : input.type),
  get_value: (input) => textOrNull(input.value),
  put_value: putInputValue,
  get_maxLength: (input) => (input.maxLength < 0 ? 0x7fffffff : input.maxLength),
  put_maxLength(input, length) {
    input.maxLength = length;
  },
  get_size: (input) => input.size,
  put_size: putSize,
  get_src: (input) => textOrNull(input.src),
  get_status: (input) => input.checked,
  put_status(input, checked) {
    input.checked = checked;
  },
  select: (input) => input.select(),
});
defineTexts('IHTMLInputTextElement', 'name', 'defaultValue');
defineValues('IHTMLInputTextElement', 'type', 'form', 'disabled', 'readOnly');
define('IHTMLInputTextElement', {
  get_value: (input) => textOrNull(input.value),
  put_value: putInputValue,
  select: (input) => input.select(),
});

const OLD_INPUT_TYPES = new Set(
  'button checkbox file hidden image password radio reset submit text'.split(' '),
);
const isNewInputType = (type) => !OLD_INPUT_TYPES.has(type);

// The path of a file is nobody's to set but the user's.
function putInputValue(input, value) {
  if (input.type !== 'file') input.value = value;
}

function putSize(control, size) {
  if (size <= 0 && !(control instanceof HTMLSelectElement && size === 0)) {
    throw new ComError(CTL_E_INVALIDPROPERTYVALUE);
  }
  control.size = size;
}

defineTexts('IHTMLTextAreaElement', 'name', 'defaultValue');
defineValues('IHTMLTextAreaElement', 'disabled', 'readOnly', 'rows', 'cols', 'form', 'type');
define('IHTMLTextAreaElement', {
  get_value: (area) => textOrNull(isModern() ? area.value : windowsLines(area.value)),
  put_value(area, value) {
    area.value = value;
  },
  get_wrap: (area) => area.wrap || 'soft',
  select: (area) => area.select(),
});

defineTexts('IHTMLSelectElement', 'name', 'value');
defineValues('IHTMLSelectElement', 'disabled', 'multiple', 'selectedIndex', 'type', 'form', 'length', 'size');
define('IHTMLSelectElement', {
  put_size: putSize,
  get_options: (select) => select,
  item(select, name, index) {
    if (typeof name === 'string') return itemByName(select.options, name, index);
    if (name < 0) throw new ComError(E_INVALIDARG);
    return select.options[name] || null;
  },
  tags: (select, tag) => tagsIn(select.options, tag),
  add: (select, option, before) => select.add(option, before === undefined ? null : before),
  remove(select, index) {
    if (index < 0) throw new ComError(E_INVALIDARG);
    select.remove(index);
  },
});

defineTexts('IHTMLOptionElement', 'text', 'label');
defineValues('IHTMLOptionElement', 'selected', 'defaultSelected', 'index', 'form');
define('IHTMLOptionElement', {
  // Without a value attribute the value is the text only from mode 9 on.
  get_value: (option) => textOrNull(isModern() || option.hasAttribute('value') ? option.value : ''),
  put_value(option, value) {
    option.value = value;
  },
});

defineTexts('IHTMLFormElement', 'name', 'target', 'encoding');
define('IHTMLFormElement', {
  get_action: (form) => textOrNull(form.getAttribute('action')),
  put_action(form, action) {
    form.action = action;
  },
  get_method: (form) => form.method,
  put_method(form, method) {
    if (!/^(get|post)$/i.test(method)) throw new ComError(E_INVALIDARG);
    form.method = method;
  },
  get_elements: (form) => (isModern() ? new UnwatchedCollection(() => form.elements) : form),
  get_length: (form) => form.length,
  item: (form, name, index) => item(form.elements, name, index),
  tags: (form, tag) => tagsIn(form.elements, tag),
  // A control named "submit" hides the method.
  submit: (form) => HTMLFormElement.prototype.submit.call(form),
  reset: (form) => HTMLFormElement.prototype.reset.call(form),
});

defineTexts('IHTMLButtonElement', 'name', 'value');
defineValues('IHTMLButtonElement', 'disabled', 'type', 'form');
defineAddresses('IHTMLAnchorElement', 'href');
defineTexts('IHTMLAnchorElement', 'target', 'name', 'rel', 'search', 'hash', 'host', 'hostname', 'pathname');
defineTexts('IHTMLAnchorElement', 'port', 'protocol', 'accessKey');
defineAddresses('IHTMLImgElement', 'src', 'href');
defineTexts('IHTMLImgElement', 'alt', 'name', 'align', 'useMap');
defineValues('IHTMLImgElement', 'width', 'height', 'complete', 'isMap', 'border');
defineTexts('IHTMLScriptElement', 'text', 'type', 'htmlFor', 'event');
define('IHTMLScriptElement', { get_src: (script) => textOrNull(script.getAttribute('src')) });
defineTexts('IHTMLLabelElement', 'htmlFor', 'accessKey');
