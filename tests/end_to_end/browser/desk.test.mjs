// The desk in a browser: choosing, linking, undoing and saving, by pointer and by keyboard.

import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { test } from "node:test";
import { useBrowser } from "../support/browser.mjs";
import { openDeskPage } from "../support/desk_page.mjs";
import { until } from "../support/wait.mjs";
import { sampleDeck } from "../support/value_deck.mjs";

useBrowser();

async function openDesk(t, sample, { prepare, ...options } = {}) {
  const { sandbox, deck } = sampleDeck(t, sample);
  prepare?.(sandbox, deck);
  const desk = await sandbox.edit(deck);
  return { sandbox, deck, desk, ...(await openDeskPage(t, desk, options)) };
}

const chosen = (list) =>
  list.locator("[aria-selected=true]").evaluateAll((all) => all.map((each) => each.firstElementChild.textContent));

test("shapes are chosen by pointer and keys, on the slide and in the list", async (t) => {
  const { page, stage, shape } = await openDesk(t, "departures");
  const list = page.getByRole("listbox", { name: "Shapes", exact: true });
  const seesChosen = (...names) =>
    until(`${names} chosen`, async () => (await chosen(stage)).sort().join() === names.sort().join());

  await shape("r1 Gate").click();
  await seesChosen("r1 Gate");
  await shape("r2 Gate").click({ modifiers: ["Shift"] });
  await shape("r3 Gate").click({ modifiers: ["Control"] });
  await seesChosen("r1 Gate", "r2 Gate", "r3 Gate");
  await shape("r2 Gate").click({ modifiers: ["Control"] });
  await seesChosen("r1 Gate", "r3 Gate");
  assert.deepEqual((await chosen(list)).sort(), ["r1 Gate", "r3 Gate"]);

  // A rectangle takes what lies wholly inside of it.
  const [from, to] = [await shape("r1 Time").boundingBox(), await shape("r2 Flight").boundingBox()];
  await page.mouse.move(from.x - 4, from.y - 4);
  await page.mouse.down();
  await page.mouse.move(to.x + to.width + 4, to.y + to.height + 4, { steps: 3 });
  await page.mouse.up();
  await seesChosen("r1 Time", "r2 Time", "r1 Flight", "r2 Flight");

  // Keys go to the next one, to the nearest one, and away.
  await page.keyboard.press("Escape");
  await seesChosen();
  await shape("r1 Time").click();
  await page.keyboard.press("ArrowDown");
  await seesChosen("r2 Time");
  await page.keyboard.press("ArrowRight");
  await seesChosen("r2 Flight");
  await page.keyboard.press("Shift+ArrowDown");
  await seesChosen("r2 Flight", "r3 Flight");
  await page.keyboard.press("F6");
  await page.keyboard.press("Alt+F10");
  await page.keyboard.press("ArrowDown");
  await until("one chosen in the list", async () => (await chosen(list)).length === 1);
  await page.keyboard.press("PageDown");
  await page.getByRole("listbox", { name: "Slide 2", exact: true }).waitFor();
});

test("shapes are found by cell, by column and by connection, and commands by their words", async (t) => {
  const { page, stage, shape } = await openDesk(t, "departures");
  const lit = page.locator("[data-lit]");
  await page.getByRole("grid", { name: "Data" }).locator("tr[data-row='2'] td[data-column='3']").hover();
  await until("the shape lit", async () => (await lit.locator(".said").allInnerTexts()).join() === "r2 Gate");
  await shape("r3 Gate").hover();
  const row = page.locator("tr", { has: page.locator("td[data-lit]") });
  await until("the cell lit", async () => (await row.count()) === 1 && (await row.getAttribute("data-row")) === "3");

  const sees = (count, list = stage) => until(`${count} chosen`, async () => (await chosen(list)).length === count);
  const uses = () => page.getByRole("menuitem", { name: /^Show uses/ }).click();
  await page.getByRole("columnheader", { name: "Gate", exact: true }).click({ button: "right" });
  await uses();
  await sees(9);
  assert.ok((await chosen(stage)).every((name) => /^r\d Gate$/.test(name)));

  // Those of the other slides are marked, and selected when one goes there.
  await page.getByRole("tab", { name: "004 Destinations" }).click({ button: "right" });
  await uses();
  await sees(0);
  const marked = page.getByRole("option", { name: /^Slide 4.*of what is looked for/ });
  await marked.click();
  const there = page.getByRole("listbox", { name: "Slide 4", exact: true });
  await until("all of them chosen", async () => (await chosen(there)).length > 10);
  await page.keyboard.press("Escape");
  await page.keyboard.press("Escape");
  await until("no mark", async () => (await marked.count()) === 0);

  // Commands of no use say why.
  await page.keyboard.press("Control+k");
  const found = page.getByRole("listbox", { name: "Commands found" }).getByRole("option");
  await page.keyboard.type("save");
  await found.filter({ hasText: "Everything is saved." }).waitFor();
  await page.keyboard.press("Enter"); // does nothing
  await page.getByRole("combobox", { name: "Command" }).fill("col ind");
  await until("the display type alone", async () => (await found.count()) === 1);
  await page.keyboard.press("Enter");
  await page.getByRole("dialog").waitFor({ state: "detached" });
  const display = page.getByRole("combobox", { name: "Display type" });
  await until("the display type", async () => (await display.inputValue()) === "Column - Index");
});

test("labels stand clear of their fields, in a narrow panel and in large type as well", async (t) => {
  const { page, shape } = await openDesk(t, "departures", { viewport: { width: 2560, height: 1440 } });
  await page.evaluate(() => localStorage.setItem("panels", JSON.stringify({ right: 240 })));
  await page.reload();
  await shape("r1 Gate").click();
  await shape("r2 Gate").click({ modifiers: ["Shift"] });
  const properties = page.getByRole("region", { name: "Properties" });
  await properties.getByRole("textbox", { name: "Count up by" }).waitFor();
  const gaps = await properties.locator(".row > .label").evaluateAll((labels) =>
    labels.map((label) => {
      const text = document.createRange();
      text.selectNodeContents(label);
      return label.nextElementSibling.getBoundingClientRect().left - text.getBoundingClientRect().right;
    }),
  );
  assert.ok(gaps.length >= 5 && gaps.every((gap) => gap > 0), `${gaps}`);
});

test("the page is two files beside itself, of 60 kB at most, and makes elements of trusted texts alone", async (t) => {
  const { page } = await openDesk(t, "plant");
  const sizes = await page.evaluate(async () => {
    const files = performance.getEntriesByType("resource").map(({ name }) => name);
    const own = [location.pathname, ...files.filter((name) => /\/client\/(?!.*charts)/.test(name))];
    const answers = await Promise.all(own.map((name) => fetch(name)));
    return answers.map(({ headers }) => Number(headers.get("Content-Length")));
  });
  assert.ok(sizes.length === 3 && sizes.every((size) => size > 0), `${sizes}`);
  assert.ok(sizes.reduce((sum, size) => sum + size) <= 60_000, `${sizes}`);

  assert.match(
    await page.evaluate(() => {
      try {
        document.body.innerHTML = "<p>x</p>";
      } catch (error) {
        return `${error}`;
      }
    }),
    /TrustedHTML/,
  );
  page.faults.length = 0;
  // A chart with its title comes, as a picture as well, and goes.
  await page.getByRole("option", { name: /^Slide 3/ }).click();
  await page.waitForFunction(() => document.querySelector(".drawn deck-chart")?.shadowRoot?.querySelector("svg"));
  await page.waitForFunction(() =>
    [...document.querySelectorAll("#slides .picture")].some(({ shadowRoot }) => shadowRoot?.querySelector("deck-chart")),
  );
  await page.getByRole("option", { name: /^Slide 1/ }).click();
  await page.waitForFunction(() => !document.querySelector(".drawn deck-chart"));
});

test("nothing keeps people from using it, in light and in dark", async (t) => {
  const axe = readFileSync(new URL("../node_modules/axe-core/axe.min.js", import.meta.url), "utf8");
  for (const colorScheme of ["light", "dark"]) {
    const { page, shape } = await openDesk(t, "departures", { colorScheme });
    const look = async (what) => {
      const { violations } = await page.evaluate(() => globalThis.axe.run(document, { resultTypes: ["violations"] }));
      const grave = violations.filter(({ impact }) => impact === "serious" || impact === "critical");
      assert.deepEqual(
        grave.map(({ id, nodes }) => `${id}: ${nodes.map(({ html }) => html.slice(0, 160)).join("\n")}`),
        [],
        `${what}, ${colorScheme}`,
      );
    };
    await page.evaluate(axe);
    await look("the page");
    await shape("r1 Gate").click();
    await page.getByRole("button", { name: "More commands" }).click();
    await page.getByRole("menu").waitFor();
    await look("a menu");
    await page.getByRole("menuitem", { name: "Keys" }).click();
    await page.getByRole("dialog", { name: "Keys" }).waitFor();
    await look("a dialog");
    await page.keyboard.press("Escape");
    await page.keyboard.press("Control+k");
    await page.getByRole("dialog", { name: "Commands" }).waitFor();
    await look("the search");
    await page.keyboard.press("Escape");
    await page.getByRole("button", { name: "Check" }).click();
    await page.getByRole("tab", { name: /^Check/ }).click();
    await look("the findings");
    await page.getByRole("button", { name: "Connect data" }).click();
    await page.getByRole("menuitem", { name: "weather.txt" }).click();
    await page.getByRole("dialog", { name: "Text file" }).waitFor();
    await look("a form");
  }
});

test("a column goes to shapes by dragging, by hand and by key, and one undo takes each back", async (t) => {
  const unlinked = ["r1 Gate", "r2 Gate", "r3 Gate", "r1 Flight"];
  const { page, shape, linkOf, isLinked } = await openDesk(t, "departures", {
    prepare: (sandbox, deck) => unlinked.forEach((name) => sandbox.done("unlink", deck, "--slide", 1, "--shape", name)),
  });
  const header = (name) => page.getByRole("columnheader", { name, exact: true });

  // All that can take it show themselves, the one under the pointer with its value.
  const [from, to] = [await header("Gate").boundingBox(), await shape("r1 Gate").boundingBox()];
  await page.mouse.move(from.x + 20, from.y + 8);
  await page.mouse.down();
  await page.mouse.move(from.x + 40, from.y - 30);
  assert.ok((await page.locator(".frame-of[data-takes]").count()) > 60);
  await page.mouse.move(to.x + 10, to.y + 8, { steps: 3 });
  const value = page.locator("tr[data-row='1'] td[data-column='3']");
  assert.equal(await page.locator("[data-target] .preview").textContent(), await value.textContent());
  await page.mouse.up();
  await isLinked("r1 Gate", "Gate · 1");

  // On one of several it goes to all of them, the rows counted up.
  await shape("r2 Gate").click();
  await shape("r3 Gate").click({ modifiers: ["Shift"] });
  await page.locator("tr[data-row='2'] td[data-column='3']").dragTo(shape("r3 Gate"));
  await isLinked("r2 Gate", "Gate · 2");
  await isLinked("r3 Gate", "Gate · 3");
  await page.getByRole("button", { name: /^Undo: / }).click();
  await isLinked("r3 Gate", "");
  assert.equal(await linkOf("r2 Gate"), "");
  assert.equal(await linkOf("r1 Gate"), "Gate · 1");

  // In hand, then put down by a click; and by keys alone.
  await header("Gate").click();
  await page.locator(".chip", { hasText: "Gate" }).waitFor();
  await shape("r2 Gate").click();
  await isLinked("r2 Gate", "Gate · 2"); // the row under the cursor of the data
  await page.keyboard.press("Escape");
  await page.locator("tr[data-row='1'] td[data-column='1']").click();
  await page.keyboard.press("Enter");
  await page.locator(".chip", { hasText: "Flight" }).waitFor();
  for (
    let i = 0;
    i < 100 && (await page.locator(".frame-of[aria-selected=true] .said").allTextContents())[0] !== "r1 Flight";
    ++i
  ) {
    await page.keyboard.press("Tab");
  }
  await page.keyboard.press("Enter");
  await isLinked("r1 Flight", "Flight · 1");
  await page.locator(".chip").waitFor({ state: "hidden" });
});
