// What the audience sees: live values on a screen that never flickers.

import assert from "node:assert/strict";
import { renameSync } from "node:fs";
import { test } from "node:test";
import { elementId, holdStill, renameShape } from "../support/deck.mjs";
import { isUntouched, openScreen, openValues, shownText, useBrowser, waitForSlide, waitForText } from "../support/browser.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeValueDeck, sampleDeck, setValues, shapes, showValues } from "../support/value_deck.mjs";
import { refresh } from "../support/wait.mjs";

useBrowser();

test("a changed value appears within a refresh, and nothing else is touched", async (t) => {
  const { sandbox, deck, page } = await openValues(t, ["one", "two", "three"]);
  const id = elementId(deck, 1, "p2 Item");
  assert.equal(await shownText(page, id), "two");
  // Once the stream has delivered its first picture, whatever changes is an answer to data.
  setValues(sandbox, "one", "second", "three");
  await waitForText(page, id, "second", refresh);
  await page.evaluate(() => {
    window.changed = new Set();
    const note = (node) =>
      window.changed.add(node.closest?.("[id]")?.id ?? node.parentElement?.closest("[id]")?.id ?? "");
    new MutationObserver((records) => {
      for (const { type, target, removedNodes } of records) {
        if (type !== "childList") note(target);
        for (const node of removedNodes) note(node);
        if (removedNodes.length === 0 && type === "childList") window.changed.add(`added to ${target.id}`);
      }
    }).observe(document.documentElement, {
      subtree: true,
      childList: true,
      characterData: true,
      attributes: true,
    });
    for (const element of document.querySelectorAll("*")) element.mark = true;
  });
  setValues(sandbox, "one", "zwei", "three");
  await waitForText(page, id, "zwei", refresh);
  const touched = await page.evaluate(
    (name) =>
      [...document.querySelectorAll("#stage, #stage *")]
        .filter((e) => !e.mark && !e.closest(`#${name}`))
        .map((e) => e.outerHTML),
    id,
  );
  assert.deepEqual(touched, []);
  const elsewhere = await page.evaluate((name) => {
    const own = document.getElementById(name);
    return [...window.changed].filter(
      (changed) => changed !== name && changed !== "" && !own.querySelector(`[id="${changed}"]`),
    );
  }, id);
  assert.deepEqual(elsewhere, []);
  assert.ok(await isUntouched(page));
});

test("the sample decks are drawn whole, with every picture and value", async (t) => {
  for (const name of ["departures", "plant", "shop"]) {
    await t.test(name, async (t) => {
      const { sandbox, deck } = sampleDeck(t, name);
      holdStill(deck);
      const show = await sandbox.show(deck);
      const page = await openScreen(t, "about:blank");
      const faults = [];
      // What could not be fetched is told there, too.
      page.on("console", (message) => message.type() === "error" && faults.push(message.text()));
      await page.goto(show.url);
      const { slides } = await show.state();
      for (const { index, shapes } of slides) {
        await show.command(`goto/${index}`);
        await waitForSlide(page, index);
        const broken = await page.evaluate(async () => {
          const images = [...document.querySelectorAll(".frame.current img")];
          await Promise.all(images.map((image) => image.decode().catch(() => {})));
          return images.filter((image) => image.naturalWidth === 0).map((image) => image.src);
        });
        assert.deepEqual(broken, []);
        const { texts, ids } = await page.evaluate(() => ({
          texts: document.querySelector(".frame.current").textContent,
          ids: [...document.querySelectorAll("[id]")].map(({ id }) => id),
        }));
        // Clocks may have gone on since the state was asked for.
        const missing = shapes.filter(
          ({ sourceType, text }) => sourceType === 2 && text !== null && !texts.includes(text.trim()),
        );
        assert.deepEqual(missing, []);
        assert.equal(new Set(ids).size, ids.length, "ids are unique");
      }
      assert.deepEqual(faults, []);
    });
  }
});

test("a screen opened late shows the present state at once, even before its scripts run", async (t) => {
  const { sandbox, deck, show } = await showValues(t, ["old", "old"]);
  setValues(sandbox, "fresh & new", "<i>x</i>");
  await show.shows(1, "p1 Item", "fresh & new");
  const page = await openScreen(t, show.url, { javaScriptEnabled: false });
  assert.equal(await page.locator(`#${elementId(deck, 1, "p1 Item")}`).innerText(), "fresh & new");
  assert.equal(await page.locator(`#${elementId(deck, 1, "p2 Item")}`).innerText(), "<i>x</i>");
  await show.command("goto/3");
  await show.command("blank/white");
  const late = await openScreen(t, show.url);
  await waitForSlide(late, 3);
  const cover = late.locator("#cover");
  assert.equal(await cover.evaluate((element) => getComputedStyle(element).backgroundColor), "rgb(255, 255, 255)");
  assert.ok(await cover.isVisible());
});

const hostile = [
  ["a script", `<script>window.owned = 1</script>`],
  ["an event handler", `<img src=x onerror="window.owned = 1"><svg onload='window.owned = 1'>`],
  ["a way out of an attribute", `"'></p></section><iframe srcdoc="<script>parent.owned=1</script>">`],
  ["a template and entities", "{{title}} ${window.owned = 1} &lt;b&gt; &amp;amp; &#65; ]]> <!-- -->"],
  ["a javascript: link", `<a href="javascript:window.owned=1">here</a>`],
  ["emoji", "🏴‍☠️👩‍👩‍👧‍👦🇨🇭 e\u0301 𝔘"],
  ["right-to-left text", "שלום עולם - مرحبا 123"],
  ["a lone override of direction", "\u202Eabc \u2066def"],
  ["combining marks without end", "Z" + "\u0301\u0489".repeat(200)],
  ["JSON and line separators", `\\u0000 \\"}],"x":[{" \u2028 \u2029 \u0085 end`],
];

test("values are text, whatever they look like, and so are names of decks and shapes", async (t) => {
  const sandbox = new Sandbox(t);
  const values = hostile.map(([, value]) => value);
  const title = `"><img src=x onerror=alert(1)> & 'ü' {{current}}`;
  const made = makeValueDeck(sandbox, ...values.map(() => "calm"));
  const ids = values.map((_, i) => elementId(made, 1, shapes[i]));
  const names = [`</script><script>alert("1")</script>`, ...shapes.slice(1)];
  renameShape(made, 1, shapes[0], names[0]);
  const deck = sandbox.path(`shop/${title}.pptx`);
  renameSync(made, deck);
  const show = await sandbox.show(deck);
  const page = await openScreen(t, show.url);
  assert.equal(await page.title(), title);
  assert.equal((await show.state()).deck, deck);
  const isSame = ([id, text]) => {
    const plain = (each) => each.replace(/\s+/g, " ").trim();
    return plain(document.getElementById(id).textContent) === plain(text);
  };
  setValues(sandbox, ...values);
  await show.shows(1, names[values.length - 1], values.at(-1));
  await page.waitForFunction(isSame, [ids.at(-1), values.at(-1)], { polling: 25 });
  const late = await openScreen(t, show.url);
  for (const [i, [name, value]] of hostile.entries()) {
    assert.equal(await show.text(1, names[i]), value, name);
    assert.ok(await page.evaluate(isSame, [ids[i], value]), `${name} on a screen that was open`);
    assert.ok(await late.evaluate(isSame, [ids[i], value]), `${name} on a screen opened late`);
  }
  for (const each of [page, late]) {
    assert.equal(await each.evaluate(() => window.owned), undefined);
    assert.equal(await each.evaluate(() => document.querySelectorAll("script").length), 1);
    const harmful = "iframe, #stage a, img[src=x], [onload], [onerror]";
    assert.equal(await each.locator(harmful).count(), 0);
  }
  assert.ok(await isUntouched(page));
  assert.deepEqual(sandbox.errorLog(), []);
});
