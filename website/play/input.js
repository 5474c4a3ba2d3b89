// Pointers and keys, and the buttons around the drawing.

const pointers = new Map();
let drag = null; // what the pointer that came first does: {move, end}

function placeOf(event) {
  const {left, top} = element('stage').getBoundingClientRect();
  return [event.clientX - left, event.clientY - top];
}
const reachOf = event => (event.pointerType === 'mouse' ? PICK_MOUSE : PICK_TOUCH);

function nearestSample(at, reach) {
  let best = -1,
    least = reach / stage.scale;
  const [x, y] = stage.toCurve(at);
  state.stroke.forEach((p, i) => {
    const far = Math.hypot(p[0] - x, p[1] - y);
    if (far < least) {
      least = far;
      best = i;
    }
  });
  return best;
}

/** The curve that passes a place of the screen, where there are two. */
function curveAt(at, reach) {
  if (operation().needs.length < 2) return null;
  const p = stage.toCurve(at);
  for (const shape of operation().needs) {
    for (const curve of state[shape]) {
      const [, , x, y] = places(curve, [nearestPosition(curve, p)])[0];
      if (Math.hypot(x - p[0], y - p[1]) < reach / stage.scale) return shape;
    }
  }
  return null;
}

function dragOf(event) {
  const at = placeOf(event),
    reach = reachOf(event);
  if (state.tool === 'draw') return drawing(event);
  const picked = stage.pick(at, reach);
  if (picked >= 0) {
    element('handles').children[picked].focus({preventScroll: true, focusVisible: false});
    const [x, y] = stage.toCurve(at),
      from = stage.handles[picked].at,
      off = [from[0] - x, from[1] - y];
    // The points are made anew for every drawing, in the same order.
    return {move: to => stage.handles[picked]?.move(stage.toCurve(to).map((v, i) => v + off[i]))};
  }
  if (operation().point) {
    const set = to => {
      state.p = stage.toCurve(to);
    };
    set(at);
    return {move: set};
  }
  const sample = operation().needs[0] === 'stroke' ? nearestSample(at, 1.5 * reach) : -1;
  if (sample >= 0) {
    state.names.stroke = '';
    return {move: to => pull(state.stroke, sample, stage.toCurve(to), reachOfPull())};
  }
  const shape = curveAt(at, reach);
  let last = at;
  if (shape) {
    state.names[shape] = '';
    return {
      move(to) {
        const [x, y] = stage.toCurve(to),
          [fromX, fromY] = stage.toCurve(last);
        for (const curve of state[shape]) shift(curve, x - fromX, y - fromY);
        last = to;
      },
    };
  }
  return {
    move(to) {
      stage.shift([to[0] - last[0], to[1] - last[1]]);
      last = to;
    },
  };
}

/** A stroke drawn with the pointer, which becomes the samples of a fit, or a curve fitted to them. */
function drawing(event) {
  const points = [],
    add = at => points.push(stage.toCurve(at));
  add(placeOf(event));
  return {
    move(to, moved) {
      for (const each of moved.getCoalescedEvents?.() ?? []) add(placeOf(each));
      add(to);
    },
    after() {
      stage.line(points, colours.accurate, 3);
    },
    end() {
      if (points.length < 3) return;
      state.names[state.target] = '';
      if (state.target === 'stroke') {
        state.stroke = points;
        return;
      }
      const [x0, y0] = points[0],
        [x1, y1] = points.at(-1),
        size = boxOf(points);
      const closed =
        state.op === 'weld' ||
        Math.hypot(x1 - x0, y1 - y0) < 0.08 * Math.hypot(size[2] - size[0], size[3] - size[1]);
      const answer = call('fit', 3 / stage.scale, 0, closed, counted(points));
      answer.at = 3;
      state[state.target] = [answer.curve()];
    },
  };
}

function listen() {
  const area = element('stage');
  area.addEventListener('pointerdown', event => {
    if (event.button > 0 || event.target.closest('button:not(.handle)')) return;
    event.preventDefault();
    area.setPointerCapture(event.pointerId);
    pointers.set(event.pointerId, placeOf(event));
    if (pointers.size === 1) drag = dragOf(event);
    else drag = null; // two fingers zoom
    state.moving = true;
    requestUpdate();
  });
  area.addEventListener('pointermove', event => {
    const at = placeOf(event),
      before = pointers.get(event.pointerId);
    if (!before) {
      if (event.pointerType === 'mouse') area.classList.toggle('over', stage.pick(at, PICK_MOUSE) >= 0);
      if (operation().point && event.pointerType === 'mouse') {
        state.p = stage.toCurve(at);
        requestUpdate();
      }
      return;
    }
    if (pointers.size === 2) {
      const other = [...pointers].find(([id]) => id !== event.pointerId)[1];
      const middle = [(before[0] + other[0]) / 2, (before[1] + other[1]) / 2];
      stage.zoom(
        Math.hypot(at[0] - other[0], at[1] - other[1]) /
          Math.max(Math.hypot(before[0] - other[0], before[1] - other[1]), 1),
        middle,
      );
      stage.shift([(at[0] - before[0]) / 2, (at[1] - before[1]) / 2]);
    } else drag?.move(at, event);
    pointers.set(event.pointerId, at);
    requestUpdate();
    if (drag?.after) requestAnimationFrame(() => drag?.after());
  });
  for (const name of ['pointerup', 'pointercancel']) {
    area.addEventListener(name, event => {
      if (!pointers.delete(event.pointerId)) return;
      if (name === 'pointerup') drag?.end?.();
      drag = null;
      state.moving = pointers.size > 0;
      requestUpdate();
    });
  }
  area.addEventListener(
    'wheel',
    event => {
      event.preventDefault();
      stage.zoom(Math.exp(-event.deltaY * 0.002), placeOf(event));
      requestUpdate();
    },
    {passive: false},
  );

  element('handles').addEventListener('keydown', event => {
    const handle = stage.handles[event.target.dataset.index];
    const way = {ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1]}[event.key];
    if (!handle || !way) return;
    event.preventDefault();
    if (handle.step) handle.step(way[0] - way[1] > 0, event.shiftKey);
    else {
      const size = (event.shiftKey ? 1 : 10) / stage.scale;
      handle.move([handle.at[0] + way[0] * size, handle.at[1] + way[1] * size * stage.sign()]);
    }
    requestUpdate();
  });

  for (const tool of ['move', 'draw'])
    element(tool).onclick = () => {
      state.tool = tool;
      showTools();
    };
  element('whole').onclick = seeAll;
  element('samples').onchange = event => {
    if (!event.target.value) return;
    load(state.target, event.target.value);
    stage.down = false;
    event.target.value = '';
    seeAll();
  };
  element('paste').onclick = () => {
    element('pasting').hidden = !element('pasting').hidden;
    if (!element('pasting').hidden) element('text').focus();
  };
  element('pasting').onsubmit = event => {
    event.preventDefault();
    const given = element('text').value.trim(),
      {fault, reason, curves} = parsePath(given);
    const reasons = [
      'the first command is not M',
      'an unknown command',
      'a number is missing',
      'a flag is neither 0 nor 1',
      'a number is too large',
    ];
    element('fault').textContent =
      fault >= 0
        ? `At character ${fault + 1}, "${given.slice(fault, fault + 8)}": ${reasons[reason]}.`
        : curves.length
          ? curves.length > 1 && state.op !== 'weld'
            ? `The first of ${curves.length} curves is used.`
            : ''
          : 'Nothing is drawn by this path.';
    if (fault >= 0 || !curves.length) return;
    state[state.target] = curves;
    state.names[state.target] = '';
    stage.down = true;
    if (!element('fault').textContent) element('pasting').hidden = true;
    seeAll();
  };
  const copy = async (button, words) => {
    const label = button.textContent;
    try {
      await navigator.clipboard.writeText(words);
      button.textContent = 'Copied';
    } catch {
      button.textContent = 'Not allowed here';
    }
    setTimeout(() => {
      button.textContent = label;
    }, 1200);
  };
  element('copyLine').onclick = event => copy(event.target, element('code').textContent);
  element('copyProgram').onclick = event => copy(event.target, program());
  element('copyLink').onclick = event => copy(event.target, location.href.split('#')[0] + address());
  addEventListener('hashchange', readAddress);
  addEventListener('resize', requestUpdate);
  new ResizeObserver(requestUpdate).observe(area);
  matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => {
    readColours();
    requestUpdate();
  });
}

(async () => {
  try {
    await unpack(WASM);
    wasm = await start(wasmBytes);
  } catch (error) {
    element('hint').textContent =
      `This browser cannot run the page (${error.message}). It needs WebAssembly and DecompressionStream.`;
    return;
  }
  readColours();
  readSamples();
  listen();
  readAddress();
  document.body.dataset.ready = '';
})();
