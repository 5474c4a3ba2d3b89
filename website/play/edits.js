// The operations that make curves of curves, and the marks that their maps carry.

const LETTERS = 'abcdefghijklmnopqrstuvwxyz';
const MARKS = [0.08, 0.23, 0.41, 0.63, 0.87]; // where marks stand first, and arrows: shares of the number of segments
const ARROWS = [0.15, 0.32, 0.52, 0.75, 0.96];

const positionText = ([segment, t]) => `{${segment}, ${t}}`;
const positionsText = list => `{${list.map(positionText).join(',\n              ')}}`;

/** The point that stands for a mark, moved along the curve only. */
function onCurve(state, get, set, label, looks, colour = 'mark') {
  const curve = state.a[0];
  const [segment, t, x, y] = places(curve, [get()])[0];
  return {
    at: [x, y],
    label: `${label} at segment ${segment}, t ${short(t)}`,
    looks,
    colour,
    move: p => set(nearestPosition(curve, p)),
    step(forwards, isFine) {
      const n = curve.segments.length,
        on = get()[0] + get()[1] + (forwards ? 1 : -1) * (isFine ? 0.002 : 0.02);
      const at = curve.closed ? (on + n) % n : Math.min(Math.max(on, 0), n);
      set([Math.floor(at), at - Math.floor(at)]);
    },
  };
}

/** The point that stands for a position of the state. */
function movable(state, key, label, colour) {
  const set = p => {
    state[key] = p;
  };
  return onCurve(state, () => state[key], set, label, 'mark', colour);
}

function marksOf(state) {
  return state.marks ?? atShares(state.a[0], MARKS);
}
function atShares({segments: {length: n}}, shares) {
  return shares.map(share => [Math.floor(share * n), (share * n) % 1]);
}

function markHandles(state) {
  return marksOf(state).map((at, i) =>
    onCurve(
      state,
      () => marksOf(state)[i],
      to => {
        state.marks = [...marksOf(state)];
        state.marks[i] = to;
      },
      `Mark ${LETTERS[i]}`,
      'spot',
    ),
  );
}

/** What became of the marks on one piece: {code, at, back, point}. */
function carried(answer, marks) {
  return marks.map(() => ({
    code: answer.number(),
    at: [answer.told(), answer.told()],
    back: [answer.number(), answer.number()],
    point: answer.point(),
  }));
}
function tellCarried(marks, there) {
  return marks.map(([segment, t], i) => [
    `${LETTERS[i]}: ${segment}, ${short(t)} is now`,
    there[i].code === 0 ? [there[i].at] : 'not on it',
    'wide',
  ]);
}
const MARK_CODE = '\ncrv::Position now;\nint const code =\n    piece.map->mapPosition(now, mark);';

/** Pieces of a curve apart from each other, and their marks. */
function drawEdit(s, pieces) {
  stage.stroke(s.a[0], colours.control, 1.5);
  const middle = boxOf(corners(s.a[0])),
    cx = (middle[0] + middle[2]) / 2,
    cy = (middle[1] + middle[3]) / 2;
  pieces.forEach(({curve, there, old}, i) => {
    if (!curve.segments.length) return;
    const box = boxOf(corners(curve)),
      dx = (box[0] + box[2]) / 2 - cx,
      dy = (box[1] + box[3]) / 2 - cy;
    const far = 34 / stage.scale,
      size = Math.hypot(dx, dy) || 1,
      by = [(far * dx) / size || far, (far * dy) / size];
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

const edits = {
  copy: {
    title: 'Copy',
    needs: ['a'],
    hasMarks: true,
    start: {a: 'heart'},
    positions: {from: 0.15, to: 0.7},
    hint: 'Drag the ends of a stretch, or the marks. Its copy is drawn beside it, with the marks that lie on it.',
    controls: [flag('backwards', 'Against the curve')],
    handles: s => [
      movable(s, 'from', 'Start of the stretch', 'accurate'),
      movable(s, 'to', 'End of the stretch', 'other'),
    ],
    run(s) {
      const marks = marksOf(s),
        answer = call('copy', !s.values.backwards, s.from, s.to, s.a[0], counted(marks));
      return {
        marks,
        old: places(s.a[0], marks),
        curve: answer.curve(),
        there: carried(answer, marks),
        segments: {value: 0, call: answer.call, at: 1},
      };
    },
    draw(s, r) {
      drawEdit(s, [r]);
    },
    tell: (s, r) => [
      ['Segments', {...r.segments, value: r.curve.segments.length}],
      ...tellCarried(r.marks, r.there),
    ],
    code: s => ({
      line:
        `crv::Piece const piece = crv::stretch(\n    curve, ${positionText(s.from)},\n    ${positionText(s.to)}, ${!s.values.backwards});` +
        MARK_CODE,
      print: ['double(piece.curve.length())'],
    }),
    shown: ['Segments'],
  },

  cut: {
    title: 'Cut',
    needs: ['a'],
    hasMarks: true,
    start: {a: 'heart'},
    positions: {from: 0.3, to: 0.8},
    hint: 'Drag the two cuts, or the marks. The pieces are drawn apart, and each mark goes with its piece.',
    controls: [],
    handles: s => [
      movable(s, 'from', 'First cut', 'plain'),
      movable(s, 'to', 'Second cut', 'plain'),
    ],
    run(s) {
      const marks = marksOf(s),
        answer = call('cut', counted([s.from, s.to]), s.a[0], counted(marks));
      const count = answer.told();
      return {
        marks,
        count,
        old: places(s.a[0], marks),
        pieces: Array.from({length: count.value}, () => {
          const curve = answer.curve();
          return {curve, there: carried(answer, marks)};
        }),
      };
    },
    draw(s, r) {
      drawEdit(
        s,
        r.pieces.map(each => ({...each, old: r.old})),
      );
    },
    tell: (s, r) => [
      ['Pieces', r.count],
      ...r.marks.map(([segment, t], i) => {
        const piece = r.pieces.findIndex(each => each.there[i].code === 0);
        return piece < 0
          ? [LETTERS[i], 'nowhere']
          : [
              `${LETTERS[i]}: ${segment}, ${short(t)} is now on piece ${piece + 1} at`,
              [r.pieces[piece].there[i].at],
              'wide',
            ];
      }),
    ],
    code: s => ({
      line:
        `std::vector<crv::Piece> const pieces =\n    crv::cut(curve,\n             ${positionsText([s.from, s.to])});\n` +
        'crv::Piece const& piece = pieces.front();' +
        MARK_CODE,
      print: ['double(pieces.size())'],
    }),
    shown: ['Pieces'],
  },

  reverse: {
    title: 'Reverse',
    needs: ['a'],
    hasMarks: true,
    start: {a: 'wave'},
    hint: 'The same curve, run the other way. Each mark stays in its place and gets another position.',
    controls: [],
    run(s) {
      const marks = marksOf(s),
        answer = call('reverse', s.a[0], counted(marks));
      const curve = answer.curve();
      return {
        marks,
        curve,
        segments: {value: curve.segments.length, call: answer.call, at: 1},
        there: carried(answer, marks),
        arrows: places(curve, atShares(curve, ARROWS)),
      };
    },
    draw(s, r) {
      stage.stroke(r.curve, colours.accurate, 2.5);
      for (const each of r.arrows) stage.arrow(each.slice(2), colours.accurate);
      r.there.forEach((each, i) => stage.label(each.point, LETTERS[i], colours.mark));
    },
    tell: (s, r) => [['Segments', r.segments], ...tellCarried(r.marks, r.there)],
    code: () => ({
      line: 'crv::Piece const piece =\n    crv::reversed(curve);' + MARK_CODE,
      print: ['double(piece.curve.length())'],
    }),
    shown: ['Segments'],
  },

  weld: {
    title: 'Weld',
    needs: ['a', 'b'],
    start: {a: 'letter S', b: 'letter &'},
    hint: 'The areas of both outlines, joined. The colour of each part tells where it came from.',
    controls: [
      choice('set', 'Areas', ['unite', 'intersect', 'subtract', 'exclude']),
      choice('rule', 'Inside', ['winding not zero', 'winding odd']),
    ],
    run(s) {
      const answer = call('weld', s.values.set, s.values.rule, counted(s.a), counted(s.b));
      const r = {
        areaA: answer.told(),
        areaB: answer.told(),
        area: answer.told(),
        count: answer.told(),
        segments: answer.told(),
      };
      r.curves = answer.curves();
      r.parts = [
        {closed: false, segments: []},
        {closed: false, segments: []},
      ];
      for (const curve of r.curves)
        for (const segment of curve.segments) r.parts[answer.number() === 1 ? 1 : 0].segments.push(segment);
      return r;
    },
    draw(s, r) {
      stage.fill(r.curves, colours.line);
      stage.stroke([...s.a, ...s.b], colours.soft, 1);
      stage.stroke(r.parts[0], colours.accurate, 2.5);
      stage.stroke(r.parts[1], colours.other, 2.5);
    },
    tell: (s, r) => [
      ['Area of A', r.areaA],
      ['Area of B', r.areaB],
      ['Area of the result', r.area],
      ['Curves', r.count],
      ['Segments', r.segments],
    ],
    code: s => {
      const rule = `crv::FillRule::${s.values.rule ? 'evenOdd' : 'nonZero'}`;
      return {
        line:
          `crv::Region const result = crv::${['unite', 'intersect', 'subtract', 'exclude'][s.values.set]}(\n    a, b, ${rule});\n` +
          `double const area = crv::area(\n    result.curves, ${rule});`,
        print: ['area', 'double(result.curves.size())'],
      };
    },
    shown: ['Area of the result', 'Curves'],
  },

  bits: {
    title: 'Same bits',
    needs: [],
    isTable: true,
    hint: 'Each operation answers the same random questions here and in a program, and a hash is taken over all bits of its answers. The recorded hashes are those of the program, built for x86-64 by g++ or clang; every test of this page runs it anew and compares.',
    controls: [],
    run: () => ({}),
    draw() {},
    tell: () => [],
    code: () => ({line: '', print: []}),
    shown: [],
  },
};

const operations = {...inquiries, ...edits};
