// Several screens that show one slide together.

import assert from "node:assert/strict";
import { test } from "node:test";
import { openScreen, useBrowser, waitForSlide } from "../support/browser.mjs";
import { showValues } from "../support/value_deck.mjs";

useBrowser();

// The picture stands still: every one is painted for itself.
const stillness = { isClockHeld: true, reducedMotion: "reduce" };

// The largest difference of a channel between two pictures of one size, as a blank page sees them.
function difference(page, ...pictures) {
  return page.evaluate(
    async (coded) => {
      const read = async (data) => {
        const image = new Image();
        image.src = `data:image/png;base64,${data}`;
        await image.decode();
        const canvas = new OffscreenCanvas(image.width, image.height).getContext("2d");
        canvas.drawImage(image, 0, 0);
        return canvas.getImageData(0, 0, image.width, image.height).data;
      };
      const [one, other] = await Promise.all(coded.map(read));
      if (one.length !== other.length) return Infinity;
      return one.reduce((most, value, i) => Math.max(most, Math.abs(value - other[i])), 0);
    },
    pictures.map((picture) => picture.toString("base64")),
  );
}

const pictureOf = (page, clip) => page.screenshot({ clip, animations: "disabled" });

test("the screens of a wall show what one large screen would, to the pixel", async (t) => {
  const { show } = await showValues(t, ["one", "two"]);
  const blank = await openScreen(t, "about:blank");
  const walls = [
    { columns: 2, rows: 1, parts: [1, 2], viewport: { width: 640, height: 720 } },
    // Wider than the slide, so that the outer ones have a margin, and of odd widths.
    { columns: 3, rows: 2, parts: [1, 2, 6], viewport: { width: 421, height: 181 } },
  ];
  for (const { columns, rows, parts, viewport } of walls) {
    const { width, height } = viewport;
    const large = { width: columns * width, height: rows * height };
    const whole = await openScreen(t, show.url, { ...stillness, viewport: large });
    await waitForSlide(whole, 1);
    for (const number of parts) {
      const address = `${show.url}?part=${columns}x${rows}/${number}`;
      const part = await openScreen(t, address, { ...stillness, viewport });
      await waitForSlide(part, 1);
      const clip = { x: ((number - 1) % columns) * width, y: Math.floor((number - 1) / columns) * height, width, height };
      const [seen, wanted] = [await pictureOf(part), await pictureOf(whole, clip)];
      // Gradients are rounded to a step of 256 by where their layer lies.
      assert.ok((await difference(blank, seen, wanted)) <= 1, address);
    }
  }
});

test("a part blanks, keeps to a slide or a shape, and says so when there is none such", async (t) => {
  const { show } = await showValues(t, ["one", "two"]);
  const left = await openScreen(t, `${show.url}?part=2x1/1&slide=2`);
  await waitForSlide(left, 2);
  const edges = (page) =>
    page.evaluate(() => {
      const { left, right } = document.querySelector("#stage").getBoundingClientRect();
      return [Math.round(left), Math.round(right)];
    });
  // Both are as large as a wall of 2560 × 720 lets them be.
  assert.deepEqual(await edges(left), [640, 1920]);
  const shape = await openScreen(t, `${show.url}?shape=p2%20Item&part=2x1/2`);
  const [from, to] = await edges(shape);
  assert.equal((from + to) / 2, 0);
  await show.command("blank/white");
  await left.waitForFunction(() => document.documentElement.dataset.blank === "white");
  assert.deepEqual(await left.locator("#cover").boundingBox(), { x: 0, y: 0, width: 1280, height: 720 });

  const lost = await openScreen(t, `${show.url}?part=2x1/3%3Cb%3E`);
  assert.match(await lost.locator("main").innerText(), /part=2x1\/3<b>[^]*part=2x1\/1\s+the left one/);
});
