// The verb connection, as an author uses it.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { writeFileSync } from "node:fs";
import { test } from "node:test";
import { digest, textInFile } from "../support/deck.mjs";
import { at, bareDeck, textSource, value } from "../support/value_deck.mjs";

function emptyDeck(t) {
  const { sandbox, deck } = bareDeck(t, "shop");
  const add = (description, file) =>
    sandbox.done("connection", deck, "add", ...textSource(description, file)).trim();
  const list = () => JSON.parse(sandbox.done("connection", deck, "list", "--json"));
  return { sandbox, deck, add, list };
}

test("connections are added, changed, listed and removed", (t) => {
  const { sandbox, deck, add, list } = emptyDeck(t);
  assert.deepEqual(list(), []);
  assert.equal(add("Prices", "prices.txt"), "001");
  assert.equal(add('The "offer" <b>&amp;', "offer.txt"), "002");
  sandbox.done("connection", deck, "set", "001", "--description", "Preise", "--no-header");
  const facts = () => list().map((each) => [each.number, each.type, each.description, each.source, each.header]);
  const offer = ["002", "text", 'The "offer" <b>&amp;', "offer.txt", true];
  assert.deepEqual(facts(), [["001", "text", "Preise", "prices.txt", false], offer]);
  assert.match(sandbox.done("connection", deck, "list"), /001 +text +Preise +prices\.txt/);
  sandbox.done("link", deck, ...at(1, "p1 Item"), ...value(1, "Column1"));
  sandbox.done("link", deck, ...at(3, "Offer Until"), ...value(1, "Until", "002"));
  sandbox.done("connection", deck, "remove", "001");
  assert.deepEqual(facts(), [offer]);
  const { slides } = JSON.parse(sandbox.done("info", deck, "--json"));
  assert.deepEqual(slides.flatMap(({ links }) => links).map(({ connection }) => connection), ["002"]);
  assert.equal(add("Weather", "weather.txt"), "003");
});

test("a tested connection prints its columns and first rows", (t) => {
  const { sandbox, deck, add } = emptyDeck(t);
  sandbox.write("shop/values.txt", [
    ["City", "Note"],
    ["Zürich", "8°"],
    ["القدس", ""],
    ["三", "🌧"],
  ]);
  add("Values", "values.txt");
  const tested = JSON.parse(sandbox.done("connection", deck, "test", "001", "--json", "--rows", 2));
  assert.deepEqual([tested.columns, tested.rowCount], [["City", "Note"], 3]);
  assert.deepEqual(tested.rows, [["Zürich", "8°"], ["القدس", ""]]);
  const printed = sandbox.done("connection", deck, "test", "001");
  assert.match(printed, /^City +Note *\nZürich +8° *\n[^]*\n3 rows, 2 columns/);

  // What a data file holds cannot steer the terminal.
  sandbox.write("shop/values.txt", [
    ["\x1b]0;owned\x07Name", "B"],
    ["\x1b[2J", "\x9b31m"],
  ]);
  const link = ["link", deck, ...at(1, "p1 Item"), ...value(1, "nothing")];
  for (const line of [["connection", deck, "test", "001"], ["info", deck], link]) {
    const { out, error } = sandbox.run(...line);
    assert.match(out + error, /owned/, line[0]);
    assert.doesNotMatch(out + error, /[\x00-\x09\x0b-\x1f\x7f-\x9f]/, line[0]);
  }
});

test("what a connection cannot be is told, and the deck stays as it was", (t) => {
  const { sandbox, deck, add } = emptyDeck(t);
  sandbox.write("shop/twice.txt", "Name\tNAME\na\tb\n");
  for (const file of ["twice", "missing"]) add(`The ${file} data`, `${file}.txt`);
  const before = digest(deck);
  const cases = [
    [["test", "001"], 1, /The twice data.*Duplicated column name 'NAME' detected: columns 1 and 2/],
    [["test", "002"], 1, /The missing data.*shop\/missing\.txt' cannot be opened: there is no such file/],
    [["test", "077"], 1, /no connection 077/],
    [["remove", "077"], 1, /no connection 077/],
    [["set", "077", "--header"], 1, /no connection 077/],
    [["add", "--type", "text", "--description", "x"], 2, /--file/],
    [["tables", "001"], 1, /of type text; only databases have tables/],
    [["sheets", "001"], 1, /of type text; only workbooks have sheets/],
    [["set", "001", "--sheet", "x"], 2, /--sheet goes with --type excel/],
    [["add", "--type", "database", "--description", "x", "--sql", "t"], 2, /--connection-string and --sql/],
    [["set", "001", "--file", " "], 2, /--file is empty/],
    [["set", "001", "--type", "database"], 2, /--connection-string and --sql/],
    [["add", "--type", "carrier pigeon", "--description", "x", "--file", "x"], 2, /carrier pigeon/],
    [["add", "--type", "text", "--description", "a\tb", "--file", "x"], 2, /TAB/],
    [["test", "001", "--rows", "-1"], 2, /--rows/],
    [["rename", "001"], 2, /rename/],
    [[], 2, /connection takes an action: list, add/],
  ];
  for (const [line, code, text] of cases) {
    const result = sandbox.run("connection", deck, ...line);
    assert.match(result.error, text, line.join(" "));
    assert.equal(result.code, code, line.join(" "));
    assert.equal(result.out, "", line.join(" "));
    assert.equal(digest(deck), before, line.join(" "));
  }
});

test("a deck with a broken connection can be looked at and mended", (t) => {
  const { sandbox, deck, add } = emptyDeck(t);
  sandbox.write("shop/values.txt", [["Value"], ["forty-two"]]);
  add("Gone", "gone.txt");
  add("Values", "values.txt");
  const { connections } = JSON.parse(sandbox.done("info", deck, "--json"));
  assert.match(connections[0].state, /gone\.txt/);
  assert.equal(connections[1].state, "ready");

  const link = (column) => sandbox.run("link", deck, ...at(1, "p1 Item"), ...value(1, column, "002"));
  assert.equal(link("Volume").code, 1, "the column is missing from a source that is there");
  assert.equal(link("Value").code, 0);

  sandbox.done("connection", deck, "set", "001", "--file", "values.txt");
  sandbox.done("fill", deck, "-o", sandbox.path("filled.pptx"));
  assert.equal(textInFile(sandbox.path("filled.pptx"), 1, "p1 Item"), "forty-two");
});

test("the file tells what a connection reads, and a database's file is its connection string", (t) => {
  const { sandbox, deck, list } = emptyDeck(t);
  const add = (...line) => sandbox.done("connection", deck, "add", "--description", "x", ...line).trim();
  const sql = ["--sql", "stock"];
  add("--file", "Prices.CSV");
  add("--file", "data.d/prices.xlsx");
  add("--file", "stock.db", ...sql);
  add("--connection-string", "old;stock.MDB", ...sql);
  add("--type", "sqlite", "--file", "a=b.cache", ...sql);
  add("--type", "csv", "--file", "table.xls");
  add("--type", "xlsx", "--file", "book.dat");
  add("--connection-string", "DSN=stock.db", ...sql);
  assert.deepEqual(list().map(({ type, source }) => `${type} ${source}`), [
    "text Prices.CSV",
    "excel A1:I10 of the first sheet in data.d/prices.xlsx",
    "database Provider=SQLite;Data Source=stock.db: stock",
    'database Provider=Microsoft.Jet.OLEDB.4.0;Data Source="old;stock.MDB": stock',
    "database Provider=SQLite;Data Source=a=b.cache: stock",
    "text table.xls",
    "excel A1:I10 of the first sheet in book.dat",
    "database DSN=stock.db: stock",
  ]);
  for (const [line, text] of [
    [["--file", "folder.csv/departures"], /'folder.csv\/departures' does not tell what it is/],
    [["--file", "stock.db"], /--sql/],
    [["--type", "database", "--file", "stock.csv", ...sql], /--type sqlite/],
    [["--file", "stock.db", "--connection-string", "x=y", ...sql], /not both/],
    [["--sql", "stock"], /--connection-string/],
  ]) {
    const { code, error } = sandbox.run("connection", deck, "add", "--description", "x", ...line);
    assert.match(error, text, line.join(" "));
    assert.equal(code, 2);
  }
  assert.equal(list().length, 8);
});

test("a connection goes by its number, with zeros or without, and by its description", (t) => {
  const { sandbox, deck, add, list } = emptyDeck(t);
  sandbox.write("shop/values.txt", [["Value"], ["forty-two"]]);
  for (const description of ["Prices", "2", "Offer", "offer"]) add(description, "values.txt");
  const tested = (meant) => JSON.parse(sandbox.done("connection", deck, "test", meant, "--json")).number;
  assert.deepEqual(["1", "001", "prices", "2"].map(tested), ["001", "001", "001", "002"]);
  assert.match(sandbox.run("connection", deck, "test", "Offer").error, /described as 'Offer': 003, 004/);
  for (const meant of ["7", "0001", "", "-1", "99999999999"]) {
    assert.match(sandbox.run("connection", deck, "test", meant).error, /no connection/, meant);
  }
  sandbox.done("link", deck, ...at(1, "p1 Item"), ...value(1, "Value", "PRICES"));
  const { slides } = JSON.parse(sandbox.done("info", deck, "--json"));
  assert.deepEqual(slides.flatMap(({ links }) => links).map(({ connection }) => connection), ["001"]);
  sandbox.done("connection", deck, "set", "prices", "--description", "Dear");
  sandbox.done("connection", deck, "remove", "4");
  assert.deepEqual(list().map(({ description }) => description), ["Dear", "2", "Offer"]);
});

test("what is added or changed is opened, and nothing else", (t) => {
  const { sandbox, deck, list } = emptyDeck(t);
  const connection = (...line) => sandbox.run("connection", deck, ...line);
  sandbox.write("shop/values.txt", [["Value", "Unit"], ["forty-two", "t"]]);
  const gone = connection("add", ...textSource("Gone", "gone.txt"));
  assert.deepEqual([gone.code, gone.out], [0, "001\n"]);
  assert.match(gone.error, /connection 001: .*gone\.txt' cannot be opened.* It is stored all the same\.\n$/);
  const silent = (result, error) => assert.deepEqual([result.code, result.error], [0, error]);
  silent(connection("add", ...textSource("Values", "values.txt")), "1 row, 2 columns: Value, Unit\n");
  silent(connection("set", "002", "--no-header"), "2 rows, 2 columns: Column1, Column2\n");
  silent(connection("set", "002", "--header"), "1 row, 2 columns: Value, Unit\n");
  const link = ["link", deck, ...at(1, "p1 Item"), ...value(1, "Value", "002")];
  silent(sandbox.run(...link), "");
  silent(sandbox.run("unlink", deck, ...at(1, "p1 Item")), "");
  silent(sandbox.run(...link), "");

  const before = digest(deck);
  writeFileSync(sandbox.path("shop/page.csv"), "<!doctype html><title>502 Bad Gateway</title>");
  for (const line of [["add", ...textSource("Page", "page.csv")], ["set", "002", "--file", "page.csv"]]) {
    const { code, error } = connection(...line, "--strict");
    assert.equal(code, 1);
    assert.match(error, /a web page \(HTML\).* Nothing was stored\.$/m);
    assert.equal(digest(deck), before);
  }
  assert.equal(list().length, 2);

  const copy = sandbox.path("filled.pptx");
  const { code, error } = sandbox.run("fill", deck, "-o", copy);
  assert.equal(code, 1);
  assert.match(error, /Connection 001 \(Gone\): .*\n.*written without what could not be read/);
  assert.equal(textInFile(copy, 1, "p1 Item"), "forty-two");
});

test("a database is described, tested and listed", (t) => {
  const { sandbox, deck, list } = emptyDeck(t);
  execFileSync("sqlite3", [
    sandbox.path("shop/stock.db"),
    `CREATE TABLE "two words" (Item TEXT, Price REAL); INSERT INTO "two words" VALUES ('Rye', 4.8), ('Tart', NULL);
     CREATE VIEW cheap AS SELECT Item FROM "two words"`,
  ]);
  const verb = (...line) => sandbox.done("connection", deck, ...line);
  const source = ["--connection-string", "Provider=SQLite;Data Source=stock.db", "--sql", "two words"];
  verb("add", "--type", "database", "--description", "Stock", ...source, "--refresh", 500);
  const read = (name, ...line) => JSON.parse(verb(name, "001", "--json", ...line));
  assert.deepEqual(read("tables"), [
    { schema: "", name: "two words", type: "TABLE" },
    { schema: "", name: "cheap", type: "VIEW" },
  ]);
  const columns = ["Item", "Price"];
  const { rowCount, ...tested } = read("test", "--rows", 1);
  assert.deepEqual([rowCount, tested.columns, tested.rows], [2, columns, [["Rye", "4.8"]]]);

  assert.deepEqual(read("preview").rows[1], ["Tart", null], "Null is no empty text");
  const price = (language) => {
    sandbox.environment.LC_ALL = language;
    return read("preview").rows[0][1];
  };
  assert.deepEqual(["de_DE.UTF-8", "en_GB.UTF-8", "C", "xx_XX"].map(price), ["4,8", "4.8", "4.8", "4.8"], "whatever locales there are");

  verb("set", "001", "--sql", "SELECT\nItem AS a, Price AS A FROM [two words]");
  assert.deepEqual(read("preview").columns, ["a", "A"]);
  assert.match(verb("test", "001"), /Several columns are named 'A'; links reach the first/);
  const [{ type, source: told }] = list();
  assert.equal(type, "database");
  assert.equal(told, "Provider=SQLite;Data Source=stock.db: SELECT Item AS a, Price AS A FROM [two words]");
});

test("a workbook is read as a whole, unless a range says otherwise", (t) => {
  const { sandbox, deck, add, list } = emptyDeck(t);
  const verb = (...line) => sandbox.run("connection", deck, ...line);
  const book = ["--file", "prices.xlsx", "--header"];
  const added = verb("add", "--description", "Offer", ...book, "--sheet", "Offer");
  assert.match(added.error, /The range is A:G, where the sheet has A1:G2 in use; rows to come are read as well\.\n1 row, 7 columns: Item, /);
  assert.equal(added.out, "001\n");
  const ranged = /^1 row, 2 columns: Section, Item\nThe range A1:B2 leaves out data/;
  assert.match(verb("add", "--description", "Items", ...book, "--range", "A1:B2").error, ranged);
  const sources = () => list().map(({ source }) => source);
  assert.deepEqual(sources(), ["A:G of Offer in prices.xlsx", "A1:B2 of the first sheet in prices.xlsx"]);
  const remarks = (number) => JSON.parse(sandbox.done("connection", deck, "test", number, "--json")).remarks;
  assert.deepEqual(remarks(1), []);
  assert.match(remarks(2).join(), /^The range A1:B2 leaves out data: rows 3 to \d+, columns C to \w\. --range A:\w takes/);
  assert.match(verb("set", "2", "--description", "Few").error, ranged);
  const blank = verb("set", "1", "--range", "A1:I10");
  assert.match(blank.error, /^1 row, 7 columns: Item, [^:]+, Picture\n$/, "no H and I, which hold nothing");
  assert.match(verb("set", "2", "--sheet", "Offer").error, /A:G/);
  assert.deepEqual(sources()[1], "A:G of Offer in prices.xlsx");

  // In the place of a text file.
  add("Prices", "prices.txt");
  verb("set", "3", "--type", "excel", "--no-header", "--file", "prices.xlsx", "--range", "B1:D3");
  assert.deepEqual([list()[2].type, list()[2].description], ["excel", "Prices"]);
  const read = (name, ...line) => JSON.parse(sandbox.done("connection", deck, name, "3", "--json", ...line));
  assert.deepEqual(read("sheets").sheets, [
    { name: "Prices", visible: true, dimension: "A1:D15" },
    { name: "Offer", visible: true, dimension: "A1:G2" },
  ]);
  assert.deepEqual(read("preview", "--rows", 1), { columns: ["B", "C", "D"], rows: [["Item", "Note", "Price"]] });
  verb("set", "3", "--sheet", "Offer", "--range", "C:F", "--header");
  assert.deepEqual(read("preview"), {
    columns: ["Price", "Before", "Saving", "Until"],
    rows: [["€4.40", "€5.90", "−25%", "Today until 18:00"]],
  });
  assert.equal(sources()[2], "C:F of Offer in prices.xlsx");
});
