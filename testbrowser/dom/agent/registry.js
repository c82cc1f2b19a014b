// The agent's core: numbered objects, the table of members, and the function that serves every COM call.
const AGENT = Symbol.for('testbrowser.agent');
const token = `${performance.timeOrigin}.${Math.random()}`;

const numbers = new WeakMap();
const held = new Map();
let lastNumber = 0;

/** The object's number. It stays the same while the document lives; the object is held until the caller drops it. */
function numberOf(object) {
  let number = numbers.get(object);
  if (number === undefined) numbers.set(object, (number = ++lastNumber));
  held.set(number, object);
  return number;
}

function drop(dropped) {
  if (!dropped || dropped.t !== token) return;
  for (const number of dropped.o) held.delete(number);
}

/** A failed call: an HRESULT instead of a value. */
class ComError {
  constructor(result, text = '', scode = 0) {
    Object.assign(this, { result, text, scode });
  }
}

/** A value that is already encoded as JSON. */
class Encoded {
  constructor(json) {
    this.json = json;
  }
}

const E_NOTIMPL = 0x80004001;
const E_FAIL = 0x80004005;
const E_ACCESSDENIED = 0x80070005;
const E_INVALIDARG = 0x80070057;
const DISP_E_MEMBERNOTFOUND = 0x80020003;
const DISP_E_EXCEPTION = 0x80020009;

/** Encodes a text. COM returns an empty one as a null BSTR. */
const textVariant = (text) => (text === '' ? new Encoded({ $: 'no text' }) : text);

const answers = new Map();

/** Adds the functions for an interface's methods. Their first argument is the object. */
function define(name, functions) {
  for (const [member, answer] of Object.entries(functions)) answers.set(`${name}.${member}`, answer);
}

/** Any other method is the page's own member: get_x reads the property x, put_x sets it, x calls it. */
function plainMember(object, method, values) {
  const [, access, name] = /^(?:(get|put)_)?(.+)$/.exec(method);
  if (object instanceof CurrentStyle) return textVariant(object.read(name));
  if (!(name in object)) throw new ComError(E_NOTIMPL);
  if (access === 'put') {
    object[name] = values[0];
    return undefined;
  }
  const value = access === 'get' ? object[name] : object[name](...values);
  return typeof value === 'string' ? textVariant(value) : value;
}

function answerOf(member) {
  return answers.get(member) || ((object, ...values) => plainMember(object, member.split('.')[1], values));
}

function targetOf(number) {
  if (number === 0) return window;
  if (number === -1) return document;
  if (!held.has(number)) throw new ComError(E_ACCESSDENIED);
  return held.get(number);
}

// The chosen answers to open questions about MSHTML, by the names in unknown_answers.cpp.
let chosenAnswers = {};
/** Whether this answer was chosen. A default is never named. */
const isChosen = (question, answer) => chosenAnswers[question] === answer;

function failureOf(error) {
  if (error instanceof ComError) return { hr: error.result, error: error.text, scode: error.scode };
  return { hr: E_FAIL, error: String(error) };
}

/**
 * Serves one COM call.
 * @param wanted the token of the document that is asked; empty for the current one.
 * @param chosen the answers to open questions that differ from the defaults.
 */
function call(wanted, number, member, values, dropped, chosen) {
  const answer = { t: token, m: documentMode(), s: self.origin };
  drop(dropped);
  chosenAnswers = chosen;
  try {
    if (wanted && wanted !== token) throw new ComError(E_ACCESSDENIED);
    answer.v = encode(answerOf(member)(targetOf(number), ...values.map(decode)));
  } catch (error) {
    Object.assign(answer, failureOf(error));
  }
  return answer;
}

define('Agent', { hello: () => undefined });
