// Late-bound members that no interface declares: the properties that scripts see.
const DISPATCH_METHOD = 1;

// Callers see no "eval" before a script engine runs. From mode 9 on they see it only after a script assigned it. A
// chosen answer changes this.
let evalPutByScript = false;
let currentEval = globalEval;
Object.defineProperty(window, 'eval', {
  configurable: true,
  enumerable: false,
  get: () => currentEval,
  set(value) {
    currentEval = value;
    evalPutByScript = true;
  },
});

const pageHasScript = () => scriptRan || document.scripts.length > 0;

function isEvalVisible() {
  if (isChosen('eval', 'absent')) return false;
  if (isChosen('eval', 'there') || isChosen('eval', 'refused')) return true;
  return pageHasScript() && (!isModern() || evalPutByScript);
}

function* propertyNames(object) {
  for (let level = object; level; level = Object.getPrototypeOf(level)) yield* Object.getOwnPropertyNames(level);
}

function findName(object, name) {
  const wanted = name.toLowerCase();
  for (const candidate of propertyNames(object)) {
    if (candidate.toLowerCase() === wanted) return candidate;
  }
  return null;
}

function scriptError(error) {
  const codes = { SyntaxError: 0x800a03ea, TypeError: 0x800a138f, ReferenceError: 0x800a1391, RangeError: 0x800a1395 };
  const name = error && error.name;
  return new ComError(DISP_E_EXCEPTION, String((error && error.message) || error), codes[name] || 0x800a139e);
}

function callFunction(method, self, values) {
  try {
    scriptRan = true;
    return method.apply(self, values);
  } catch (error) {
    throw scriptError(error);
  }
}

/** The object as a text. */
const textOfSelf = (object) => (isNode(object) || isWindow(object) ? '[object]' : String(object));

define('Script', {
  find(object, name, caseSensitive) {
    if (object === window && name === 'eval' && !isEvalVisible()) return null;
    if (name in object) return name;
    return caseSensitive ? null : findName(object, name);
  },
  invoke(object, name, flags, ...values) {
    if (name === '') return textOfSelf(object);
    const value = object[name];
    if (value === globalEval && isChosen('eval', 'refused')) throw new ComError(E_ACCESSDENIED);
    if (typeof value === 'function' && flags & DISPATCH_METHOD) return callFunction(value, object, values);
    if (value === undefined && !(name in object)) throw new ComError(DISP_E_MEMBERNOTFOUND);
    return value;
  },
});
