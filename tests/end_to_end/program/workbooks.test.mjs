// A show on a workbook that is saved anew while it runs.

import assert from "node:assert/strict";
import { copyFileSync, readFileSync, renameSync, writeFileSync } from "node:fs";
import { it } from "node:test";
import { editPart } from "../support/deck.mjs";
import { refresh, until } from "../support/wait.mjs";
import { sampleDeck } from "../support/value_deck.mjs";

it("a workbook is read anew once it is whole, and shown as its cells show", async (t) => {
  const { sandbox, deck } = sampleDeck(t, "shop");
  const show = await sandbox.show(deck);
  const book = sandbox.path("shop/prices.xlsx");
  const saved = sandbox.path("shop/saved.xlsx");
  const price = () => show.text(1, "p1 Price");
  assert.equal(await price(), "€5.40");
  assert.equal(await show.text(3, "Offer Saving"), "−25%");
  assert.equal(await show.text(3, "Offer Until"), "Today until 18:00");
  const saveAs = (value) => {
    copyFileSync(book, saved);
    editPart(saved, "xl/worksheets/sheet1.xml", (xml) =>
      xml.replace(/(<c r="D2"[^>]*><v>)[^<]*/, `$1${value}`),
    );
  };

  saveAs("1234.5");
  renameSync(saved, book);
  await until("the new price", async () => (await price()) === "€1,234.50", refresh);

  saveAs("6.999");
  const whole = readFileSync(saved);
  writeFileSync(book, whole.subarray(0, whole.length / 2));
  await until("the line in the log", () => sandbox.errorLog().length > 0);
  assert.match(sandbox.errorLog()[0], /Error requerying excel file Prices[^]*prices\.xlsx.*not complete/);
  assert.equal(await price(), "€1,234.50");
  renameSync(saved, book);
  await until("the next price", async () => (await price()) === "€7.00", refresh);
  // Both connections read that workbook.
  assert.ok(sandbox.errorLog().length <= 2, sandbox.errorLog().join("\n"));
});
