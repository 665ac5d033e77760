// The first hour of somebody who has a deck of their own, three files of other programs, and --help.

import assert from "node:assert/strict";
import { cpSync, readFileSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { test } from "node:test";
import { openScreen, shownText, useBrowser, waitForSlide, waitForText } from "../support/browser.mjs";
import { editPart, elementId, readPart } from "../support/deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { until } from "../support/wait.mjs";

// Debian's Node takes its module for a script.
const PptxGenJS = createRequire(import.meta.url)("pptxgenjs");

useBrowser();

const trains = Array.from({ length: 12 }, (_, i) => [
  `08:${String(5 * i).padStart(2, "0")}`,
  `RE ${i + 1}`,
  ["Köln", "Münster", "Düren"][i % 3],
  String(1 + (i % 6)),
  i === 2 ? "fällt aus" : "",
]);

// As spreadsheet programs of Western Europe export it: semicolons, one of them behind the last column.
function writeTrains(sandbox) {
  const lines = ["sep=;", "Zeit;Zug;Nach;Gleis;Hinweis;", ...trains.map((train) => train.join(";") + ";")];
  writeFileSync(sandbox.path("abfahrten.csv"), Buffer.from(lines.join("\r\n") + "\r\n", "latin1"));
}

const box = (name, x, y, w = 2.3) => ({ objectName: name, x, y, w, h: 0.5, fontSize: 16 });

// Five slides as people draw them, with the names that PowerPoint gives.
async function drawDeck(sandbox) {
  const deck = new PptxGenJS();
  deck.layout = "LAYOUT_WIDE";
  const board = deck.addSlide();
  board.addText("Abfahrten", box("TextBox 2", 0.5, 0.2, 5));
  board.addText("12:00", box("TextBox 3", 10, 0.2));
  for (let row = 0; row < 8; ++row) {
    for (let column = 0; column < 5; ++column) {
      board.addText("x", box(`TextBox ${9 + 5 * row + column}`, 0.4 + 2.5 * column, 1.2 + 0.7 * row));
    }
  }
  const blank = Array.from({ length: 5 }, (_, i) => [`Ware ${i + 1}`, "0,00"]);
  deck.addSlide().addTable([["Item", "Price"], ...blank], { objectName: "Tabelle 4", x: 1, y: 1, w: 8 });
  const hours = { name: "Paletten", labels: ["6", "7"], values: [1, 2] };
  deck.addSlide().addChart("bar", [hours], { objectName: "Diagramm 2", x: 1, y: 1, w: 9, h: 5 });
  const trouble = deck.addSlide();
  trouble.addText("{{Linie.1}}", box("TextBox 4", 1, 1));
  trouble.addText("{{Grund.1}}", box("TextBox 5", 4, 1, 8));
  const offers = deck.addSlide();
  for (const [i, name] of ["p1 Item", "p1 Price", "p2 Item", "p2 Price"].entries()) {
    offers.addText("x", box(name, 1 + 4 * (i % 2), 1 + Math.floor(i / 2), 3.5));
  }
  const path = sandbox.path("bahnhof.pptx");
  await deck.writeFile({ fileName: path });
  // PowerPoint's tables have a header row unless it is switched off; this library writes none.
  editPart(path, "ppt/slides/slide2.xml", (xml) => xml.replace("<a:tblPr", '<a:tblPr firstRow="1"'));
  return path;
}

test("five slides are linked by twelve commands, wrong turns aside, and live on screens", async (t) => {
  const sandbox = new Sandbox(t);
  sandbox.sample("shop");
  sandbox.sample("plant");
  for (const file of ["shop/prices.xlsx", "plant/plant.db"]) {
    cpSync(sandbox.path(file), sandbox.path(file.split("/")[1]));
  }
  writeTrains(sandbox);
  sandbox.write("stoerungen.txt", "Linie\tGrund\n");
  const deck = await drawDeck(sandbox);
  const asDrawn = readPart(deck, "ppt/slides/slide2.xml");

  let commands = 0;
  // Returns what is said beside the answer.
  const done = (verb, ...args) => {
    ++commands;
    const { code, error } = sandbox.run(verb, deck, ...args);
    assert.equal(code, 0, `${verb} ${args.join(" ")}: ${error}`);
    return error;
  };
  const refused = (pattern, verb, ...args) => {
    const before = readFileSync(deck);
    const { code, error } = sandbox.run(verb, deck, ...args);
    assert.notEqual(code, 0, `${verb} ${args.join(" ")}`);
    assert.match(error, pattern);
    assert.ok(readFileSync(deck).equals(before), "a refused command has changed the deck");
  };
  const grid = (columns, rows = 8) =>
    ["--slide", 1, "--grid", "TextBox 9", "--columns", columns, "--rows", rows, "--connection", "1"];

  const added = done("connection", "add", "--file", "abfahrten.csv", "--header", "--description", "Abfahrten");
  assert.match(added, /12 rows/);
  refused(/TextBox 99.*TextBox 9\b/s, "link", "--slide", 1, "--shape", "TextBox 99", "--connection", "1", "--column", "Zug", "--row", 1);
  refused(/Ziel.*Zeit.*Nach/s, "link", ...grid("Zeit,Zug,Ziel,Gleis,Hinweis"));
  refused(/8 shapes of its kind in line, not 9/, "link", ...grid("Zeit,Zug,Nach,Gleis,Hinweis", 9));
  done("link", ...grid("Zeit,Zug,Nach,Gleis,Hinweis"));
  refused(/hh:nn/, "link", "--slide", 1, "--shape", "TextBox 3", "--clock", "...");
  done("link", "--slide", 1, "--shape", "TextBox 3", "--clock", "hh:nn");
  assert.match(done("connection", "add", "--file", "prices.xlsx", "--header", "--description", "Preise"), /14 rows/);
  done("link", "--slide", 2, "--shape", "Tabelle 4", "--connection", "Preise", "--table");
  done("slide", 2, "--scroll", 2, "--step", 5, "--time", 1000);
  const statement = "SELECT Hour, Pallets, Target FROM output ORDER BY Id";
  done("connection", "add", "--connection-string", "plant.db", "--sql", statement, "--description", "Leistung");
  done("link", "--slide", 3, "--shape", "Diagramm 2", "--connection", "3", "--chart");
  done("connection", "add", "--file", "stoerungen.txt", "--header", "--description", "Störungen");
  done("link", "--slide", 4, "--from-texts", "--connection", "4");
  done("slide", 4, "--hide-when-no-data", "on");
  done("link", "--slide", 5, "--names", "--connection", "2");
  assert.ok(commands <= 12, `${commands} commands`);
  const check = sandbox.run("check", deck);
  assert.equal(check.code, 0, check.out);

  const show = await sandbox.show(deck, "--kiosk", "--seconds", 3600);
  const page = await openScreen(t, show.url);
  await waitForText(page, elementId(deck, 1, "TextBox 9"), "08:00");
  assert.equal(await shownText(page, elementId(deck, 1, "TextBox 48")), "");
  assert.equal(await shownText(page, elementId(deck, 1, "TextBox 16")), "Münster");
  assert.match(await shownText(page, elementId(deck, 1, "TextBox 3")), /^\d\d:\d\d$/);

  // The table scrolls through the workbook's rows; the deck on disk keeps its author's cells.
  await show.command("goto/2");
  await waitForSlide(page, 2);
  const table = elementId(deck, 2, "Tabelle 4");
  const shows = (words) => until(`${words} in the table`, async () => (await shownText(page, table)).includes(words));
  await shows("Country sourdough");
  await shows("€5.40");
  await shows("Almond crème roll");
  assert.equal(readPart(deck, "ppt/slides/slide2.xml").match(/<a:tbl>.*<\/a:tbl>/s)[0], asDrawn.match(/<a:tbl>.*<\/a:tbl>/s)[0]);

  // The slide of disruptions is left out until there is one.
  await show.command("goto/3");
  await waitForSlide(page, 3);
  await show.command("next");
  await waitForSlide(page, 5);
  await waitForText(page, elementId(deck, 5, "p2 Price"), "€4.80");
  sandbox.write("stoerungen.txt", "Linie\tGrund\nRE 7\tSignalstörung\n");
  await show.command("goto/3");
  await until("the slide of disruptions", async () => {
    await show.command("goto/3");
    await show.command("next");
    return (await shownText(page, elementId(deck, 4, "TextBox 5"))) === "Signalstörung";
  });
});
