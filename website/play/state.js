// What the page shows, and the address that holds it.

const state = {
  op: 'fit',
  values: {},
  a: [],
  b: [],
  stroke: [],
  p: [620, 560],
  from: [0, 0.3],
  to: [0, 0.8],
  target: 'a',
  tool: 'move',
  moving: false,
  names: {},
};
const operation = () => operations[state.op];

const strokes = {},
  outlines = {};
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
    const isStroke = shape === 'stroke',
      known = isStroke ? strokes : outlines;
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
  const marks = given
    .get('marks')
    ?.split(' ')
    .map(each => each.split(':').map(Number));
  state.marks = marks?.length <= LETTERS.length && marks.every(isPosition) ? marks : null;
  stage.down = given.get('y') === 'down';
  showPanel();
  seeAll();
  const view = given.get('view')?.split(' ').map(Number);
  if (view?.length === 4 && view.every(Number.isFinite) && view[0] < view[2] && view[1] < view[3])
    Object.assign(stage, {box: view, isZoomed: true});
}

const isPosition = ([segment, t]) => segment >= 0 && segment <= 1e6 && t >= 0 && t <= 1;

function address() {
  const parts = [`op=${state.op}`],
    add = (key, value) =>
      parts.push(
        `${key}=${encodeURIComponent(value).replace(/%20/g, '+').replace(/%2C/g, ',').replace(/%3A/g, ':')}`,
      );
  for (const each of operation().controls)
    if (state.values[each.key] !== each.value) add(each.key, Number(state.values[each.key]));
  for (const shape of operation().needs) {
    if (state.names[shape] && state.names[shape] === operation().start[shape]) continue;
    add(
      shape,
      state.names[shape] ||
        (shape === 'stroke'
          ? state.stroke.map(p => p.join(' ')).join(' ')
          : state[shape].map(toPath).join('')),
    );
  }
  if (operation().point) add('p', state.p.join(' '));
  if (operation().positions) for (const key of ['from', 'to']) add(key, state[key].join(':'));
  if (operation().hasMarks && state.marks) add('marks', state.marks.map(each => each.join(':')).join(' '));
  if (stage.down) add('y', 'down');
  if (stage.isZoomed) add('view', stage.box.map(x => stage.round(x)).join(' '));
  return `#${parts.join('&')}`;
}

function writeAddress() {
  clearTimeout(addressTimer);
  if (state.moving) return; // long addresses take their time
  addressTimer = setTimeout(() => {
    history.replaceState(null, '', address());
    const rows = result ? operation().tell(state, result) : [];
    element('said').textContent = rows
      .filter(row => typeof row[1] !== 'string' && !Array.isArray(row[1]))
      .slice(0, 3)
      .map(([word, value]) => `${word} ${value?.value ?? value}`)
      .join(', ');
  }, 300);
}
