// What takes a result out of the page: a program that asks the same, and the recorded hashes.

/** A program that asks the same of the same input. */
function program() {
  const {line, print} = operation().code(state);
  const curve = (name, list) =>
    `  crv::Curve const ${name} = crv::parsePath("${toPath(list[0])}").curves.at(0);\n`;
  const needs = operation().needs;
  let input = '';
  if (state.op === 'weld')
    for (const shape of needs)
      input += `  std::vector<crv::Curve> const ${shape} = crv::parsePath("${state[shape].map(toPath).join('')}").curves;\n`;
  else if (needs[0] === 'stroke')
    input = `  std::vector<crv::Point> const samples{${state.stroke.map(([x, y]) => `{${x}, ${y}}`).join(', ')}};\n`;
  else
    needs.forEach((shape, i) => {
      input += curve(i ? 'other' : 'curve', state[shape]);
    });
  if (line.includes('mark')) input += `  crv::Position const mark(${marksOf(state)[0].join(', ')});\n`;
  return (
    `#include <crv/crv.h>\n\n#include <cstdio>\n#include <vector>\n\nint main() {\n${input}` +
    `${line.replace(/^/gm, '  ')}\n${print.map(each => `  std::printf("%.17g\\n", ${each});\n`).join('')}}\n`
  );
}

function showRecorded() {
  const button = text('button', 'Run them in this browser');
  const table = document.createElement('table');
  table.append(text('caption', 'Hashes over the bits of answers', {className: 'hidden'}));
  table
    .createTHead()
    .insertRow()
    .append(...['Operation', 'Recorded, here', ''].map(each => text('th', each, {scope: 'col'})));
  const body = table.createTBody();
  for (const [name, , questions, hash] of RECORDED) {
    const row = body.insertRow();
    row.append(text('td', `${name} × ${questions}`), text('td', ''), text('td', ''));
    row.cells[1].append(text('code', hash));
  }
  const verdict = text('p', '', {id: 'verdict', role: 'status'});
  element('recorded').replaceChildren(button, verdict, table);
  button.onclick = async () => {
    let equal = 0;
    for (const [i, [, which, questions, hash]] of RECORDED.entries()) {
      await new Promise(resolve => setTimeout(resolve));
      const [high, low] = call('bits', which, questions).numbers;
      const here = ((BigInt(high) << 32n) | BigInt(low)).toString(16).padStart(16, '0'),
        row = body.rows[i];
      row.cells[1].replaceChildren(text('code', hash), text('code', here));
      row.cells[2].replaceChildren(
        text('span', here === hash ? 'equal' : 'not equal', {className: here === hash ? 'equal' : 'unequal'}),
      );
      equal += here === hash;
    }
    verdict.textContent =
      equal === RECORDED.length
        ? 'All are equal: WebAssembly in this browser gives the bits of the program.'
        : `${RECORDED.length - equal} of ${RECORDED.length} are not equal.`;
  };
}
