// The operations: what each is asked, draws and says, and the C++ that does the same.
//
// run() calls the library and returns what draw, tell and code need. tell() gives rows of a word and a value, where
// values that the library returned carry the place at which they were found.

const range = (key, label, value, min, max, step, isLog = false) => ({key, label, value, min, max, step, isLog});
const flag = (key, label, value = false) => ({key, label, value, isFlag: true});
const choice = (key, label, names, value = 0) => ({key, label, names, value});

const LETTERS = 'abcdefghijklmnopqrstuvwxyz';
const MARKS = [0.08, 0.23, 0.41, 0.63, 0.87];  // where marks stand first, and arrows: shares of the number of segments
const ARROWS = [0.15, 0.32, 0.52, 0.75, 0.96];

const positionText = ([segment, t]) => `{${segment}, ${t}}`;
const positionsText = list => `{${list.map(positionText).join(',\n              ')}}`;

/** The point that stands for a mark, moved along the curve only. */
function onCurve(state, get, set, label, looks, colour = 'mark') {
  const curve = state.a[0];
  const [segment, t, x, y] = places(curve, [get()])[0];
  return {
    at: [x, y], label: `${label} at segment ${segment}, t ${short(t)}`, looks, colour,
    move: p => set(nearestPosition(curve, p)),
    step(forwards, isFine) {
      const n = curve.segments.length, on = get()[0] + get()[1] + (forwards ? 1 : -1) * (isFine ? 0.002 : 0.02);
      const at = curve.closed ? (on + n) % n : Math.min(Math.max(on, 0), n);
      set([Math.floor(at), at - Math.floor(at)]);
    }};
}

function marksOf(state) {
  return state.marks ?? atShares(state.a[0], MARKS);
}
function atShares({segments: {length: n}}, shares) { return shares.map(share => [Math.floor(share * n), share * n % 1]); }

function markHandles(state) {
  return marksOf(state).map((at, i) => onCurve(state, () => marksOf(state)[i], to => {
    state.marks = [...marksOf(state)];
    state.marks[i] = to;
  }, `Mark ${LETTERS[i]}`, 'spot'));
}

/** What became of the marks on one piece: {code, at, back, point}. */
function carried(answer, marks) {
  return marks.map(() => ({code: answer.number(), at: [answer.told(), answer.told()],
    back: [answer.number(), answer.number()], point: answer.point()}));
}
function tellCarried(marks, there) {
  return marks.map(([segment, t], i) => [`${LETTERS[i]}: ${segment}, ${short(t)} is now`,
    there[i].code === 0 ? [there[i].at] : 'not on it', 'wide']);
}

const KINDS = ['crossing', 'touching', 'end'];
const MARK_CODE = '\ncrv::Position now;\nint const code =\n    piece.map->mapPosition(now, mark);';

const operations = {
  fit: {
    title: 'Fit', needs: ['stroke'], panes: 2, start: {stroke: 'pen waves'},
    hint: 'Drag the stroke anywhere, or draw one. Both fits keep to the error: the plain one, and the one with a stated accuracy.',
    controls: [range('error', 'Error allowed', 4, 0.1, 40, 0.1, true), range('corner', 'Corners from, degrees', 0, 0, 180, 1),
      flag('closed', 'Closed stroke')],
    run(s) {
      const samples = counted(s.stroke), angle = s.values.corner * Math.PI / 180;
      const a = callBeside('fit', s.values.error, angle, s.values.closed, samples);
      const p = callBeside('plainFit', s.values.error, samples);
      const accurate = a && {count: a.told(), worst: a.told(), worstSample: a.told(), curve: a.curve()};
      const plain = p && {count: p.told(), curve: p.curve()};
      if (plain && !s.moving) {  // this search takes longer than the accurate fit
        const worst = callBeside('distanceOfSamples', plain.curve, samples);
        if (worst) plain.worst = worst.told();
      }
      return {accurate, plain};
    },
    draw(s, {plain, accurate}) {
      const isDense = s.stroke.length > 600;
      if (isDense) stage.dust(s.stroke, colours.soft);
      [[plain, 'plain', 'Plain'], [accurate, 'accurate', 'Accurate']].forEach(([each, colour, name], pane) => {
        stage.inPane(pane, (x, y) => {
          if (!isDense) stage.dots(s.stroke, colours.soft, 2.5);
          if (!each) return;
          stage.stroke(each.curve, colours[colour], 2.5);
          const joints = each.curve.segments.map(t => [t[0], t[1]]);
          stage.dots(joints.concat(each.curve.segments.slice(-1).map(t => [t[6], t[7]])), colours[colour], 4.5);
          Object.assign(stage.g, {font: '650 16px system-ui, sans-serif', fillStyle: colours[colour], textBaseline: 'top'});
          stage.g.fillText(`${name}: ${each.count.value} segment${each.count.value === 1 ? '' : 's'}`, x + 14, y + 12);
          stage.g.fillStyle = colours.line;
          if (pane) stage.g.fillRect(x, y, stage.beside ? 1 : 1e4, stage.beside ? 1e4 : 1);
        });
      });
    },
    tell: (s, {plain, accurate}) => [['Samples', s.stroke.length],
      ['Accurate: segments', accurate?.count, 'accurate'], ['Accurate: worst distance', accurate?.worst, 'accurate'],
      ['Plain: segments', plain?.count, 'plain'], ['Plain: worst distance', plain?.worst, 'plain']],
    code: s => ({
      line: `crv::FitOptions options;\noptions.tolerance = ${s.values.error};\n` +
        (s.values.corner ? `options.cornerAngle = ${s.values.corner * Math.PI / 180};\n` : '') +
        (s.values.closed ? 'options.closed = true;\n' : '') +
        'crv::Fit const fitted =\n    crv::fit(samples, options);\n' +
        `crv::Curve const plain(\n    samples, ${s.values.error} * ${s.values.error});`,
      print: ['double(fitted.curve.length())', 'fitted.worstDistance']}),
    shown: ['Accurate: segments', 'Accurate: worst distance'],
  },

  offset: {
    title: 'Offset', needs: ['a'], start: {a: 'heart'},
    hint: 'Parallels to both sides. What is nearer than the distance is trimmed away.',
    controls: [range('distance', 'Distance', 60, 1, 300, 1), choice('join', 'Joins', ['round', 'miter', 'bevel']),
      range('limit', 'Miter limit', 4, 1, 10, 0.5), range('within', 'Tolerance', 0.01, 0.001, 1, 0.001, true)],
    run(s) {
      const v = s.values, answer = call('offset', v.distance, v.within, v.join, v.limit, s.a[0]);
      const side = () => {
        const count = answer.number();
        answer.at -= 1;
        return {count: answer.told(), segments: answer.told(), worst: answer.told(),
          curves: Array.from({length: count}, () => answer.curve())};
      };
      return {left: side(), right: side()};
    },
    draw(s, {left, right}) {
      stage.stroke(s.a[0], colours.ink, 2);
      stage.stroke(left.curves, colours.accurate, 2.5);
      stage.stroke(right.curves, colours.other, 2.5);
    },
    tell: (s, {left, right}) => [['Left: parallels', left.count, 'accurate'], ['Left: segments', left.segments, 'accurate'],
      ['Left: worst error', left.worst, 'accurate'], ['Right: parallels', right.count], ['Right: segments', right.segments],
      ['Right: worst error', right.worst]],
    code: s => ({
      line: `crv::OffsetOptions options;\noptions.tolerance = ${s.values.within};\n` +
        `options.join = crv::Join::${['round', 'miter', 'bevel'][s.values.join]};\noptions.miterLimit = ${s.values.limit};\n` +
        `crv::Offset const left =\n    crv::offset(curve, ${s.values.distance}, options);\n` +
        `crv::Offset const right =\n    crv::offset(curve, -${s.values.distance}, options);`,
      print: ['double(left.parallels.size())', 'left.worstError', 'right.worstError']}),
    shown: ['Left: parallels', 'Left: worst error', 'Right: worst error'],
  },

  flatten: {
    title: 'Flatten', needs: ['a'], start: {a: 'loop'},
    hint: 'Straight chords within the tolerance: few of them, or by halving.',
    controls: [range('tolerance', 'Tolerance', 4, 0.01, 60, 0.01, true), flag('halving', 'Show the plain polyline')],
    run(s) {
      const answer = call('flatten', s.values.tolerance, s.a[0]);
      return {count: answer.told(), worst: answer.told(), plainCount: answer.told(), points: answer.points(), plain: answer.points()};
    },
    draw(s, r) {
      const [points, colour] = s.values.halving ? [r.plain, colours.plain] : [r.points, colours.accurate];
      stage.stroke(s.a[0], colours.line, 7);
      stage.line(points, colour, 2);
      stage.dots(points, colour, 4.5);
    },
    tell: (s, r) => [['Points', r.count, 'accurate'], ['Worst distance', r.worst, 'accurate'], ['Plain: points', r.plainCount, 'plain']],
    code: s => ({line: `crv::Polyline const chords =\n    crv::flatten(curve, ${s.values.tolerance});\n` +
        `std::vector<crv::Point> plain;\ncurve.getPolyline(${s.values.tolerance}, plain);`,
      print: ['double(chords.points.size())', 'chords.worstDistance', 'double(plain.size())']}),
    shown: ['Points', 'Worst distance', 'Plain: points'],
  },

  contacts: {
    title: 'Contacts', needs: ['a', 'b'], start: {a: 'wave', b: 'loop'},
    hint: 'Where two curves cross, touch or end on each other, each place once; and what they share.',
    controls: [],
    run(s) {
      const answer = call('contacts', 0, s.a[0], s.b[0]);
      const r = {count: answer.told(), overlapCount: answer.told()};
      r.points = Array.from({length: r.count.value}, () => ({first: [answer.told(), answer.told()],
        second: [answer.told(), answer.told()], point: answer.point(), kind: KINDS[answer.number()]}));
      r.overlaps = Array.from({length: r.overlapCount.value}, () => ({from: [answer.told(), answer.told()],
        to: [answer.told(), answer.told()], other: [0, 0, 0, 0, 0].map(() => answer.number()), curve: answer.curve()}));
      return r;
    },
    draw(s, r) {
      stage.stroke(s.a, colours.accurate, 2.5);
      stage.stroke(s.b, colours.other, 2.5);
      stage.stroke(r.overlaps.map(each => each.curve), colours.mark, 7);
      stage.dots(r.points.map(each => each.point), colours.mark, 6);
      if (r.points.length < 40) r.points.forEach((each, i) => stage.label(each.point, `${i + 1}`, colours.mark));
    },
    tell: (s, r) => [['Contacts', r.count], ['Overlaps', r.overlapCount],
      ...r.points.slice(0, 12).map((each, i) => [`${i + 1}: ${each.kind}, on A, on B`, [each.first, each.second], 'wide']),
      ...r.overlaps.slice(0, 6).map(each => ['overlap on A from, to', [each.from, each.to], 'wide'])],
    code: () => ({line: 'crv::CurveContacts const found =\n    crv::contacts(curve, other);',
      print: ['double(found.points.size())', 'double(found.overlaps.size())',
        'double(found.points.at(0).first.getSegmentNumber())', 'found.points.at(0).first.getTValue()']}),
    shown: ['Contacts', 'Overlaps', '1: '],
  },

  nearest: {
    title: 'Nearest', needs: ['a'], start: {a: 'loop'}, point: true,
    hint: 'Move the pointer, or a finger: the nearest place of the curve follows.',
    controls: [],
    run(s) {
      const answer = call('nearest', s.p[0], s.p[1], s.a[0]);
      if (!answer.number()) return {};
      const place = () => ({position: [answer.told(), answer.told()], point: answer.point(), distance: answer.told()});
      const accurate = place();
      answer.number();
      return {accurate, plain: place()};
    },
    draw(s, {accurate, plain}) {
      stage.stroke(s.a[0], colours.ink, 2.5);
      if (!accurate) return;
      stage.line([s.p, accurate.point], colours.accurate, 2, [5, 5]);
      const [x, y] = stage.toScreen(s.p), g = stage.g;
      g.beginPath();
      g.arc(x, y, accurate.distance.value * stage.scale, 0, 7);
      Object.assign(g, {strokeStyle: colours.line, lineWidth: 1.5});
      g.stroke();
      if (Math.hypot(plain.point[0] - accurate.point[0], plain.point[1] - accurate.point[1]) > 1e-3) stage.dots([plain.point], colours.plain, 6);
      stage.dots([accurate.point], colours.accurate, 6);
    },
    tell: (s, {accurate, plain}) => !accurate ? [] : [['Point', s.p.map(short).join(', ')], ['Segment', accurate.position[0], 'accurate'],
      ['t', accurate.position[1], 'accurate'], ['Distance', accurate.distance, 'accurate'], ['Plain: distance', plain.distance, 'plain']],
    code: s => ({line: `auto const found = crv::nearest(\n    curve, {${s.p[0]},\n            ${s.p[1]}});`,
      print: ['double(found->position.getSegmentNumber())', 'found->position.getTValue()', 'found->distance']}),
    shown: ['Segment', 't', 'Distance'],
  },

  walk: {
    title: 'Walk', needs: ['a'], start: {a: 'wave'},
    hint: 'Even steps along the curve, or straight from each place to the next.',
    controls: [range('step', 'Step', 60, 5, 400, 1), choice('measure', 'Measured', ['along the curve', 'straight'])],
    run(s) {
      const answer = call('walk', s.values.measure, s.values.step, s.a[0]);
      return {total: answer.told(), count: answer.told(), places: Array.from({length: answer.numbers[1]}, () => ({
        position: [answer.told(), answer.told()], numbers: [0, 0, 0, 0].map(() => answer.number())}))};
    },
    draw(s, r) {
      const at = r.places.map(each => each.numbers);
      stage.stroke(s.a[0], colours.ink, 2.5);
      if (s.values.measure) stage.line(at, colours.accurate, 1.5, [4, 4]);
      for (const each of at) stage.arrow(each, colours.accurate);
    },
    tell: (s, r) => [['Length of the curve', r.total], ['Places', r.count],
      ['The last place', r.places.length ? [r.places.at(-1).position] : 'none', 'wide']],
    code: s => ({
      line: 'std::vector<crv::Position> places{\n    curve.firstPos()};\n' +
        `while (auto const next = crv::walk(\n           curve, places.back(), ${s.values.step},\n` +
        `           crv::Measure::${s.values.measure ? 'chord' : 'length'}, 1e-9)) {\n` +
        '  // Closed curves have no end.\n  if (!(places.back() < *next)) break;\n  places.push_back(*next);\n}',
      print: ['crv::arcLength(curve, 1e-9)', 'double(places.size())']}),
    shown: ['Length of the curve', 'Places'],
  },

  copy: {
    title: 'Copy', needs: ['a'], hasMarks: true, start: {a: 'heart'}, positions: {from: 0.15, to: 0.7},
    hint: 'Drag the ends of a stretch, or the marks. Its copy is drawn beside it, with the marks that lie on it.',
    controls: [flag('backwards', 'Against the curve')],
    handles: s => [onCurve(s, () => s.from, p => { s.from = p; }, 'Start of the stretch', 'mark', 'accurate'),
      onCurve(s, () => s.to, p => { s.to = p; }, 'End of the stretch', 'mark', 'other')],
    run(s) {
      const marks = marksOf(s), answer = call('copy', !s.values.backwards, s.from, s.to, s.a[0], counted(marks));
      return {marks, old: places(s.a[0], marks), curve: answer.curve(), there: carried(answer, marks), segments: {value: 0, call: answer.call, at: 1}};
    },
    draw(s, r) { drawEdit(s, [r]); },
    tell: (s, r) => [['Segments', {...r.segments, value: r.curve.segments.length}], ...tellCarried(r.marks, r.there)],
    code: s => ({line: `crv::Piece const piece = crv::stretch(\n    curve, ${positionText(s.from)},\n    ${positionText(s.to)}, ${!s.values.backwards});` + MARK_CODE,
      print: ['double(piece.curve.length())']}),
    shown: ['Segments'],
  },

  cut: {
    title: 'Cut', needs: ['a'], hasMarks: true, start: {a: 'heart'}, positions: {from: 0.3, to: 0.8},
    hint: 'Drag the two cuts, or the marks. The pieces are drawn apart, and each mark goes with its piece.',
    controls: [],
    handles: s => [onCurve(s, () => s.from, p => { s.from = p; }, 'First cut', 'mark', 'plain'),
      onCurve(s, () => s.to, p => { s.to = p; }, 'Second cut', 'mark', 'plain')],
    run(s) {
      const marks = marksOf(s), answer = call('cut', counted([s.from, s.to]), s.a[0], counted(marks));
      const count = answer.told();
      return {marks, count, old: places(s.a[0], marks), pieces: Array.from({length: count.value}, () => {
        const curve = answer.curve();
        return {curve, there: carried(answer, marks)};
      })};
    },
    draw(s, r) { drawEdit(s, r.pieces.map(each => ({...each, old: r.old}))); },
    tell: (s, r) => [['Pieces', r.count], ...r.marks.map(([segment, t], i) => {
      const piece = r.pieces.findIndex(each => each.there[i].code === 0);
      return piece < 0 ? [LETTERS[i], 'nowhere'] : [`${LETTERS[i]}: ${segment}, ${short(t)} is now on piece ${piece + 1} at`, [r.pieces[piece].there[i].at], 'wide'];
    })],
    code: s => ({line: `std::vector<crv::Piece> const pieces =\n    crv::cut(curve,\n             ${positionsText([s.from, s.to])});\n` +
        'crv::Piece const& piece = pieces.front();' + MARK_CODE,
      print: ['double(pieces.size())']}),
    shown: ['Pieces'],
  },

  reverse: {
    title: 'Reverse', needs: ['a'], hasMarks: true, start: {a: 'wave'},
    hint: 'The same curve, run the other way. Each mark stays in its place and gets another position.',
    controls: [],
    run(s) {
      const marks = marksOf(s), answer = call('reverse', s.a[0], counted(marks));
      const curve = answer.curve();
      return {marks, curve, segments: {value: curve.segments.length, call: answer.call, at: 1}, there: carried(answer, marks),
        arrows: places(curve, atShares(curve, ARROWS))};
    },
    draw(s, r) {
      stage.stroke(r.curve, colours.accurate, 2.5);
      for (const each of r.arrows) stage.arrow(each.slice(2), colours.accurate);
      r.there.forEach((each, i) => stage.label(each.point, LETTERS[i], colours.mark));
    },
    tell: (s, r) => [['Segments', r.segments], ...tellCarried(r.marks, r.there)],
    code: () => ({line: 'crv::Piece const piece =\n    crv::reversed(curve);' + MARK_CODE, print: ['double(piece.curve.length())']}),
    shown: ['Segments'],
  },

  weld: {
    title: 'Weld', needs: ['a', 'b'], start: {a: 'letter S', b: 'letter &'},
    hint: 'The areas of both outlines, joined. The colour of each part tells where it came from.',
    controls: [choice('set', 'Areas', ['unite', 'intersect', 'subtract', 'exclude']), choice('rule', 'Inside', ['winding not zero', 'winding odd'])],
    run(s) {
      const answer = call('weld', s.values.set, s.values.rule, counted(s.a), counted(s.b));
      const r = {areaA: answer.told(), areaB: answer.told(), area: answer.told(), count: answer.told(), segments: answer.told()};
      r.curves = answer.curves();
      r.parts = [{closed: false, segments: []}, {closed: false, segments: []}];
      for (const curve of r.curves) for (const segment of curve.segments) r.parts[answer.number() === 1 ? 1 : 0].segments.push(segment);
      return r;
    },
    draw(s, r) {
      stage.fill(r.curves, colours.line);
      stage.stroke([...s.a, ...s.b], colours.soft, 1);
      stage.stroke(r.parts[0], colours.accurate, 2.5);
      stage.stroke(r.parts[1], colours.other, 2.5);
    },
    tell: (s, r) => [['Area of A', r.areaA], ['Area of B', r.areaB], ['Area of the result', r.area], ['Curves', r.count], ['Segments', r.segments]],
    code: s => {
      const rule = `crv::FillRule::${s.values.rule ? 'evenOdd' : 'nonZero'}`;
      return {line: `crv::Region const result = crv::${['unite', 'intersect', 'subtract', 'exclude'][s.values.set]}(\n    a, b, ${rule});\n` +
        `double const area = crv::area(\n    result.curves, ${rule});`,
      print: ['area', 'double(result.curves.size())']};
    },
    shown: ['Area of the result', 'Curves'],
  },

  bits: {
    title: 'Same bits', needs: [], isTable: true,
    hint: 'Each operation answers random questions, and a hash is taken over all bits of its answers. The recorded hash is that of a program built by g++ and clang.',
    controls: [], run: () => ({}), draw() {}, tell: () => [], code: () => ({line: '', print: []}), shown: [],
  },
};

/** Pieces of a curve apart from each other, and their marks. */
function drawEdit(s, pieces) {
  stage.stroke(s.a[0], colours.line, 2.5);
  const middle = boxOf(corners(s.a[0])), cx = (middle[0] + middle[2]) / 2, cy = (middle[1] + middle[3]) / 2;
  pieces.forEach(({curve, there, old}, i) => {
    if (!curve.segments.length) return;
    const box = boxOf(corners(curve)), dx = (box[0] + box[2]) / 2 - cx, dy = (box[1] + box[3]) / 2 - cy;
    const far = 34 / stage.scale, size = Math.hypot(dx, dy) || 1, by = [far * dx / size || far, far * dy / size];
    const moved = {closed: curve.closed, segments: curve.segments.map(t => t.map((x, k) => x + by[k % 2]))};
    stage.stroke(moved, [colours.accurate, colours.other, colours.plain][i % 3], 3);
    stage.dots([moved.segments[0].slice(0, 2)], [colours.accurate, colours.other, colours.plain][i % 3], 5);
    there.forEach((each, k) => {
      if (each.code !== 0) return;
      const to = [each.point[0] + by[0], each.point[1] + by[1]];
      stage.line([[old[k][2], old[k][3]], to], colours.mark, 1, [2, 3]);
      stage.dots([to], colours.mark, 5);
      stage.label(to, LETTERS[k], colours.mark);
    });
  });
}
