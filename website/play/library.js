'use strict';
// The library as WebAssembly: numbers in, numbers out. numbers.h says how curves are written.

const CALLS = [
  'path',
  'fit',
  'plainFit',
  'distanceOfSamples',
  'offset',
  'flatten',
  'contacts',
  'nearest',
  'walk',
  'copy',
  'cut',
  'reverse',
  'weld',
  'places',
  'bits',
];

let wasm, wasmBytes;
let calls = []; // what was asked for the drawing that is shown, and answered: for the test

async function unpack(text) {
  const packed = Uint8Array.from(atob(text), c => c.charCodeAt(0));
  const unpacked = new Blob([packed]).stream().pipeThrough(new DecompressionStream('gzip'));
  wasmBytes = await new Response(unpacked).arrayBuffer();
}

async function start(bytes) {
  const module = await WebAssembly.compile(bytes);
  const imports = {}; // only what a program does when it aborts
  for (const {module: from, name} of WebAssembly.Module.imports(module)) {
    (imports[from] ??= {})[name] = () => {
      if (name === 'proc_exit') throw new Error('the library has ended');
      return 0;
    };
  }
  const {exports} = await WebAssembly.instantiate(module, imports);
  exports._initialize();
  return exports;
}

function run(exports, operation, input) {
  const room = exports.playRoom(input.length);
  new Float64Array(exports.memory.buffer, room, input.length).set(input);
  const count = exports.playRun(operation);
  return new Float64Array(exports.memory.buffer, exports.playResults(), count).slice();
}

function addNumbers(to, part) {
  if (typeof part === 'number') to.push(part);
  else if (typeof part === 'boolean') to.push(part ? 1 : 0);
  else if (part.segments) addNumbers(to, [part.closed, counted(part.segments)]);
  else for (const each of part) addNumbers(to, each);
}

/** A list with its length before it. */
function counted(list) {
  return [list.length, list];
}

/** Calls an operation of the library. The parts are numbers, flags, curves, or lists of these. */
function call(name, ...parts) {
  const input = [];
  addNumbers(input, parts);
  const operation = CALLS.indexOf(name);
  return answered({operation, input, output: run(wasm, operation, input)});
}

function answered(asked) {
  calls.push(asked);
  return new Answer(asked.output, calls.length - 1);
}

/** Calls on another thread where there is much to do, so that the drawing follows the hand. Gives the last answer
    that has come, or null; when the one that is asked for comes, the page is drawn again. */
function callBeside(name, ...parts) {
  if (!besides[name]?.isBusy) {
    const input = [];
    addNumbers(input, parts);
    if (input.length < MUCH) return call(name, ...parts);
    (besides[name] ??= new Beside(CALLS.indexOf(name))).ask(input);
  }
  const {last} = besides[name];
  return last && answered(last);
}
const MUCH = 1500; // numbers: a fit of 750 samples takes about 2 ms
const besides = {};

class Beside {
  constructor(operation) {
    this.operation = operation;
    const text =
      [start, run].join('\n') +
      `
      let exports;
      onmessage = async ({data: {bytes, input}}) => {
        exports ??= await start(bytes);
        const began = performance.now();
        const output = run(exports, ${operation}, input);
        postMessage({output, milliseconds: performance.now() - began});
      };`;
    this.worker = new Worker(URL.createObjectURL(new Blob([text], {type: 'text/javascript'})));
    this.worker.onmessage = ({data}) => {
      this.last = {operation, input: this.asked, ...data};
      this.isBusy = false;
      requestUpdate(); // which asks once more if the question has changed
    };
  }
  ask(input) {
    if (this.asked && same(this.asked, input)) return;
    this.worker.postMessage({bytes: this.asked ? undefined : wasmBytes, input: Float64Array.from(input)});
    Object.assign(this, {asked: input, isBusy: true});
  }
}

function same(a, b) {
  return a.length === b.length && a.every((x, i) => x === b[i]);
}

/** Reads the numbers of an answer one after the other. */
class Answer {
  constructor(numbers, call) {
    Object.assign(this, {numbers, call, at: 0});
  }
  number() {
    return this.numbers[this.at++];
  }
  /** The next number, with the place where it was found, to be shown. */
  told() {
    return {value: this.number(), call: this.call, at: this.at - 1};
  }
  point() {
    return [this.number(), this.number()];
  }
  list(read) {
    return Array.from({length: this.number()}, read);
  }
  points() {
    return this.list(() => this.point());
  }
  curve() {
    const closed = this.number() !== 0;
    return {closed, segments: this.list(() => Array.from({length: 8}, () => this.number()))};
  }
  curves() {
    return this.list(() => this.curve());
  }
}

/** Reads the text of an SVG path. */
function parsePath(text) {
  const answer = call('path', counted([...text].map(c => Math.min(c.codePointAt(0), 127))));
  const fault = answer.number(),
    reason = answer.number();
  return {fault, reason, curves: answer.curves()};
}

function nearestPosition(curve, [x, y]) {
  const answer = call('nearest', x, y, curve);
  return answer.number() ? [answer.number(), answer.number()] : [0, 0];
}

/** Points at positions, and the directions there: [segment, t, x, y, dx, dy]. */
function places(curve, positions) {
  const answer = call('places', curve, counted(positions));
  return positions.map(() => Array.from({length: 6}, () => answer.number()));
}
