// Whole pieces of an author's work, with every gesture counted: a click, a drag, a key.

import assert from "node:assert/strict";
import { test } from "node:test";
import { useBrowser } from "../support/browser.mjs";
import { digest, renameShape } from "../support/deck.mjs";
import { openDeskPage } from "../support/desk_page.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { until } from "../support/wait.mjs";
import { sampleDeck } from "../support/value_deck.mjs";

useBrowser();

const menu = [
  ["Item", "Price"],
  ["Rye bread", "€4.80"],
  ["Plum cake", "€4.10"],
  ["Oat roll", "€0.90"],
  ["Pretzel", "€1.20"],
];

// The shop's deck without links, with a menu of four lines beside it.
function bareShop(sandbox) {
  const deck = sandbox.bareSample("shop");
  sandbox.write("shop/menu.txt", menu);
  return deck;
}

// What a person does with the pointer, counted.
function handOf(page) {
  const centre = async (target) => {
    const box = await target.boundingBox();
    return [box.x + box.width / 2, box.y + box.height / 2];
  };
  return {
    gestures: 0,
    async click(target, options) {
      ++this.gestures;
      await target.click(options);
    },
    async drag(from, to) {
      ++this.gestures;
      await page.mouse.move(...(await centre(from)));
      await page.mouse.down();
      await page.mouse.move(...(await centre(to)), { steps: 5 });
      await page.mouse.up();
    },
    // Draws a rectangle around both.
    async enclose(first, last) {
      ++this.gestures;
      const [from, to] = [await first.boundingBox(), await last.boundingBox()];
      await page.mouse.move(from.x - 3, from.y - 3);
      await page.mouse.down();
      await page.mouse.move(to.x + to.width + 3, to.y + to.height + 3, { steps: 5 });
      await page.mouse.up();
    },
  };
}

async function openDesk(t, desk) {
  const opened = await openDeskPage(t, desk);
  return { ...opened, hand: handOf(opened.page) };
}

const linksInFile = (sandbox, deck, slide = 1) => {
  const { slides } = JSON.parse(sandbox.done("shapes", deck, "--json"));
  const links = slides[slide - 1].shapes.filter(({ link }) => link?.connection);
  return new Map(links.map(({ name, link }) => [name, `${link.connection} ${link.column} ${link.row}`]));
};

const isSaved = (page) => page.locator("#toolbar .unsaved", { hasText: /^saved$/ }).waitFor();

test("a board of 4 × 2 fields from a text file beside the deck takes at most 8 clicks", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = bareShop(sandbox);
  const { page, hand, sees } = await openDesk(t, await sandbox.edit(deck));

  await hand.click(page.getByRole("button", { name: "menu.txt" }));
  await hand.click(page.getByRole("dialog", { name: "Text file" }).getByRole("button", { name: "OK" }));
  await page.getByRole("columnheader", { name: "Price" }).waitFor();
  await hand.click(page.getByRole("button", { name: "Link by names" }));
  await hand.click(page.getByRole("dialog", { name: "Link by names" }).getByRole("button", { name: "OK" }));
  await sees("p4 Price", "€1.20");
  await hand.click(page.getByRole("button", { name: "Save", exact: true }));
  await isSaved(page);

  assert.ok(hand.gestures <= 8, `${hand.gestures} clicks`);
  const links = linksInFile(sandbox, deck);
  for (const row of [1, 2, 3, 4]) {
    for (const column of ["Item", "Price"]) assert.equal(links.get(`p${row} ${column}`), `001 ${column} ${row}`);
  }
});

test("the 45 fields of a departures board without links take at most 20 gestures", async (t) => {
  const columns = ["Time", "Flight", "Destination", "Gate", "Status"];
  const rows = [1, 2, 3, 4, 5, 6, 7, 8, 9];
  const { sandbox, deck } = sampleDeck(t, "departures");
  for (const row of rows)
    for (const column of columns) sandbox.done("unlink", deck, "--slide", 1, "--shape", `r${row} ${column}`);
  const { page, hand, shape, stage, isLinked } = await openDesk(t, await sandbox.edit(deck));
  await page.getByRole("columnheader", { name: "Gate", exact: true }).waitFor();

  for (const column of columns) {
    await hand.enclose(shape(`r1 ${column}`), shape(`r9 ${column}`));
    await until("nine shapes", async () => (await stage.locator("[aria-selected=true]").count()) === 9);
    await hand.drag(page.getByRole("columnheader", { name: column, exact: true }), shape(`r1 ${column}`));
    await isLinked(`r9 ${column}`, `${column} · 9`);
  }
  await hand.click(page.getByRole("button", { name: "Save", exact: true }));
  await isSaved(page);

  assert.ok(hand.gestures <= 20, `${hand.gestures} gestures`);
  const links = linksInFile(sandbox, deck);
  for (const row of rows)
    for (const column of columns) assert.equal(links.get(`r${row} ${column}`), `001 ${column} ${row}`);
});

test("the keyboard alone links a deck and saves it", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = bareShop(sandbox);
  const { page, sees, isLinked } = await openDesk(t, await sandbox.edit(deck));
  const keys = async (...names) => {
    for (const name of names) await page.keyboard.press(name);
  };
  const focusIn = (panel) =>
    page.waitForFunction((id) => document.getElementById(id).contains(document.activeElement), panel);

  await keys("F6");
  await focusIn("toolbar");
  await keys("Shift+F6");
  await focusIn("tray");
  const focused = () => page.evaluate(() => document.activeElement.textContent);
  for (let i = 0; i < 20 && !(await focused()).startsWith("menu.txt"); ++i) await keys("Tab");
  await keys("Enter");
  const dialog = page.getByRole("dialog", { name: "Text file" });
  await dialog.waitFor();
  assert.equal(await focused(), "OK"); // it is filled in
  await keys("Enter");
  await dialog.waitFor({ state: "detached" });
  await page.getByRole("columnheader", { name: "Price" }).waitFor();

  // To the first price by its direction, and to the cell that it is to show.
  while (!(await page.evaluate(() => document.getElementById("stage").contains(document.activeElement))))
    await keys("F6");
  const active = () =>
    page.evaluate(() => document.querySelector("#stage .frame-of[aria-selected=true] .said")?.textContent);
  for (let i = 0; i < 30 && (await active()) !== "p1 Item"; ++i) await keys("Tab");
  await keys("ArrowRight");
  await until("p1 Price", async () => (await active()) === "p1 Price");
  await keys("F6", "F6", "F6");
  await focusIn("tray");
  await keys("ArrowRight", "Enter");
  await sees("p1 Price", "shows €4.80");

  // A row down, undone, done again; then its page; then saved.
  await keys("Alt+F10", "Alt+ArrowDown");
  await isLinked("p1 Price", "Price · 2");
  await keys("Control+z");
  await isLinked("p1 Price", "Price · 1");
  await keys("F2");
  await focusIn("properties");
  await keys("Control+s");
  await isSaved(page);
  assert.deepEqual([...linksInFile(sandbox, deck)], [["p1 Price", "001 Price 1"]]);
});

test("text that was typed is there after the desk was stopped and started", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = bareShop(sandbox);
  const token = "0123456789abcdef0123456789abcdef";
  const args = ["--token-file", sandbox.write("token", `${token}\n`)];
  const first = await sandbox.edit(deck, ...args);
  const { page } = await openDesk(t, { url: `${first.url}#token=${token}` });
  await page.getByRole("button", { name: "menu.txt" }).click();
  const description = page.getByRole("dialog", { name: "Text file" }).getByLabel("Description");
  await description.fill("What we bake today");
  await first.stop();
  await page.getByText("The desk does not answer since").waitFor();
  await sandbox.edit(deck, "--port", first.port, ...args);
  await page.getByText("The desk does not answer since").waitFor({ state: "hidden" });
  await until("the dialog of the new desk", async () => (await page.getByRole("dialog").count()) === 1);
  assert.equal(await description.inputValue(), "What we bake today");
  await page.getByRole("dialog").getByRole("button", { name: "OK" }).click();
  await page.getByRole("tab", { name: "001 What we bake today" }).waitFor();
});

test("a deck whose PowerPoint is on another machine is downloaded, as is its copy, and its newer version uploaded", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("shop");
  const desk = await sandbox.edit(deck);
  const { page, shape } = await openDesk(t, desk);
  const choose = async (name) => {
    await page.getByRole("button", { name: "More commands" }).click();
    await page.getByRole("menuitem", { name }).click();
  };
  // Where what a press downloads lies then.
  const downloaded = async (name, press) => {
    const [download] = await Promise.all([page.waitForEvent("download"), press]);
    assert.equal(download.suggestedFilename(), name);
    await download.saveAs(sandbox.path(`away ${name}`));
    return sandbox.path(`away ${name}`);
  };
  const away = await downloaded("shop.pptx", choose("Download the deck as it was saved"));
  assert.equal(digest(away), digest(deck));
  await choose(/Off-line copy/);
  await page.getByRole("dialog").getByRole("button", { name: "OK" }).click();
  const copy = await downloaded("shop-offline.pptx", page.getByRole("button", { name: "Download it" }).click());
  assert.equal(digest(copy), digest(sandbox.path("shop/shop-offline.pptx")));

  renameShape(away, 1, "p1 Item", "First");
  const upload = async (file) => {
    const [chooser] = await Promise.all([page.waitForEvent("filechooser"), choose("Upload a newer version of the deck…")]);
    await chooser.setFiles(file);
  };
  await upload(sandbox.write("no deck.pptx", "nothing\n"));
  await page.getByText(/no deck|cannot be opened|cannot be read/).first().waitFor();
  assert.equal(await shape("p1 Item").count(), 1);
  await upload(away);
  await shape("First").waitFor();
  assert.equal(digest(deck), digest(away));
});
