// What an author tries at the desk before it counts: sample data, slides that scroll, where data are shown.

import assert from "node:assert/strict";
import { test } from "node:test";
import { useBrowser } from "../support/browser.mjs";
import { openDeskPage } from "../support/desk_page.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

test("sample data stand in until there are data, which take their links over", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.bareSample("shop");
  sandbox.write("shop/menu.txt", [
    ["ITEM", "Cost"],
    ["Rye bread", "€4.80"],
    ["Plum cake", "€4.10"],
    ["Oat roll", "€0.90"],
  ]);
  const { page, shape, saysOf, sees, button } = await openDeskPage(t, await sandbox.edit(deck));
  await button("Try with sample data").click();
  const tab = page.getByRole("tab", { name: "000 Sample data" });
  await tab.waitFor();
  await button("Link by names").click();
  await page.getByRole("dialog", { name: "Link by names" }).getByRole("button", { name: "OK" }).click();
  await sees("p2 Item", "linked to 000 Sample data, column Item, row 2");
  await page.getByText("Sample data, not saved").waitFor();

  // Save leaves them out, and says so.
  await button("Save").click();
  const notices = page.getByLabel("Notices");
  await notices.getByText(/\d+ links to sample data are not saved\. Connect data of your own to keep them\./).waitFor();
  assert.equal(JSON.parse(sandbox.done("shapes", deck, "--json")).slides[0].shapes.filter(({ link }) => link).length, 0);
  await sees("p2 Item", "linked to 000 Sample data");

  await button("Connect data").click();
  await page.getByRole("menuitem", { name: /^menu\.txt/ }).click();
  const dialog = page.getByRole("dialog", { name: "Text file" });
  await dialog.getByText("2 columns, 3 rows").waitFor();
  await dialog.getByRole("button", { name: "OK" }).click();
  await sees("p1 Item", "linked to 001 menu, column ITEM, row 1, shows Rye bread");
  await notices.getByText(/now instead of sample data\. Sample data stay where 001 has no such column: .*'Price'/).waitFor();
  assert.match(await saysOf("p1 Price"), /000 Sample data/);

  // One step, back and forth.
  await button("Undo: Connect menu").click();
  await sees("p1 Item", "linked to 000 Sample data");
  await page.getByRole("tab", { name: "001 menu" }).waitFor({ state: "detached" });
  await button("Redo: Connect menu").click();
  await sees("p1 Item", "linked to 001 menu");
  await button("Save").click();
  await until("what can be saved", () => /p1 Item.*ITEM 1/.test(sandbox.done("shapes", deck, "--slide", 1)));
  assert.doesNotMatch(sandbox.done("shapes", deck, "--slide", 1), /p1 Price.*Price 1/);

  // With the last of its links the sample goes.
  await shape("p1 Price").click();
  await page.keyboard.press("Control+a");
  await page.keyboard.press("Delete");
  await tab.waitFor({ state: "detached" });
});

test("two windows see each other's changes, and play a slide that scrolls one at a time", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = sandbox.sample("departures");
  sandbox.done("slide", deck, 1, "--scroll", 1, "--step", 1, "--time", 300);
  const desk = await sandbox.edit(deck);
  const one = await openDeskPage(t, desk);
  const two = await openDeskPage(t, desk);
  await until("the data", async () => /shows \S+/.test(await one.saysOf("r2 Flight")));
  const flightOf = async (window, row) => (await window.saysOf(`r${row} Flight`)).match(/shows (.*)$/)[1];
  const [first, second] = [await flightOf(one, 1), await flightOf(one, 2)];
  assert.notEqual(first, second);

  await one.button("Play").click();
  await one.sees("r1 Flight", `shows ${second}`);
  await two.sees("r1 Flight", `shows ${second}`);
  await two.button("Play").click();
  await two.button("Stop").waitFor();
  await one.button("Play").waitFor();
  await two.button("Stop").click();
  await one.sees("r1 Flight", `shows ${first}`);
  assert.equal(await one.page.locator("#toolbar .unsaved").innerText(), "saved");

  await one.shape("r1 Gate").click();
  await two.page.locator(".frame-of[data-other]", { hasText: "r1 Gate" }).waitFor({ state: "attached" });
  const row = one.page.getByRole("region", { name: "Properties" }).getByLabel("Row", { exact: true });
  await row.fill("4");
  await two.isLinked("r1 Gate", "Gate · 4");
  assert.equal(await two.stage.locator("[aria-selected=true]").count(), 0);
  await two.page.getByRole("button", { name: /^Undo: / }).click();
  await one.isLinked("r1 Gate", "Gate · 1");
  await until("the page follows", async () => (await row.inputValue()) === "1");
});

test("the page of the slide show selects the shapes of a connection", async (t) => {
  const sandbox = new Sandbox(t);
  const { page, stage } = await openDeskPage(t, await sandbox.edit(sandbox.sample("departures")));
  await page.getByRole("tab", { name: /^001/ }).click({ button: "right" });
  await page.getByRole("menuitem", { name: "All connections…" }).click();
  const dialog = page.getByRole("dialog", { name: "Slide show properties" });
  await dialog.getByRole("option", { name: /^001/ }).click();
  await dialog.getByRole("button", { name: "Show uses" }).click();
  const isChosen = async () => (await stage.locator("[aria-selected=true] .said").allTextContents()).includes("r9 Gate");
  await until("its shapes chosen", isChosen);
  await dialog.getByRole("button", { name: "Close" }).last().click();
  await until("they stay so", isChosen);
});
