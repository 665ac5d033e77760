// Draws every slide of every deck of a folder with headless Chromium:
//   node deck_pictures.mjs RENDER_PAGES DECKS_DIR OUT_DIR [NAME_PART]
// RENDER_PAGES is the built program of that name. OUT_DIR/<deck>/slide-NNN.png are 960 pixels wide, the pages
// lie beside them. Needs playwright-core (NODE_PATH or tests/end_to_end/node_modules) and /usr/bin/chromium.
import { execFileSync } from 'node:child_process';
import fs from 'node:fs';
import { createRequire } from 'node:module';
import path from 'node:path';
import { pathToFileURL } from 'node:url';

const endToEnd = path.join(import.meta.dirname ?? path.dirname(process.argv[1]), '../../tests/end_to_end/');
const { chromium } = createRequire(path.resolve(endToEnd, 'package.json'))('playwright-core');

const [program, decks, out, part = ''] = process.argv.slice(2);
if (!out) {
  console.error('usage: node deck_pictures.mjs RENDER_PAGES DECKS_DIR OUT_DIR [NAME_PART]');
  process.exit(2);
}
const pictureWidth = 960;
const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
  args: ['--no-sandbox', '--disable-gpu', '--hide-scrollbars', '--allow-file-access-from-files',
    '--font-render-hinting=none', '--disable-background-networking'],
});
let failures = 0;
for (const file of fs.readdirSync(decks).filter((name) => name.endsWith('.pptx') && name.includes(part)).sort()) {
  const folder = path.join(out, file.slice(0, -5));
  fs.rmSync(folder, { recursive: true, force: true });
  let size;
  try {
    const answer = execFileSync(program, [path.join(decks, file), folder], { stdio: ['ignore', 'pipe', 'pipe'] });
    size = answer.toString().trim().split(' ').map(Number);
  } catch (error) {
    console.error(`${file}: ${error.stderr?.toString().trim() || error.message}`);
    ++failures;
    continue;
  }
  const context = await browser.newContext({
    viewport: { width: Math.ceil(size[0]), height: Math.ceil(size[1]) },
    deviceScaleFactor: pictureWidth / size[0],
  });
  const page = await context.newPage();
  for (const name of fs.readdirSync(folder).filter((entry) => entry.endsWith('.html')).sort()) {
    await page.goto(pathToFileURL(path.join(folder, name)).href);
    await page.screenshot({ path: path.join(folder, name.replace('.html', '.png')) });
  }
  await context.close();
}
await browser.close();
process.exit(failures ? 1 : 0);
