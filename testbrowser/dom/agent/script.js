// Late-bound members that no interface declares: what scripts can see of an object.
const DISPATCH_METHOD = 1;
const DISPATCH_PROPERTYGET = 2;
const DISPATCH_PROPERTYPUT = 4 | 8;

// The window has no "eval" for callers from outside before a script engine runs, and from mode 9 on only what a
// script put there itself.
const globalEval = window.eval;
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
const isEvalVisible = () => pageHasScript() && (!isModern() || evalPutByScript);

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

/** Whether a member that is a function gets called, rather than handed out. */
function isCall(value, flags, values) {
  if (typeof value !== 'function' || !(flags & DISPATCH_METHOD)) return false;
  return values.length > 0 || !(flags & DISPATCH_PROPERTYGET) || !isModern();
}

function invokeSelf(object, flags, values) {
  if (typeof object === 'function' && flags & DISPATCH_METHOD) return callFunction(object, window, values);
  if (typeof object === 'function') return object;
  return isNode(object) || isWindow(object) ? '[object]' : String(object);
}

define('Script', {
  find(object, name, caseSensitive, ensure) {
    if (object === window && name === 'eval' && !isEvalVisible()) return null;
    if (name in object) return name;
    const found = caseSensitive ? null : findName(object, name);
    if (found !== null || !ensure) return found;
    object[name] = undefined;
    return name;
  },
  invoke(object, name, flags, ...values) {
    if (name === '') return invokeSelf(object, flags, values);
    if (flags & DISPATCH_PROPERTYPUT) {
      object[name] = values[0];
      return undefined;
    }
    const value = object[name];
    if (isCall(value, flags, values)) return callFunction(value, object, values);
    if (value === undefined && !(name in object)) throw new ComError(DISP_E_MEMBERNOTFOUND);
    return value;
  },
});
