// The drawing and the panel beside it.

const frames = []; // milliseconds that each drawing took: for the test
const element = id => document.getElementById(id);
let result = {},
  updateAsked = false,
  shownContent = '',
  addressTimer;

function requestUpdate() {
  if (updateAsked) return;
  updateAsked = true;
  requestAnimationFrame(update);
}

function update() {
  const began = performance.now();
  updateAsked = false;
  if (!operation().isTable) {
    try {
      drawAll();
    } catch (error) {
      fail(error);
    }
  }
  frames.push(performance.now() - began);
  if (frames.length > 600) frames.shift();
  writeAddress();
}

/** Says that there is no answer; a library that has ended, for want of memory, begins anew. */
async function fail(error) {
  result = null;
  shownContent = '';
  element('numbers').replaceChildren(text('dt', `No answer: ${error.message}`, {className: 'wide'}));
  if (error instanceof WebAssembly.RuntimeError) wasm = await start(wasmBytes);
}

function drawAll() {
  calls = [];
  const curve = state.a[0];
  for (const at of curve ? [state.from, state.to, ...(state.marks ?? [])] : []) {
    if (at[0] >= curve.segments.length) at.splice(0, 2, curve.segments.length, 0);
  }
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

function handlesOf() {
  const handles = [],
    touched = shape => {
      state.names[shape] = '';
    };
  for (const shape of operation().needs) {
    if (shape === 'stroke') {
      const n = state.stroke.length,
        count = Math.min(n, 12);
      for (let k = 0; k < count; ++k) {
        const i = count > 1 ? Math.round((k * (n - 1)) / (count - 1)) : 0;
        handles.push({
          at: state.stroke[i],
          label: `Sample ${i + 1} of ${n}`,
          looks: 'dot',
          colour: 'soft',
          move(p) {
            pull(state.stroke, i, p, reachOfPull());
            touched(shape);
          },
        });
      }
      continue;
    }
    const colour = shape === 'b' ? 'other' : operation().needs.length > 1 ? 'accurate' : 'ink';
    state[shape].forEach((curve, c) => {
      if (c > 0 && state.op !== 'weld') return;
      for (const point of controlPoints(curve)) {
        handles.push({
          at: point.at,
          looks: point.kind + (curve.segments.length > 12 ? ' small' : ''),
          colour,
          point,
          curve,
          label: `Curve ${shape.toUpperCase()}, segment ${point.segment + 1}, ${point.kind === 'joint' ? 'joint' : 'handle'}`,
          move(p) {
            point.move(p);
            touched(shape);
          },
        });
      }
    });
  }
  if (operation().point) {
    handles.push({
      at: state.p,
      label: 'Point',
      looks: 'mark',
      colour: 'mark',
      move(p) {
        state.p = p;
      },
    });
  }
  return handles.concat(operation().hasMarks ? markHandles(state) : [], operation().handles?.(state) ?? []);
}

/** The lines from joints to their handles, where there are few enough to tell them apart. */
function drawArms(handles) {
  for (const {point, curve} of handles) {
    if (point?.kind !== 'handle' || curve.segments.length > 40) continue;
    const s = curve.segments[point.segment],
      i = point.index === 1 ? 0 : 6;
    stage.line([point.at, [s[i], s[i + 1]]], colours.line, 1.5);
  }
}

const reachOfPull = () => 70 / stage.scale;

function seeAll() {
  const points = operation().needs.flatMap(shape =>
    shape === 'stroke' ? state.stroke : state[shape].flatMap(corners),
  );
  if (operation().point) points.push(state.p);
  const [x0, y0, x1, y1] = boxOf(points);
  const margin =
    state.op === 'offset'
      ? state.values.distance
      : state.op === 'cut' || state.op === 'copy'
        ? 0.06 * (x1 - x0)
        : 0;
  stage.isZoomed = false;
  stage.box = x0 <= x1 ? [x0 - margin, y0 - margin, x1 + margin, y1 + margin] : [0, 0, 1000, 1000];
  requestUpdate();
}

const text = (tag, words, props = {}) =>
  Object.assign(document.createElement(tag), {textContent: words}, props);

function showPanel() {
  element('operations').replaceChildren(
    ...Object.entries(operations).map(([name, each]) => {
      const link = text('a', each.title, {href: `#op=${name}`});
      if (name === state.op) link.setAttribute('aria-current', 'page');
      return link;
    }),
  );
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
  element('samples').replaceChildren(
    text('option', 'Load', {value: ''}),
    ...Object.keys(isStroke ? strokes : outlines).map(name => text('option', name, {value: name})),
  );
  element('targets').replaceChildren(
    ...(operation().needs.length < 2
      ? []
      : operation().needs.map(shape => {
          const button = text('button', shape.toUpperCase(), {
            onclick() {
              state.target = shape;
              showTools();
            },
          });
          button.dataset.shape = shape;
          button.setAttribute('aria-label', `Curve ${shape.toUpperCase()} is drawn, loaded or pasted`);
          return button;
        })),
  );
  if (isTable) showRecorded();
  showTools();
}

function showTools() {
  for (const tool of ['move', 'draw']) element(tool).setAttribute('aria-pressed', state.tool === tool);
  for (const button of element('targets').children)
    button.setAttribute('aria-pressed', button.dataset.shape === state.target);
  element('stage').classList.toggle('drawing', state.tool === 'draw');
}

/** A slider with a number beside it, a box to tick, or buttons of which one is pressed. */
function control({key, label, min, max, step, isLog, isFlag, names}) {
  const holder = text('div', '', {className: 'control'}),
    id = `control-${key}`;
  const set = value => {
    state.values[key] = value;
    requestUpdate();
  };
  if (isFlag) {
    const row = holder.appendChild(text('label', '', {className: 'check'}));
    row.append(
      Object.assign(document.createElement('input'), {
        type: 'checkbox',
        id,
        checked: state.values[key],
        onchange(event) {
          set(event.target.checked);
        },
      }),
      label,
    );
    return holder;
  }
  if (names) {
    const group = holder.appendChild(text('fieldset', '', {className: 'choice'}));
    group.append(
      text('legend', label),
      ...names.map((name, i) =>
        text('button', name, {
          type: 'button',
          onclick() {
            set(i);
            [...group.querySelectorAll('button')].forEach((each, k) =>
              each.setAttribute('aria-pressed', k === i),
            );
          },
        }),
      ),
    );
    [...group.querySelectorAll('button')].forEach((each, k) =>
      each.setAttribute('aria-pressed', k === state.values[key]),
    );
    return holder;
  }
  const toSlider = x => (isLog ? (Math.log(x / min) / Math.log(max / min)) * 1000 : x);
  const fromSlider = y => (isLog ? Number((min * (max / min) ** (y / 1000)).toPrecision(3)) : y);
  const number = Object.assign(document.createElement('input'), {
    type: 'number',
    id,
    min: 0,
    step: 'any',
    value: state.values[key],
  });
  const slider = Object.assign(document.createElement('input'), {
    type: 'range',
    min: isLog ? 0 : min,
    max: isLog ? 1000 : max,
    step: isLog ? 1 : step,
  });
  slider.value = toSlider(state.values[key]);
  slider.setAttribute('aria-label', label);
  slider.oninput = () => {
    number.value = fromSlider(Number(slider.value));
    set(Number(number.value));
  };
  number.oninput = () => {
    if (number.value !== '' && number.valueAsNumber >= 0) {
      slider.value = toSlider(number.valueAsNumber);
      set(number.valueAsNumber);
    }
  };
  const row = holder.appendChild(text('label', label, {htmlFor: id}));
  row.append(number);
  holder.append(slider);
  return holder;
}

/** A value of the library carries the place where it was found, so that it can be checked. */
function shownValue(value) {
  if (Array.isArray(value)) {
    // positions
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
  const told = operation().tell(state, result),
    line = operation().code(state).line,
    content = JSON.stringify([told, line]);
  if (content === shownContent) return; // most frames of a drag wait for an answer
  shownContent = content;
  const rows = told.map(([word, value, looks]) => {
    const dd = text('dd', '', {className: looks === 'wide' ? 'wide' : ''});
    dd.append(...shownValue(value));
    return [text('dt', word, {className: looks ?? ''}), dd];
  });
  element('numbers').replaceChildren(...rows.flat());
  element('code').textContent = line;
  element('canvas').setAttribute('aria-label', `Drawing: ${operation().title}`);
}
