// Pictures of slides with the names of their shapes on them.

import assert from "node:assert/strict";
import { readFileSync, readdirSync } from "node:fs";
import { test } from "node:test";
import { openScreen, useBrowser } from "../support/browser.mjs";
import { at, sampleDeck } from "../support/value_deck.mjs";

useBrowser();

// The colours of a picture at these places.
function coloursAt(page, file, places) {
  const source = `data:image/png;base64,${readFileSync(file).toString("base64")}`;
  return page.evaluate(
    async ([url, points]) => {
      const image = Object.assign(new Image(), { src: url });
      await image.decode();
      const canvas = Object.assign(document.createElement("canvas"), { width: image.width, height: image.height });
      const context = canvas.getContext("2d");
      context.drawImage(image, 0, 0);
      return points.map(([x, y]) => [...context.getImageData(x, y, 1, 1).data.slice(0, 3)].join(" "));
    },
    [source, places],
  );
}

test("every shape has its frame, in the colour of what can be done with it", async (t) => {
  const { sandbox, deck } = sampleDeck(t, "shop");
  sandbox.done("unlink", deck, ...at(1, "p3 Item"));
  const folder = sandbox.path("named");
  const { slides } = JSON.parse(sandbox.done("shapes", deck, "--png", folder, "--json"));
  assert.deepEqual(readdirSync(folder), slides.map(({ index }) => `slide-00${index}.png`));

  const pxOfPoint = 4 / 3; // of a picture of 1280 pixels
  const edges = ["p1 Price", "p3 Item"].map((name) => {
    const shape = slides[0].shapes.find((each) => each.name === name);
    return [Math.round(shape.left * pxOfPoint), Math.round((shape.top + shape.height * 0.8) * pxOfPoint)];
  });
  const page = await openScreen(t, "about:blank");
  const [linked, free] = await coloursAt(page, `${folder}/slide-001.png`, edges);
  assert.equal(linked, "10 125 51");
  assert.equal(free, "18 87 194");
});
