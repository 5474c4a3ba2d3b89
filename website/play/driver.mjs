// A browser driven over the WebDriver protocol: https://www.w3.org/TR/webdriver2.
import {spawn} from 'node:child_process';
import {writeFileSync} from 'node:fs';
import {setTimeout as wait} from 'node:timers/promises';

const PORT = 9000 + (process.pid % 1000);

async function ask(method, path, body) {
  const answer = await fetch(`http://127.0.0.1:${PORT}${path}`, {method, body: body && JSON.stringify(body)});
  const {value} = await answer.json();
  if (value?.error) throw new Error(`${path}: ${value.error}: ${value.message}`);
  return value;
}

/** Starts the driver, gives it to a function, and ends it whatever happens. */
export async function withDriver(use) {
  const driver = spawn('chromedriver', [`--port=${PORT}`], {stdio: 'ignore'});
  try {
    for (let tries = 0; ; ++tries) {
      try {
        await ask('GET', '/status');
        break;
      } catch (error) {
        if (tries > 150) throw error;
        await wait(200);
      }
    }
    return await use();
  } finally {
    driver.kill();
  }
}

/** A window of a size, which is asked with a finger or with a mouse. */
export class Browser {
  static async open(width, height, isTouch) {
    const {sessionId} = await ask('POST', '/session', {
      capabilities: {
        alwaysMatch: {
          browserName: 'chrome',
          'goog:loggingPrefs': {browser: 'ALL'},
          'goog:chromeOptions': {
            args: ['--headless=new', '--no-sandbox', '--disable-gpu', '--disable-dev-shm-usage'],
            mobileEmulation: {deviceMetrics: {width, height, pixelRatio: isTouch ? 2 : 1, touch: isTouch}},
          },
        },
      },
    });
    return Object.assign(new Browser(), {
      path: `/session/${sessionId}`,
      width,
      pointer: isTouch ? 'touch' : 'mouse',
    });
  }
  close() {
    return ask('DELETE', this.path);
  }
  async show(url) {
    await ask('POST', `${this.path}/url`, {url: 'about:blank'});
    await ask('POST', `${this.path}/url`, {url});
    await this.until(() => 'ready' in document.body.dataset && frames.length > 0);
  }
  /** What a function returns in the page, which may wait. */
  run(code, ...args) {
    return ask('POST', `${this.path}/execute/sync`, {script: `return (${code})(...arguments)`, args});
  }
  async until(code, ...args) {
    for (let tries = 0; !(await this.run(code, ...args)); ++tries) {
      if (tries > 300) throw new Error(`waited in vain for ${code}`);
      await wait(50);
    }
  }
  /** Draws a line with the pointer, by way of some places. */
  drag(places, pointer = this.pointer, milliseconds = 16) {
    const move = ([x, y]) => ({
      type: 'pointerMove',
      duration: milliseconds,
      x: Math.round(x),
      y: Math.round(y),
    });
    return ask('POST', `${this.path}/actions`, {
      actions: [
        {
          type: 'pointer',
          id: pointer,
          parameters: {pointerType: pointer},
          actions: [
            {...move(places[0]), duration: 0},
            {type: 'pointerDown', button: 0},
            ...places.slice(1).map(move),
            {type: 'pointerUp', button: 0},
          ],
        },
      ],
    });
  }
  press(keys) {
    return ask('POST', `${this.path}/actions`, {
      actions: [
        {
          type: 'key',
          id: 'keys',
          actions: [
            ...keys.map(value => ({type: 'keyDown', value})),
            ...keys.map(value => ({type: 'keyUp', value})),
          ],
        },
      ],
    });
  }
  command(cmd, params = {}) {
    return ask('POST', `${this.path}/goog/cdp/execute`, {cmd, params});
  }
  async picture(file) {
    writeFileSync(file, Buffer.from(await ask('GET', `${this.path}/screenshot`), 'base64'));
  }
  /** What the page has complained of since the last time. */
  async complaints() {
    return (await ask('POST', `${this.path}/se/log`, {type: 'browser'})).map(each => each.message);
  }
}
