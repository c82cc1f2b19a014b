// The agent's core: objects under numbers, values on their way in and out, and the one entry that COM calls take.
const AGENT = Symbol.for('testbrowser.agent');
const token = `${performance.timeOrigin}.${Math.random()}`;

const numbers = new WeakMap();
const held = new Map();
let lastNumber = 0;

/** The object's number, the same for as long as the document lives; it is held until the other side drops it. */
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

/** A value that goes out as the JSON given, e.g. one of a type of its own. */
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

/** A text; COM hands out the empty one as a null BSTR. */
const textVariant = (text) => (text === '' ? new Encoded({ $: 'no text' }) : text);

const answers = new Map();

/** Functions that answer an interface's methods; the first argument is the object asked. */
function define(name, functions) {
  for (const [member, answer] of Object.entries(functions)) answers.set(`${name}.${member}`, answer);
}

/** Every other method is the page's own member: get_x reads the property x, put_x sets it, x calls x. */
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

// How to answer where nobody knows how MSHTML does, by the names of unknown_answers.cpp.
let chosenAnswers = {};
/** Whether a question is to be answered so; each question's default is the answer that no call names. */
const isChosen = (question, answer) => chosenAnswers[question] === answer;

function failureOf(error) {
  if (error instanceof ComError) return { hr: error.result, error: error.text, scode: error.scode };
  return { hr: E_FAIL, error: String(error) };
}

/**
 * One COM call.
 * @param wanted the document asked, by its token; empty for whichever is here now.
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
