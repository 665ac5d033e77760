// A deck that is replaced while it is shown, and one that is damaged.

import assert from "node:assert/strict";
import { copyFileSync, rmSync, truncateSync } from "node:fs";
import { describe, it } from "node:test";
import { editPart } from "../support/deck.mjs";
import { setValues, showValues, valueDeck } from "../support/value_deck.mjs";
import { orderSlides, replaceDeck, takeUp, writeInPieces } from "../support/versions.mjs";
import { until } from "../support/wait.mjs";

const slideCount = (show, count) =>
  until(`${count} slides`, async () => (await show.state()).slideCount === count, takeUp);

describe("a deck that changes while it is shown", { concurrency: 3 }, () => {
  it("goes on with its data and where it stood, however it is written", async (t) => {
    const { sandbox, deck, show } = await showValues(t, ["a"]);
    const unchanging = await sandbox.show(deck, "--no-reload");
    const events = show.events();
    await show.command("goto/2");
    await show.command("blank/white");

    replaceDeck(deck, (fresh) => orderSlides(fresh, [2, 1, 3]));
    await show.shows(2, "p1 Item", "a");
    const position = () => events.all.filter(({ event }) => event === "position").at(-1)?.data;
    await until("the moved slide", () => position()?.position === 1, takeUp);
    assert.equal(position().blank, "white", "the operator's blank screen stays");
    setValues(sandbox, "b");
    await show.shows(2, "p1 Item", "b");

    replaceDeck(deck, (fresh) => orderSlides(fresh, [2, 3]));
    await slideCount(show, 2);
    // The one behind it is on show.
    assert.equal((await show.state()).position, 1);

    const whole = sandbox.path("whole.pptx");
    copyFileSync(deck, whole);
    orderSlides(whole, [1]);
    await writeInPieces(deck, whole, 6, 700);
    await slideCount(show, 1);
    setValues(sandbox, "c");
    await show.shows(1, "p1 Item", "c");
    await show.command("blank/off");
    assert.equal((await unchanging.state()).slideCount, 3);
    assert.deepEqual(sandbox.errorLog(), []);
    assert.deepEqual(await show.stop(), { code: 0, signal: null });
    assert.equal(show.error, "");
  });

  it("is left alone while it is broken, which is told once, and taken up when it is whole", async (t) => {
    const { sandbox, deck } = valueDeck(t, "a");
    const whole = sandbox.path("whole.pptx");
    copyFileSync(deck, whole);
    const show = await sandbox.show(deck);
    truncateSync(deck, 5000);
    await until("the line in the log", () => sandbox.errorLog().length > 0, 3 * takeUp);
    assert.match(sandbox.errorLog()[0], /new version of .*shop\.pptx is not shown.*damaged or not complete/s);
    setValues(sandbox, "b");
    await show.shows(1, "p1 Item", "b");
    assert.equal((await show.state()).slideCount, 3);

    // All of its slides could be shown: a show goes on with nothing less than the author saved.
    replaceDeck(deck, (fresh) => {
      copyFileSync(whole, fresh);
      editPart(fresh, "ppt/theme/theme1.xml", (xml) => xml.slice(0, 500));
      orderSlides(fresh, [1]);
    });
    await until("another line", () => sandbox.errorLog().length > 1, 3 * takeUp);
    assert.match(sandbox.errorLog()[1], /theme1\.xml/);
    assert.equal((await show.state()).slideCount, 3);

    rmSync(deck);
    copyFileSync(whole, deck);
    orderSlides(deck, [3, 1]);
    await slideCount(show, 2);
    setValues(sandbox, "c");
    await show.shows(2, "p1 Item", "c");
    assert.equal(sandbox.errorLog().length, 2);
    assert.deepEqual(await show.stop(), { code: 0, signal: null });
    assert.match(show.error, /errors during the show/, "those before the last version count");
  });

});

it("a slide that cannot be read is left out of what is shown, which is told once", async (t) => {
  const { sandbox, deck } = valueDeck(t, "a");
  editPart(deck, "ppt/slides/slide3.xml", (xml) => xml.slice(0, 900));
  const show = await sandbox.show(deck);
  await show.command("goto/3");
  assert.match((await show.get("/")).text, /class="frame current"><section class="slide" id="s3"/);
  await show.command("goto/1");
  setValues(sandbox, "b");
  await show.shows(1, "p1 Item", "b");
  await show.command("goto/3");
  assert.equal(sandbox.errorLog().length, 1, sandbox.errorLog().join("\n"));
  assert.deepEqual(await show.stop(), { code: 0, signal: null });
  const { findings } = JSON.parse(sandbox.run("check", deck, "--json").out);
  assert.ok(findings.some(({ gravity }) => gravity === "broken"));
});
