// Tables that take a connection as a whole: on a screen, and in the deck's file.

import assert from "node:assert/strict";
import { test } from "node:test";
import { isUntouched, openScreen, useBrowser } from "../support/browser.mjs";
import { editPart } from "../support/deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { makeLinkedTable, makeTableDeck, setTrains, tableInFile, tableShape } from "../support/table_deck.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

const author = [
  ["Nach", "Zeit"],
  ["(where)", "(when)"],
  ["(where)", "(when)"],
];
const trains = [
  ["12:00", "IC 1", "Basel"],
  ["12:10", "IR 2", "Chur <2>"],
  ["12:20", "S 3", "Bern"],
];

const cellsOf = (page) =>
  page.evaluate(
    (id) => [...document.querySelectorAll(`#${id} td`)].map((cell) => cell.innerText.trim()).join("|"),
    `s1-sh${tableShape}`,
  );
const untilCells = (page, cells) =>
  until(`the cells ${cells}`, async () => (await cellsOf(page)) === cells);

test("of a table no more than the changed cells come anew", async (t) => {
  const sandbox = new Sandbox(t);
  sandbox.sample("shop");
  setTrains(sandbox, ...trains);
  const show = await sandbox.show(makeLinkedTable(sandbox, author));
  const page = await openScreen(t, show.url);
  await untilCells(page, "Nach|Zeit|Basel|12:00|Chur <2>|12:10");
  await page.evaluate((id) => {
    window.cells = [...document.querySelectorAll(`#${id} td`)];
  }, `s1-sh${tableShape}`);
  setTrains(sandbox, trains[0], ["12:15", "IR 2", "Chur <2>"]);
  await untilCells(page, "Nach|Zeit|Basel|12:00|Chur <2>|12:15");
  const kept = await page.evaluate(() => window.cells.map((cell) => cell.isConnected));
  assert.deepEqual(kept, [true, true, true, true, true, false]);
  const styles = await page.evaluate(
    (id) => [...document.querySelectorAll(`#${id} td`)].map((cell) => cell.getAttribute("style")),
    `s1-sh${tableShape}`,
  );
  assert.equal(styles[5], styles[3], "the new cell looks as it did");
  setTrains(sandbox, ["13:00", "IC 9", "Olten"]);
  await untilCells(page, "Nach|Zeit|Olten|13:00||");
  assert.ok(await isUntouched(page));
});

test("the deck's file keeps the author's cells, a filled copy the data", async (t) => {
  const sandbox = new Sandbox(t);
  const deck = makeTableDeck(sandbox, author);
  const typed = tableInFile(deck);
  setTrains(sandbox, ...trains);
  sandbox.done("connection", deck, "add", "--type", "text", "--description", "Trains", "--file", "trains.txt", "--header");
  const link = ["link", deck, "--slide", 1, "--shape", "Departures", "--connection", "001"];
  assert.match(sandbox.run(...link, "--column", "Zeit", "--row", 1).error, /is a table.*--table/);
  editPart(deck, "ppt/slides/slide1.xml", (xml) => xml.replace('firstRow="1"', 'firstRow="0"'));
  assert.match(sandbox.run(...link, "--table").error, /the first row.*'Nach'.*Header Row/);
  editPart(deck, "ppt/slides/slide1.xml", (xml) => xml.replace('firstRow="0"', 'firstRow="1"'));
  sandbox.done(...link, "--table");
  assert.equal(tableInFile(deck), typed);
  sandbox.done("slide", deck, 1, "--hide-when-no-data", "on");
  assert.equal(tableInFile(deck), typed);

  const copy = sandbox.path("shop/copy.pptx");
  sandbox.done("fill", deck, "-o", copy);
  assert.match(tableInFile(copy), /Nach.*Zeit.*Basel.*12:00.*Chur &lt;2&gt;.*12:10/s);
  assert.match(sandbox.run("check", deck).out, /3 rows today, the table room for 2/);

  sandbox.write("shop/trains.txt", [["Zeit", "Zug", "Ziel"], ...trains]);
  const missing = /no column 'Nach', which the table's header names. It has: Zeit, Zug, Ziel/;
  const { code, out } = sandbox.run("check", deck);
  assert.equal(code, 1);
  assert.match(out.replace(/\s+/g, " "), missing);
  assert.match(sandbox.run(...link, "--table").error, missing);
});
