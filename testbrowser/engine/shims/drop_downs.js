// Drop-down lists. Chromium would open a window of its own, which no picture shows and no input reaches. So the press
// that opens a list is reported instead, and the choice comes back through `choose`.
(() => {
  const engine = window[Symbol.for('testbrowser.engine')];
  let opened = null;

  const isDropDown = (target) =>
    target instanceof HTMLSelectElement && !target.multiple && target.size <= 1 && !target.disabled;

  // The rectangle in the coordinates of the page's window, through the frames around this one.
  const rectangleOf = (element) => {
    const box = element.getBoundingClientRect();
    let [x, y] = [box.left, box.top];
    try {
      for (let view = window; view.frameElement; view = view.parent) {
        const frame = view.frameElement;
        const outer = frame.getBoundingClientRect();
        const style = view.parent.getComputedStyle(frame);
        x += outer.left + frame.clientLeft + parseFloat(style.paddingLeft);
        y += outer.top + frame.clientTop + parseFloat(style.paddingTop);
      }
    } catch {
      // A frame of another origin: what lies outside of it is not to be had.
    }
    return { left: x, top: y, right: x + box.width, bottom: y + box.height };
  };

  const report = (list) => {
    opened = list;
    const options = Array.from(list.options);
    engine.report('dropDown', {
      ...rectangleOf(list),
      options: options.map((option) => option.label),
      enabled: options.map((option) => !option.disabled && !option.parentNode.disabled),
      selected: list.selectedIndex,
    });
  };

  const onPress = (event) => {
    const list = event.composedPath()[0];
    if (!event.isTrusted || event.button !== 0) return;
    // Most browsers hit the OPTION inside; the list is its parent.
    const target = list instanceof HTMLOptionElement ? list.closest('select') : list;
    if (!isDropDown(target)) return;
    event.preventDefault();
    target.focus();
    report(target);
  };
  const opensList = (event) =>
    event.type === 'keypress' ? event.key === ' '
      : event.key === 'F4' || (event.altKey && (event.key === 'ArrowDown' || event.key === 'ArrowUp'));
  const onKey = (event) => {
    if (!event.isTrusted || !isDropDown(event.target) || !opensList(event)) return;
    event.preventDefault();
    report(event.target);
  };
  window.addEventListener('mousedown', onPress, true);
  window.addEventListener('keydown', onKey, true);
  window.addEventListener('keypress', onKey, true);

  engine.choose = (index) => {
    const list = opened;
    opened = null;
    if (!list || index < 0 || index >= list.options.length || index === list.selectedIndex) return;
    list.selectedIndex = index;
    list.dispatchEvent(new Event('input', { bubbles: true }));
    list.dispatchEvent(new Event('change', { bubbles: true }));
  };
})();
