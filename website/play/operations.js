// The operations: what each is asked, draws and says, and the C++ that does the same.
//
// run() calls the library and returns what draw, tell and code need. tell() gives rows of a word and a value, where
// values that the library returned carry the place at which they were found.

const range = (key, label, value, min, max, step, isLog = false) => ({
  key,
  label,
  value,
  min,
  max,
  step,
  isLog,
});
const flag = (key, label, value = false) => ({key, label, value, isFlag: true});
const choice = (key, label, names, value = 0) => ({key, label, names, value});

const KINDS = ['crossing', 'touching', 'end'];

const inquiries = {
  fit: {
    title: 'Fit',
    needs: ['stroke'],
    panes: 2,
    start: {stroke: 'pen waves'},
    hint: 'Drag the stroke anywhere, or draw one. Both fits keep to the error: the plain one, and the one with a stated accuracy.',
    controls: [
      range('error', 'Error allowed', 4, 0.1, 40, 0.1, true),
      range('corner', 'Corners from, degrees', 0, 0, 180, 1),
      flag('closed', 'Closed stroke'),
    ],
    run(s) {
      const samples = counted(s.stroke),
        angle = (s.values.corner * Math.PI) / 180;
      const a = callBeside('fit', s.values.error, angle, s.values.closed, samples);
      const p = callBeside('plainFit', s.values.error, samples);
      const accurate = a && {count: a.told(), worst: a.told(), worstSample: a.told(), curve: a.curve()};
      const plain = p && {count: p.told(), curve: p.curve()};
      if (plain && !s.moving) {
        // this search takes longer than the accurate fit
        const worst = callBeside('distanceOfSamples', plain.curve, samples);
        if (worst) plain.worst = worst.told();
      }
      return {accurate, plain};
    },
    draw(s, {plain, accurate}) {
      const isDense = s.stroke.length > 600;
      if (isDense) stage.dust(s.stroke, colours.soft);
      [
        [plain, 'plain', 'Plain'],
        [accurate, 'accurate', 'Accurate'],
      ].forEach(([each, colour, name], pane) => {
        stage.inPane(pane, (x, y) => {
          if (!isDense) stage.dots(s.stroke, colours.soft, 2.5);
          if (!each) return;
          // Among so many samples a line of one pixel shows more, and is drawn in a third of the time.
          stage.stroke(each.curve, colours[colour], isDense ? 1 / devicePixelRatio : 2.5);
          const joints = each.curve.segments.map(t => [t[0], t[1]]);
          stage.dots(
            joints.concat(each.curve.segments.slice(-1).map(t => [t[6], t[7]])),
            colours[colour],
            4.5,
          );
          Object.assign(stage.g, {
            font: '650 16px system-ui, sans-serif',
            fillStyle: colours[colour],
            textBaseline: 'top',
          });
          stage.g.fillText(
            `${name}: ${each.count.value} segment${each.count.value === 1 ? '' : 's'}`,
            x + 14,
            y + 12,
          );
          stage.g.fillStyle = colours.line;
          if (pane) stage.g.fillRect(x, y, stage.beside ? 1 : 1e4, stage.beside ? 1e4 : 1);
        });
      });
    },
    tell: (s, {plain, accurate}) => [
      ['Samples', s.stroke.length],
      ['Accurate: segments', accurate?.count, 'accurate'],
      ['Accurate: farthest', accurate?.worst, 'accurate'],
      ['Plain: segments', plain?.count, 'plain'],
      ['Plain: farthest', plain?.worst, 'plain'],
    ],
    code: s => ({
      line:
        `crv::FitOptions options;\noptions.tolerance = ${s.values.error};\n` +
        (s.values.corner ? `options.cornerAngle = ${(s.values.corner * Math.PI) / 180};\n` : '') +
        (s.values.closed ? 'options.closed = true;\n' : '') +
        'crv::Fit const fitted =\n    crv::fit(samples, options);\n' +
        `crv::Curve const plain(\n    samples, ${s.values.error} * ${s.values.error});`,
      print: ['double(fitted.curve.length())', 'fitted.worstDistance'],
    }),
    shown: ['Accurate: segments', 'Accurate: farthest'],
  },

  offset: {
    title: 'Offset',
    needs: ['a'],
    start: {a: 'heart'},
    hint: 'Parallels to both sides. What is nearer than the distance is trimmed away.',
    controls: [
      range('distance', 'Distance', 60, 1, 300, 1),
      choice('join', 'Joins', ['round', 'miter', 'bevel']),
      range('limit', 'Miter limit', 4, 1, 10, 0.5),
      range('within', 'Tolerance', 0.01, 0.001, 1, 0.001, true),
    ],
    run(s) {
      const v = s.values,
        answer = call('offset', v.distance, v.within, v.join, v.limit, s.a[0]);
      const side = () => {
        const count = answer.number();
        answer.at -= 1;
        return {
          count: answer.told(),
          segments: answer.told(),
          worst: answer.told(),
          curves: Array.from({length: count}, () => answer.curve()),
        };
      };
      return {left: side(), right: side()};
    },
    draw(s, {left, right}) {
      stage.stroke(s.a[0], colours.ink, 2);
      stage.stroke(left.curves, colours.accurate, 2.5);
      stage.stroke(right.curves, colours.other, 2.5);
    },
    tell: (s, {left, right}) => [
      ['Left: parallels', left.count, 'accurate'],
      ['Left: segments', left.segments, 'accurate'],
      ['Left: worst error', left.worst, 'accurate'],
      ['Right: parallels', right.count],
      ['Right: segments', right.segments],
      ['Right: worst error', right.worst],
    ],
    code: s => ({
      line:
        `crv::OffsetOptions options;\noptions.tolerance = ${s.values.within};\n` +
        `options.join = crv::Join::${['round', 'miter', 'bevel'][s.values.join]};\noptions.miterLimit = ${s.values.limit};\n` +
        `crv::Offset const left =\n    crv::offset(curve, ${s.values.distance}, options);\n` +
        `crv::Offset const right =\n    crv::offset(curve, -${s.values.distance}, options);`,
      print: ['double(left.parallels.size())', 'left.worstError', 'right.worstError'],
    }),
    shown: ['Left: parallels', 'Left: worst error', 'Right: worst error'],
  },

  flatten: {
    title: 'Flatten',
    needs: ['a'],
    start: {a: 'loop'},
    hint: 'Straight chords within the tolerance: few of them, or by halving.',
    controls: [
      range('tolerance', 'Tolerance', 4, 0.01, 60, 0.01, true),
      flag('halving', 'Show the plain polyline'),
    ],
    run(s) {
      const answer = call('flatten', s.values.tolerance, s.a[0]);
      return {
        count: answer.told(),
        worst: answer.told(),
        plainCount: answer.told(),
        points: answer.points(),
        plain: answer.points(),
      };
    },
    draw(s, r) {
      const [points, colour] = s.values.halving ? [r.plain, colours.plain] : [r.points, colours.accurate];
      stage.stroke(s.a[0], colours.line, 7);
      stage.line(points, colour, 2);
      stage.dots(points, colour, 4.5);
    },
    tell: (s, r) => [
      ['Points', r.count, 'accurate'],
      ['Worst distance', r.worst, 'accurate'],
      ['Plain: points', r.plainCount, 'plain'],
    ],
    code: s => ({
      line:
        `crv::Polyline const chords =\n    crv::flatten(curve, ${s.values.tolerance});\n` +
        `std::vector<crv::Point> plain;\ncurve.getPolyline(${s.values.tolerance}, plain);`,
      print: ['double(chords.points.size())', 'chords.worstDistance', 'double(plain.size())'],
    }),
    shown: ['Points', 'Worst distance', 'Plain: points'],
  },

  contacts: {
    title: 'Contacts',
    needs: ['a', 'b'],
    start: {a: 'wave', b: 'loop'},
    hint: 'Where two curves cross, touch or end on each other, each place once; and what they share.',
    controls: [],
    run(s) {
      const answer = call('contacts', 0, s.a[0], s.b[0]);
      const r = {count: answer.told(), overlapCount: answer.told()};
      r.points = Array.from({length: r.count.value}, () => ({
        first: [answer.told(), answer.told()],
        second: [answer.told(), answer.told()],
        point: answer.point(),
        kind: KINDS[answer.number()],
      }));
      r.overlaps = Array.from({length: r.overlapCount.value}, () => ({
        from: [answer.told(), answer.told()],
        to: [answer.told(), answer.told()],
        other: [0, 0, 0, 0, 0].map(() => answer.number()),
        curve: answer.curve(),
      }));
      return r;
    },
    draw(s, r) {
      stage.stroke(s.a[0], colours.accurate, 2.5);
      stage.stroke(s.b[0], colours.other, 2.5);
      stage.stroke(
        r.overlaps.map(each => each.curve),
        colours.mark,
        7,
      );
      stage.dots(
        r.points.map(each => each.point),
        colours.mark,
        6,
      );
      if (r.points.length < 40)
        r.points.forEach((each, i) => stage.label(each.point, `${i + 1}`, colours.mark));
    },
    tell: (s, r) => [
      ['Contacts', r.count],
      ['Overlaps', r.overlapCount],
      ...r.points
        .slice(0, 12)
        .map((each, i) => [`${i + 1}: ${each.kind}, on A, on B`, [each.first, each.second], 'wide']),
      ...r.overlaps.slice(0, 6).map(each => ['overlap on A from, to', [each.from, each.to], 'wide']),
    ],
    code: () => ({
      line: 'crv::CurveContacts const found =\n    crv::contacts(curve, other);',
      print: [
        'double(found.points.size())',
        'double(found.overlaps.size())',
        'double(found.points.at(0).first.getSegmentNumber())',
        'found.points.at(0).first.getTValue()',
      ],
    }),
    shown: ['Contacts', 'Overlaps', '1: '],
  },

  nearest: {
    title: 'Nearest',
    needs: ['a'],
    start: {a: 'loop'},
    point: true,
    hint: 'Move the pointer, or a finger: the nearest place of the curve follows.',
    controls: [],
    run(s) {
      const answer = call('nearest', s.p[0], s.p[1], s.a[0]);
      if (!answer.number()) return {};
      const place = () => ({
        position: [answer.told(), answer.told()],
        point: answer.point(),
        distance: answer.told(),
      });
      const accurate = place();
      answer.number();
      return {accurate, plain: place()};
    },
    draw(s, {accurate, plain}) {
      stage.stroke(s.a[0], colours.ink, 2.5);
      if (!accurate) return;
      stage.line([s.p, accurate.point], colours.accurate, 2, [5, 5]);
      const [x, y] = stage.toScreen(s.p),
        g = stage.g;
      g.beginPath();
      g.arc(x, y, accurate.distance.value * stage.scale, 0, 7);
      Object.assign(g, {strokeStyle: colours.line, lineWidth: 1.5});
      g.stroke();
      if (Math.hypot(plain.point[0] - accurate.point[0], plain.point[1] - accurate.point[1]) > 1e-3)
        stage.dots([plain.point], colours.plain, 6);
      stage.dots([accurate.point], colours.accurate, 6);
    },
    tell: (s, {accurate, plain}) =>
      !accurate
        ? []
        : [
            ['Point', s.p.map(short).join(', ')],
            ['Segment', accurate.position[0], 'accurate'],
            ['t', accurate.position[1], 'accurate'],
            ['Distance', accurate.distance, 'accurate'],
            ['Plain: distance', plain.distance, 'plain'],
          ],
    code: s => ({
      line: `auto const found = crv::nearest(\n    curve, {${s.p[0]},\n            ${s.p[1]}});`,
      print: ['double(found->position.getSegmentNumber())', 'found->position.getTValue()', 'found->distance'],
    }),
    shown: ['Segment', 't', 'Distance'],
  },

  walk: {
    title: 'Walk',
    needs: ['a'],
    start: {a: 'wave'},
    hint: 'Even steps along the curve, or straight from each place to the next.',
    controls: [
      range('step', 'Step', 60, 5, 400, 1),
      choice('measure', 'Measured', ['along the curve', 'straight']),
    ],
    run(s) {
      const answer = call('walk', s.values.measure, s.values.step, s.a[0]);
      return {
        total: answer.told(),
        count: answer.told(),
        places: Array.from({length: answer.numbers[1]}, () => ({
          position: [answer.told(), answer.told()],
          numbers: [0, 0, 0, 0].map(() => answer.number()),
        })),
      };
    },
    draw(s, r) {
      const at = r.places.map(each => each.numbers);
      stage.stroke(s.a[0], colours.ink, 2.5);
      if (s.values.measure) stage.line(at, colours.accurate, 1.5, [4, 4]);
      for (const each of at) stage.arrow(each, colours.accurate);
    },
    tell: (s, r) => [
      ['Length of the curve', r.total],
      ['Places', r.count],
      ['The last place', r.places.length ? [r.places.at(-1).position] : 'none', 'wide'],
    ],
    code: s => ({
      line:
        'std::vector<crv::Position> places{\n    curve.firstPos()};\n' +
        `while (auto const next = crv::walk(\n           curve, places.back(), ${s.values.step},\n` +
        `           crv::Measure::${s.values.measure ? 'chord' : 'length'}, 1e-9)) {\n` +
        '  // Closed curves have no end.\n  if (!(places.back() < *next)) break;\n  places.push_back(*next);\n}',
      print: ['crv::arcLength(curve, 1e-9)', 'double(places.size())'],
    }),
    shown: ['Length of the curve', 'Places'],
  },
};
