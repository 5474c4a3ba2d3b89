// The drawing: a canvas at the resolution of the device, and over it the points that can be moved.

const SHORT_PATH = 40; // segments
const PICK_MOUSE = 14,
  PICK_TOUCH = 26; // CSS pixels from a point within which it is taken

const stage = {
  box: [0, 0, 1000, 1000], // what must be seen, in curve units
  down: false, // y grows downwards, as in SVG
  panes: 1,
  scale: 1,
  origins: [[0, 0]],
  handles: [],

  begin() {
    const canvas = document.getElementById('canvas'),
      ratio = window.devicePixelRatio || 1;
    const {width, height} = document.getElementById('stage').getBoundingClientRect();
    if (canvas.width !== Math.round(width * ratio) || canvas.height !== Math.round(height * ratio)) {
      canvas.width = Math.round(width * ratio);
      canvas.height = Math.round(height * ratio);
    }
    Object.assign(this, {width, height, g: canvas.getContext('2d', {alpha: false})});
    this.g.setTransform(ratio, 0, 0, ratio, 0, 0);
    this.g.fillStyle = colours.paper;
    this.g.fillRect(0, 0, width, height);
    this.g.lineJoin = this.g.lineCap = 'round';
  },

  /** Lays the box out in the middle of each pane; they stand as they are larger, beside each other or in a column. */
  layOut(margin = 40) {
    const [x0, y0, x1, y1] = this.box;
    const sizes = [
      [this.width / this.panes, this.height],
      [this.width, this.height / this.panes],
    ];
    const title = this.panes > 1 ? 20 : 0; // pixels at the top of a pane
    const scales = sizes.map(([width, height]) => {
      const keep = Math.min(margin, width / 8, height / 8);
      return Math.min(
        (width - 2 * keep) / Math.max(x1 - x0, 1e-9),
        (height - title - 2 * keep) / Math.max(y1 - y0, 1e-9),
      );
    });
    const beside = scales[0] >= scales[1],
      [width, height] = (this.paneSize = sizes[beside ? 0 : 1]);
    this.scale = Math.max(...scales);
    const middle = [
      width / 2 - (this.scale * (x0 + x1)) / 2,
      (height + title) / 2 - ((this.scale * (y0 + y1)) / 2) * (this.down ? 1 : -1),
    ];
    this.origins = Array.from({length: this.panes}, (_, i) =>
      beside ? [middle[0] + i * width, middle[1]] : [middle[0], middle[1] + i * height],
    );
    this.beside = beside;
  },

  sign() {
    return this.down ? 1 : -1;
  },
  toScreen([x, y], pane = 0) {
    const [ox, oy] = this.origins[pane];
    return [ox + this.scale * x, oy + this.scale * y * this.sign()];
  },
  toCurve([px, py]) {
    const pane =
      this.panes === 1
        ? 0
        : Math.min(Math.max(Math.floor(this.beside ? px / this.paneSize[0] : py / this.paneSize[1]), 0), 1);
    const [ox, oy] = this.origins[pane];
    return [(px - ox) / this.scale, ((py - oy) / this.scale) * this.sign()].map(x => this.round(x));
  },
  /** To a twentieth of a pixel at least, so that addresses are short. */
  round(x) {
    return Number(x.toFixed(Math.min(Math.max(Math.ceil(Math.log10(20 * this.scale)), 0), 100)));
  },

  zoom(factor, at) {
    this.isZoomed = true;
    const [x, y] = this.toCurve(at),
      b = this.box;
    this.box = [
      x + (b[0] - x) / factor,
      y + (b[1] - y) / factor,
      x + (b[2] - x) / factor,
      y + (b[3] - y) / factor,
    ];
  },
  shift([dx, dy]) {
    this.isZoomed = true;
    const x = dx / this.scale,
      y = (dy / this.scale) * this.sign();
    this.box = [this.box[0] - x, this.box[1] - y, this.box[2] - x, this.box[3] - y];
  },

  // ---- What is drawn: curves in curve units, widths and radii in CSS pixels ----

  inPane(pane, drawing) {
    this.g.save();
    const [width, height] = this.paneSize,
      x = this.beside ? pane * width : 0,
      y = this.beside ? 0 : pane * height;
    this.g.beginPath();
    this.g.rect(x, y, width, height);
    this.g.clip();
    this.pane = pane;
    drawing(x, y);
    this.g.restore();
    this.pane = 0;
  },
  pane: 0,

  trace(curve) {
    const g = this.g,
      [ox, oy] = this.origins[this.pane],
      k = this.scale,
      down = this.sign() * k;
    let x, y;
    for (const s of curve.segments) {
      if (s[0] !== x || s[1] !== y) g.moveTo(ox + k * s[0], oy + down * s[1]);
      g.bezierCurveTo(
        ox + k * s[2],
        oy + down * s[3],
        ox + k * s[4],
        oy + down * s[5],
        ox + k * s[6],
        oy + down * s[7],
      );
      x = s[6];
      y = s[7];
    }
    if (curve.closed) g.closePath();
  },
  stroke(curves, colour, width = 2, dash = []) {
    const g = this.g;
    Object.assign(g, {strokeStyle: colour, lineWidth: width});
    g.setLineDash(dash);
    for (const curve of [curves].flat()) {
      // Short paths are drawn in less time than one that is long.
      for (let i = 0; i < curve.segments.length; i += SHORT_PATH) {
        g.beginPath();
        this.trace(
          curve.segments.length <= SHORT_PATH ? curve : {segments: curve.segments.slice(i, i + SHORT_PATH)},
        );
        g.stroke();
      }
    }
    g.setLineDash([]);
  },
  fill(curves, colour, rule = 'evenodd') {
    this.g.beginPath();
    for (const curve of [curves].flat()) this.trace(curve);
    this.g.fillStyle = colour;
    this.g.fill(rule);
  },
  line(points, colour, width = 1.5, dash = []) {
    const g = this.g;
    g.beginPath();
    for (const p of points) g.lineTo(...this.toScreen(p, this.pane));
    Object.assign(g, {strokeStyle: colour, lineWidth: width});
    g.setLineDash(dash);
    g.stroke();
    g.setLineDash([]);
  },
  dots(points, colour, radius = 3) {
    const g = this.g,
      [ox, oy] = this.origins[this.pane],
      k = this.scale,
      down = this.sign() * k;
    g.fillStyle = colour;
    if (points.length > 300) {
      // squares are drawn in less time than discs
      for (const [x, y] of points)
        g.fillRect(ox + k * x - radius / 2, oy + down * y - radius / 2, radius, radius);
      return;
    }
    g.beginPath();
    for (const [x, y] of points) {
      const px = ox + k * x,
        py = oy + down * y;
      g.moveTo(px + radius, py);
      g.arc(px, py, radius, 0, 7);
    }
    g.fill();
  },
  /** Very many points, as pixels in all panes: what was drawn before is gone. The colour is #rrggbb. */
  dust(points, colour) {
    const {width, height} = this.g.canvas,
      ratio = width / this.width,
      side = Math.max(2, Math.round(1.5 * ratio));
    if (this.image?.width !== width || this.image.height !== height)
      this.image = new ImageData(width, height);
    const pixels = new Uint32Array(this.image.data.buffer),
      k = this.scale * ratio,
      down = this.sign() * k;
    const pixel = ofColour => {
      new Uint8Array(pixels.buffer, 0, 4).set(
        [1, 3, 5].map(i => parseInt(ofColour.slice(i, i + 2), 16)).concat(255),
      );
      return pixels[0];
    };
    const value = pixel(colour);
    pixels.fill(pixel(colours.paper));
    this.origins.forEach(([ox, oy], pane) => {
      const [left, top] = this.beside ? [(pane * width) / this.panes, 0] : [0, (pane * height) / this.panes];
      const right = left + this.paneSize[0] * ratio - side,
        bottom = top + this.paneSize[1] * ratio - side;
      for (const p of points) {
        const x = Math.round(ox * ratio + k * p[0] - side / 2),
          y = Math.round(oy * ratio + down * p[1] - side / 2);
        if (!(x >= left && x <= right && y >= top && y <= bottom)) continue;
        for (let row = 0; row < side; ++row)
          pixels.fill(value, x + (y + row) * width, x + (y + row) * width + side);
      }
    });
    this.g.putImageData(this.image, 0, 0);
  },
  arrow([x, y, dx, dy], colour, size = 9) {
    const [px, py] = this.toScreen([x, y], this.pane),
      a = Math.atan2(dy * this.sign(), dx),
      g = this.g;
    g.beginPath();
    for (const turn of [0, 2.5, -2.5])
      g.lineTo(px + size * Math.cos(a + turn), py + size * Math.sin(a + turn));
    g.fillStyle = colour;
    g.fill();
  },
  /** A word beside a point, with a rim of paper. */
  label(point, text, colour, dx = 10, dy = -10) {
    const [x, y] = this.toScreen(point, this.pane),
      g = this.g;
    g.font = '600 13px system-ui, sans-serif';
    g.textBaseline = 'middle';
    Object.assign(g, {strokeStyle: colours.paper, lineWidth: 4});
    g.strokeText(text, x + dx, y + dy);
    g.fillStyle = colour;
    g.fillText(text, x + dx, y + dy);
  },

  // ---- The points that can be moved: buttons for the keyboard, pointers take the nearest ----

  /** Shows the points, {at, label, looks, colour, move}, with as few new buttons as can be. */
  show(handles) {
    const holder = document.getElementById('handles');
    while (holder.childElementCount > handles.length) holder.lastChild.remove();
    while (holder.childElementCount < handles.length) {
      const button = holder.appendChild(document.createElement('button'));
      button.type = 'button';
    }
    this.handles = handles;
    handles.forEach((handle, i) => {
      const button = holder.children[i],
        [x, y] = this.toScreen(handle.at);
      const isOut = x < -30 || y < -30 || x > this.width + 30 || y > this.height + 30;
      button.className = `handle ${handle.looks}`;
      button.style.cssText = `transform:translate(${x.toFixed(1)}px,${y.toFixed(1)}px);--looks:var(--${handle.colour})`;
      button.dataset.index = i;
      button.setAttribute('aria-label', `${handle.label}, at ${short(handle.at[0])}, ${short(handle.at[1])}`);
      button.hidden = isOut && document.activeElement !== button;
    });
  },
  /** The nearest point within reach of a place of the screen. */
  pick(at, reach) {
    let best = -1,
      least = reach;
    this.handles.forEach((handle, i) => {
      for (let pane = 0; pane < this.panes; ++pane) {
        const [x, y] = this.toScreen(handle.at, pane),
          far = Math.hypot(x - at[0], y - at[1]);
        // Of points at one place the handle is taken, which could not be reached otherwise.
        if (far < least || (far === least && best >= 0)) {
          least = far;
          best = i;
        }
      }
    });
    return best;
  },
};

let colours = {};
function readColours() {
  const style = getComputedStyle(document.documentElement);
  for (const name of [
    'paper',
    'ground',
    'ink',
    'soft',
    'line',
    'control',
    'accurate',
    'plain',
    'other',
    'mark',
  ]) {
    colours[name] = style.getPropertyValue(`--${name}`).trim();
  }
}

function short(x) {
  return String(Math.round(x * 100) / 100);
}
