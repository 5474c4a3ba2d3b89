// The page: its state, the address that holds it, the panel, and what a pointer or a key does.

const state = {op: 'fit', values: {}, a: [], b: [], stroke: [], p: [620, 560], from: [0, 0.3], to: [0, 0.8],
  target: 'a', tool: 'move', moving: false, names: {}};
const frames = [];  // milliseconds that each drawing took: for the test
const element = id => document.getElementById(id);
const operation = () => operations[state.op];
let result = {}, updateAsked = false, addressTimer;

// ---- The state and the address ------------------------------------------------------------------

const strokes = {}, outlines = {};
function readSamples() {
  for (const [name, text] of Object.entries(STROKES)) strokes[name] = () => pointsOf(text);
  strokes['5,000 samples'] = () => longStroke(5000);
  for (const [name, text] of Object.entries(SAMPLES)) outlines[name] = () => parsePath(text).curves;
  for (const [name, text] of Object.entries(OUTLINES)) outlines[name] = () => [fromNumbers(text, true)];
}

function load(shape, name) {
  if (shape === 'stroke') state.stroke = (strokes[name] ?? strokes['pen waves'])();
  else state[shape] = (outlines[name] ?? outlines.heart)();
  state.names[shape] = name;
}

function choose(op) {
  state.op = operations[op] ? op : 'fit';
  state.values = Object.fromEntries(operation().controls.map(each => [each.key, each.value]));
  state.target = operation().needs[0];
  state.tool = 'move';
}

/** Reads #op=NAME&KEY=VALUE...; what is missing or cannot be read is the operation's own. */
function readAddress() {
  const given = new URLSearchParams(location.hash.slice(1));
  choose(given.get('op'));
  for (const each of operation().controls) {
    const value = Number(given.get(each.key));
    if (!given.has(each.key) || !Number.isFinite(value)) continue;
    if (each.isFlag) state.values[each.key] = value !== 0;
    else if (each.names) state.values[each.key] = each.names[value] ? value : each.value;
    else if (value >= 0) state.values[each.key] = value;
  }
  for (const shape of operation().needs) {
    const text = given.get(shape) ?? operation().start[shape];
    const isStroke = shape === 'stroke', known = isStroke ? strokes : outlines;
    const read = known[text] ? null : isStroke ? pointsOf(text) : parsePath(text).curves;
    if (read?.length) Object.assign(state, {[shape]: read, names: {...state.names, [shape]: ''}});
    else load(shape, known[text] ? text : operation().start[shape]);
  }
  if (state.op === 'weld' && !given.has('b')) shift(state.b[0], 260, -40);
  if (state.op === 'weld' && !given.has('b')) state.names.b = '';
  state.p = pointsOf(given.get('p') ?? '620 560')[0] ?? [620, 560];
  for (const key of ['from', 'to']) {
    const share = operation().positions?.[key] * state.a[0]?.segments.length || 0;
    const [segment, t] = given.get(key)?.split(':').map(Number) ?? [Math.floor(share), share % 1];
    state[key] = isPosition([segment, t]) ? [segment, t] : [0, 0];
  }
  const marks = given.get('marks')?.split(' ').map(each => each.split(':').map(Number));
  state.marks = marks?.length <= LETTERS.length && marks.every(isPosition) ? marks : null;
  stage.down = given.get('y') === 'down';
  showPanel();
  seeAll();
}

const isPosition = ([segment, t]) => segment >= 0 && segment <= 1e6 && t >= 0 && t <= 1;

function address() {
  const parts = [`op=${state.op}`], add = (key, value) => parts.push(`${key}=${encodeURIComponent(value).replace(/%20/g, '+').replace(/%2C/g, ',').replace(/%3A/g, ':')}`);
  for (const each of operation().controls) if (state.values[each.key] !== each.value) add(each.key, Number(state.values[each.key]));
  for (const shape of operation().needs) {
    if (state.names[shape] && state.names[shape] === operation().start[shape]) continue;
    add(shape, state.names[shape] || (shape === 'stroke' ? state.stroke.map(p => p.join(' ')).join(' ') : state[shape].map(toPath).join('')));
  }
  if (operation().point) add('p', state.p.join(' '));
  if (operation().positions) for (const key of ['from', 'to']) add(key, state[key].join(':'));
  if (operation().hasMarks && state.marks) add('marks', state.marks.map(each => each.join(':')).join(' '));
  if (stage.down) add('y', 'down');
  return `#${parts.join('&')}`;
}

function writeAddress() {
  clearTimeout(addressTimer);
  if (state.moving) return;  // long addresses take their time
  addressTimer = setTimeout(() => {
    history.replaceState(null, '', address());
    element('said').textContent = operation().tell(state, result).filter(row => typeof row[1] !== 'string' && !Array.isArray(row[1]))
      .slice(0, 3).map(([word, value]) => `${word} ${value?.value ?? value}`).join(', ');
  }, 300);
}

// ---- Drawing and the panel ----------------------------------------------------------------------

function requestUpdate() {
  if (updateAsked) return;
  updateAsked = true;
  requestAnimationFrame(update);
}

function update() {
  const began = performance.now();
  updateAsked = false;
  if (!operation().isTable) {
    calls = [];
    const curve = state.a[0];
    if (curve) for (const at of [state.from, state.to, ...state.marks ?? []]) if (at[0] >= curve.segments.length) at.splice(0, 2, curve.segments.length, 0);
    stage.panes = operation().panes ?? 1;
    stage.begin();
    stage.layOut();
    const handles = handlesOf();
    calls = [];
    result = operation().run(state);
    if (!operation().panes) drawArms(handles);
    operation().draw(state, result);
    stage.show(handles);
    showNumbers();
  }
  frames.push(performance.now() - began);
  if (frames.length > 600) frames.shift();
  writeAddress();
}

function handlesOf() {
  const handles = [], touched = shape => { state.names[shape] = ''; };
  for (const shape of operation().needs) {
    if (shape === 'stroke') {
      const n = state.stroke.length, count = Math.min(n, 12);
      for (let k = 0; k < count; ++k) {
        const i = count > 1 ? Math.round(k * (n - 1) / (count - 1)) : 0;
        handles.push({at: state.stroke[i], label: `Sample ${i + 1} of ${n}`, looks: 'dot', colour: 'soft',
          move(p) { pull(state.stroke, i, p, reachOfPull()); touched(shape); }});
      }
      continue;
    }
    const colour = shape === 'b' ? 'other' : operation().needs.length > 1 ? 'accurate' : 'ink';
    state[shape].forEach((curve, c) => {
      if (c > 0 && state.op !== 'weld') return;
      for (const point of controlPoints(curve)) {
        handles.push({at: point.at, looks: point.kind + (curve.segments.length > 12 ? ' small' : ''), colour, point, curve,
          label: `Curve ${shape.toUpperCase()}, segment ${point.segment + 1}, ${point.kind === 'joint' ? 'joint' : 'handle'}`,
          move(p) { point.move(p); touched(shape); }});
      }
    });
  }
  if (operation().point) {
    handles.push({at: state.p, label: 'Point', looks: 'mark', colour: 'mark', move(p) { state.p = p; }});
  }
  return handles.concat(operation().hasMarks ? markHandles(state) : [], operation().handles?.(state) ?? []);
}

/** The lines from joints to their handles, where there are few enough to tell them apart. */
function drawArms(handles) {
  for (const {point, curve} of handles) {
    if (point?.kind !== 'handle' || curve.segments.length > 40) continue;
    const s = curve.segments[point.segment], i = point.index === 1 ? 0 : 6;
    stage.line([point.at, [s[i], s[i + 1]]], colours.line, 1.5);
  }
}

const reachOfPull = () => 70 / stage.scale;

function seeAll() {
  const points = operation().needs.flatMap(shape => shape === 'stroke' ? state.stroke : state[shape].flatMap(corners));
  if (operation().point) points.push(state.p);
  const [x0, y0, x1, y1] = boxOf(points);
  const margin = state.op === 'offset' ? state.values.distance : state.op === 'cut' || state.op === 'copy' ? 0.06 * (x1 - x0) : 0;
  stage.box = x0 <= x1 ? [x0 - margin, y0 - margin, x1 + margin, y1 + margin] : [0, 0, 1000, 1000];
  requestUpdate();
}

const text = (tag, words, props = {}) => Object.assign(document.createElement(tag), {textContent: words}, props);

function showPanel() {
  element('operations').replaceChildren(...Object.entries(operations).map(([name, each]) => {
    const link = text('a', each.title, {href: `#op=${name}`});
    if (name === state.op) link.setAttribute('aria-current', 'page');
    return link;
  }));
  element('operations').querySelector('[aria-current]').scrollIntoView({block: 'nearest', inline: 'center'});
  element('title').textContent = operation().title;
  element('hint').textContent = operation().hint;
  element('controls').replaceChildren(...operation().controls.map(control));
  const isTable = operation().isTable ?? false;
  for (const id of ['stage', 'tools', 'keys']) element(id).hidden = isTable;
  element('recorded').hidden = !isTable;
  for (const each of element('panel').querySelectorAll('h3, #numbers, #code, .row')) each.hidden = isTable;
  element('pasting').hidden = true;
  element('paste').hidden = operation().needs[0] === 'stroke';
  const isStroke = operation().needs[0] === 'stroke';
  element('samples').replaceChildren(text('option', 'Load', {value: ''}),
    ...Object.keys(isStroke ? strokes : outlines).map(name => text('option', name, {value: name})));
  element('targets').replaceChildren(...(operation().needs.length < 2 ? [] : operation().needs.map(shape => {
    const button = text('button', shape.toUpperCase(), {onclick() { state.target = shape; showTools(); }});
    button.dataset.shape = shape;
    button.setAttribute('aria-label', `Curve ${shape.toUpperCase()} is drawn, loaded or pasted`);
    return button;
  })));
  if (isTable) showRecorded();
  showTools();
}

function showTools() {
  for (const tool of ['move', 'draw']) element(tool).setAttribute('aria-pressed', state.tool === tool);
  for (const button of element('targets').children) button.setAttribute('aria-pressed', button.dataset.shape === state.target);
  element('stage').classList.toggle('drawing', state.tool === 'draw');
}

/** A slider with a number beside it, a box to tick, or buttons of which one is pressed. */
function control({key, label, min, max, step, isLog, isFlag, names}) {
  const holder = text('div', '', {className: 'control'}), id = `control-${key}`;
  const set = value => { state.values[key] = value; requestUpdate(); };
  if (isFlag) {
    const row = holder.appendChild(text('label', '', {className: 'check'}));
    row.append(Object.assign(document.createElement('input'), {type: 'checkbox', id, checked: state.values[key],
      onchange(event) { set(event.target.checked); }}), label);
    return holder;
  }
  if (names) {
    const group = holder.appendChild(text('fieldset', '', {className: 'choice'}));
    group.append(text('legend', label), ...names.map((name, i) => text('button', name, {type: 'button',
      onclick() { set(i); [...group.querySelectorAll('button')].forEach((each, k) => each.setAttribute('aria-pressed', k === i)); }})));
    [...group.querySelectorAll('button')].forEach((each, k) => each.setAttribute('aria-pressed', k === state.values[key]));
    return holder;
  }
  const toSlider = x => isLog ? Math.log(x / min) / Math.log(max / min) * 1000 : x;
  const fromSlider = y => isLog ? Number((min * (max / min) ** (y / 1000)).toPrecision(3)) : y;
  const number = Object.assign(document.createElement('input'), {type: 'number', id, min: 0, step: 'any', value: state.values[key]});
  const slider = Object.assign(document.createElement('input'), {type: 'range', min: isLog ? 0 : min, max: isLog ? 1000 : max, step: isLog ? 1 : step});
  slider.value = toSlider(state.values[key]);
  slider.setAttribute('aria-label', label);
  slider.oninput = () => { number.value = fromSlider(Number(slider.value)); set(Number(number.value)); };
  number.oninput = () => { if (number.value !== '' && number.valueAsNumber >= 0) { slider.value = toSlider(number.valueAsNumber); set(number.valueAsNumber); } };
  const row = holder.appendChild(text('label', label, {htmlFor: id}));
  row.append(number);
  holder.append(slider);
  return holder;
}

/** A value of the library carries the place where it was found, so that it can be checked. */
function shownValue(value) {
  if (Array.isArray(value)) {  // positions
    return value.map(([segment, t]) => {
      const place = text('span', '(', {className: 'place'});
      place.append(...shownValue(segment), ', ', ...shownValue(t), ')');
      return place;
    });
  }
  if (typeof value !== 'object') return [String(value ?? '...')];
  const output = text('output', String(value.value));
  Object.assign(output.dataset, {call: value.call, at: value.at});
  return [output];
}

function showNumbers() {
  const rows = operation().tell(state, result).map(([word, value, looks]) => {
    const dd = text('dd', '', {className: looks === 'wide' ? 'wide' : ''});
    dd.append(...shownValue(value));
    return [text('dt', word, {className: looks ?? ''}), dd];
  });
  element('numbers').replaceChildren(...rows.flat());
  element('code').textContent = operation().code(state).line;
  element('canvas').setAttribute('aria-label', `Drawing: ${operation().title}`);
}

/** A program that asks the same of the same input. */
function program() {
  const {line, print} = operation().code(state);
  const curve = (name, list) => `  crv::Curve const ${name} = crv::parsePath("${toPath(list[0])}").curves.at(0);\n`;
  const needs = operation().needs;
  let input = '';
  if (state.op === 'weld') for (const shape of needs) input += `  std::vector<crv::Curve> const ${shape} = crv::parsePath("${state[shape].map(toPath).join('')}").curves;\n`;
  else if (needs[0] === 'stroke') input = `  std::vector<crv::Point> const samples{${state.stroke.map(([x, y]) => `{${x}, ${y}}`).join(', ')}};\n`;
  else needs.forEach((shape, i) => { input += curve(i ? 'other' : 'curve', state[shape]); });
  if (line.includes('mark')) input += `  crv::Position const mark(${marksOf(state)[0].join(', ')});\n`;
  return `#include <crv/crv.h>\n\n#include <cstdio>\n#include <vector>\n\nint main() {\n${input}` +
    `${line.replace(/^/gm, '  ')}\n${print.map(each => `  std::printf("%.17g\\n", ${each});\n`).join('')}}\n`;
}

// ---- The recorded hashes ------------------------------------------------------------------------

function showRecorded() {
  const button = text('button', 'Run them in this browser');
  const table = document.createElement('table');
  table.append(text('caption', 'Hashes over the bits of answers', {className: 'hidden'}));
  table.createTHead().insertRow().append(...['Operation', 'Recorded, here', ''].map(each => text('th', each, {scope: 'col'})));
  const body = table.createTBody();
  for (const [name, , questions, hash] of RECORDED) {
    const row = body.insertRow();
    row.append(text('td', `${name}, ${questions} times`), text('td', ''), text('td', ''));
    row.cells[1].append(text('code', hash));
  }
  const verdict = text('p', '', {id: 'verdict', role: 'status'});
  element('recorded').replaceChildren(button, verdict, table);
  button.onclick = async () => {
    let equal = 0;
    for (const [i, [, which, questions, hash]] of RECORDED.entries()) {
      await new Promise(resolve => setTimeout(resolve));
      const [high, low] = call('bits', which, questions).numbers;
      const here = (BigInt(high) << 32n | BigInt(low)).toString(16).padStart(16, '0'), row = body.rows[i];
      row.cells[1].replaceChildren(text('code', hash), text('code', here));
      row.cells[2].replaceChildren(text('span', here === hash ? 'equal' : 'not equal', {className: here === hash ? 'equal' : 'unequal'}));
      equal += here === hash;
    }
    verdict.textContent = equal === RECORDED.length ? 'All are equal: this browser computes what a program computes.'
      : `${RECORDED.length - equal} of ${RECORDED.length} are not equal.`;
  };
}
