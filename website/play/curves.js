// Curves, strokes and their texts.

/** A curve as the text of a path, with the shortest digits that read back as the same doubles. */
function toPath(curve) {
  let text = '',
    x,
    y;
  for (const s of curve.segments) {
    if (s[0] !== x || s[1] !== y) text += `M${s[0]} ${s[1]}`;
    text += `C${s.slice(2).join(' ')}`;
    [x, y] = s.slice(6);
  }
  return (text + (curve.closed ? 'Z' : '')).replace(/ -/g, '-');
}

function fromNumbers(text, closed) {
  const numbers = text.trim().split(/\s+/).map(Number);
  const segments = [];
  for (let i = 0; i < numbers.length; i += 8) segments.push(numbers.slice(i, i + 8));
  return {closed, segments};
}

function pointsOf(text) {
  const numbers = text
    .trim()
    .split(/[\s,]+/)
    .map(Number);
  const points = [];
  for (let i = 0; i + 1 < numbers.length; i += 2) points.push([numbers[i], numbers[i + 1]]);
  return points.filter(p => p.every(Number.isFinite));
}

/** A long stroke that wavers as a hand does. */
function longStroke(count) {
  let seed = 1;
  const random = () => (seed = (seed * 16807) % 2147483647) / 2147483647 - 0.5;
  return Array.from({length: count}, (_, i) => {
    const a = (i / count) * 40 * Math.PI,
      r = 90 + (330 * i) / count;
    const at = [500 + r * Math.cos(a) + 12 * Math.sin(7 * a), 500 + r * Math.sin(a) + 12 * Math.cos(5 * a)];
    return at.map(x => Math.round((x + random()) * 100) / 100);
  });
}

/** The places where a curve's segments begin and end, and their handles, which may be dragged. Neighbours that
    meet move together, and a joint takes its handles along. */
function controlPoints(curve) {
  const {segments: s, closed} = curve,
    n = s.length,
    points = [];
  const meets = (k, l) => s[k][6] === s[l][0] && s[k][7] === s[l][1];
  const add = (k, i, kind, partners) =>
    points.push({
      kind,
      segment: k,
      index: i,
      get at() {
        return [s[k][2 * i], s[k][2 * i + 1]];
      },
      move([x, y]) {
        const dx = x - s[k][2 * i],
          dy = y - s[k][2 * i + 1];
        for (const [l, j] of [[k, i], ...partners]) {
          s[l][2 * j] = stage.round(s[l][2 * j] + dx);
          s[l][2 * j + 1] = stage.round(s[l][2 * j + 1] + dy);
        }
        for (const [l, j] of partners) if (j % 3 === 0) [s[l][2 * j], s[l][2 * j + 1]] = [x, y];
        [s[k][2 * i], s[k][2 * i + 1]] = [x, y];
      },
    });
  for (let k = 0; k < n; ++k) {
    const before = k > 0 ? k - 1 : n - 1;
    const joins = (k > 0 || closed) && meets(before, k) && (n > 1 || closed);
    add(
      k,
      0,
      'joint',
      joins
        ? [
            [k, 1],
            [before, 3],
            [before, 2],
          ]
        : [[k, 1]],
    );
    add(k, 1, 'handle', []);
    add(k, 2, 'handle', []);
    const after = (k + 1) % n;
    if (!((k + 1 < n || closed) && meets(k, after))) add(k, 3, 'joint', [[k, 2]]);
  }
  return points;
}

function shift(curve, dx, dy) {
  for (const s of curve.segments)
    for (let i = 0; i < 8; i += 2) {
      s[i] = stage.round(s[i] + dx);
      s[i + 1] = stage.round(s[i + 1] + dy);
    }
}

/** Takes the samples near one along, the farther the less. */
function pull(samples, index, [x, y], reach) {
  const [fromX, fromY] = samples[index],
    dx = x - fromX,
    dy = y - fromY;
  for (let side = -1; side <= 1; side += 2) {
    for (let i = index + (side < 0 ? -1 : 0); i >= 0 && i < samples.length; i += side) {
      const far = Math.hypot(samples[i][0] - fromX, samples[i][1] - fromY) / reach;
      if (far >= 1) break;
      const share = (1 - far * far) ** 2;
      samples[i] =
        i === index
          ? [x, y]
          : [stage.round(samples[i][0] + dx * share), stage.round(samples[i][1] + dy * share)];
    }
  }
}

function boxOf(points) {
  const box = [Infinity, Infinity, -Infinity, -Infinity];
  for (const [x, y] of points) {
    box[0] = Math.min(box[0], x);
    box[1] = Math.min(box[1], y);
    box[2] = Math.max(box[2], x);
    box[3] = Math.max(box[3], y);
  }
  return box;
}

function corners(curve) {
  const points = [];
  for (const s of curve.segments) for (let i = 0; i < 8; i += 2) points.push([s[i], s[i + 1]]);
  return points;
}

/** The samples and outlines to load, and where each begins. */
const SAMPLES = {
  wave: 'M120 380C240 820 380 820 480 500C560 240 760 200 880 620',
  loop: 'M140 700C420 820 900 260 620 220C360 190 480 640 860 760',
  heart:
    'M500 690C560 830 860 840 860 590C860 370 640 260 500 130C360 260 140 370 140 590C140 840 440 830 500 690Z',
};
