// A deck at the desk: what its server tells windows, what it does for them, and what it keeps to itself.

import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { existsSync, mkdirSync, rmSync, symlinkSync, writeFileSync } from "node:fs";
import { describe, it } from "node:test";
import { digest } from "../support/deck.mjs";
import { linkedPictureDeck } from "../support/driven_deck.mjs";
import { Sandbox } from "../support/sandbox.mjs";
import { bareDeck, sampleDeck } from "../support/value_deck.mjs";

// The shop without its links, with a small text file beside it, and whatever else a test prepares.
async function openShop(t, prepare = () => {}) {
  const { sandbox, deck } = bareDeck(t, "shop");
  sandbox.write("shop/today.txt", [
    ["Item", "Price"],
    ["Rye bread", "€4.80"],
    ["Plum cake", "€4.10"],
  ]);
  await prepare(sandbox, deck);
  const desk = await sandbox.edit(deck);
  return { sandbox, deck, desk, window: await desk.openWindow() };
}

// Connects the text file as an author does; its connection is 001.
async function connectToday(window) {
  await window.do("connect", { kind: "text", path: "today.txt" });
  const form = await window.form("frmTextConnection");
  await window.until("the preview", () => form.controls.lblFound.Text === "UTF-8, tab, 2 columns, 2 rows");
  const { status } = await window.raise(form, { control: "cmdOK", event: "click" });
  assert.equal(status, 200);
  await window.until("the rows", ({ connections }) => connections[0]?.rows === 2);
}

describe("a desk", { concurrency: 2 }, () => {
  it("answers nobody from elsewhere, and nothing of the deck at its open addresses", async (t) => {
    const { sandbox, deck } = sampleDeck(t, "shop");
    const open = sandbox.run("edit", deck, "--bind", "0.0.0.0");
    assert.equal(open.code, 2);
    assert.match(open.error, /--token-file/, "its owner's token, before other machines are let in");
    const desk = await sandbox.edit(deck);
    const window = await desk.openWindow();
    const api = "/api/v1/desk/";
    const foreign = { Authorization: `Bearer ${desk.token}`, Host: "evil.example" };
    assert.equal((await desk.ask("GET", `${api}roots`, foreign)).status, 403);
    const crossing = { Authorization: `Bearer ${desk.token}`, Origin: "http://evil.example" };
    assert.equal((await desk.ask("GET", `${api}roots`, crossing)).status, 403);

    const { assets, styles } = window.state;
    assert.equal((await desk.ask("GET", `/${assets}${styles}`)).status, 200);
    assert.equal((await desk.ask("GET", `/assets/${"0".repeat(32)}/${styles}`)).status, 404);
    const page = await desk.ask("GET", "/");
    assert.equal(page.status, 200);
    assert.ok(!page.text.includes("shop"));
    for (const [name, value] of Object.entries({ "x-content-type-options": "nosniff", "referrer-policy": "no-referrer" })) {
      assert.equal(page.headers[name], value);
    }
  });

  it("links, fills, undoes and saves, one gesture a step", async (t) => {
    const { sandbox, deck, desk, window } = await openShop(t);
    const before = digest(deck);
    assert.equal(window.state.deck.isEmpty, true);
    assert.deepEqual(
      window.state.nearby.find(({ path }) => path === "today.txt"),
      { path: "today.txt", kind: "text", note: "2 columns, 2 rows" },
    );
    await connectToday(window);

    const slide = window.state.slide.id;
    const ids = (...names) => names.map((name) => window.shape(name).id);
    const link = { connection: "001", column: "Item" };
    await window.do("link", { ...link, row: 2, shapes: ids("p1 Item"), slide });
    await window.until("the value", () => window.shape("p1 Item").text === "Plum cake");
    await window.until("the shape", () => window.events.some(({ event, data }) => event === "shapes" && data[0].html.includes("Plum cake")));
    const shapes = ids("p2 Item", "p3 Item");
    await window.do("fill", { connection: "001", columns: ["Item"], row: 1, step: 1, shapes, slide });
    await window.until("the step", ({ deck }) => deck.undo === "Link 2 shapes");
    assert.deepEqual([window.shape("p2 Item").text, window.shape("p3 Item").text], ["Rye bread", "Plum cake"]);
    const refused = await window.post("link", { ...link, column: "Prize", shapes: ids("p4 Item"), slide });
    assert.equal(refused.status, 409);
    assert.match(refused.json.error, /Prize.*Item, Price/);
    for (const [row, status] of [[0, 409], [-1, 409], [1e9, 409], [1e30, 400], [1.5, 400], ["abc", 400]]) {
      assert.equal((await window.post("link", { ...link, row, shapes: ids("p4 Item"), slide })).status, status, row);
    }
    for (const shapes of [[], [-1], [2 ** 32], [999]]) {
      assert.equal((await window.post("link", { ...link, row: 1, shapes, slide })).status, 404, shapes);
    }
    assert.equal(window.state.deck.undo, "Link 2 shapes");

    await window.do("commands/undo");
    await window.until("the step undone", ({ deck }) => deck.redo === "Link 2 shapes");
    assert.equal(window.shape("p2 Item").link, null);
    assert.equal(window.shape("p2 Item").text, "Dark rye");
    assert.deepEqual(window.state.selection, { slide, shapes });
    await window.do("commands/redo");
    await window.until("the link", () => window.shape("p3 Item").link?.row === 2);

    assert.equal(digest(deck), before);
    await window.do("commands/save");
    await window.until("all saved", ({ deck: { unsaved } }) => unsaved === 0);
    const saved = digest(deck);
    assert.notEqual(saved, before);
    assert.match(sandbox.done("shapes", deck, "--slide", 1), /p1 Item.*001 Item 2/);
    await window.do("commands/save");
    assert.equal(digest(deck), saved);
    assert.deepEqual(await desk.stop(), { code: 0, signal: null });
    assert.equal(desk.error, "");
  });

  it("previews slides without rows as a show has them, and says at once what hides", async (t) => {
    const { sandbox, window } = await openShop(t);
    await connectToday(window);
    const slide = window.state.slide.id;
    const link = { connection: "001", column: "Item", slide };
    await window.do("link", { ...link, row: 1, shapes: [window.shape("p1 Item").id] });
    await window.do("link", { ...link, row: 9, shapes: [window.shape("p2 Item").id] });
    await window.until("the marker", () => window.shape("p2 Item").text.startsWith("[Row not available"));
    await window.do("selection", { slide, shapes: [] });
    const form = await window.form("frmSlide");
    await window.raise(form, { control: "chkHideWhenNoData", event: "change", value: true });
    const says = (text) => ({ forms }) => forms.some((each) => each.name === "frmSlide" && each.controls.lblHides.Text === text);
    await window.until("what the page says", says("now: 1 of 1 connection has rows, the slide shows"));
    assert.equal(window.state.slide.hides, null);

    await window.do("link", { ...link, row: 8, shapes: [window.shape("p1 Item").id] });
    await window.until("what a show would do", ({ slide: { hides } }) => hides === "no shape shows a value");
    await window.do("commands/undo");
    await window.do("selection", { slide, shapes: [] });
    await window.form("frmSlide");

    await window.do("preview", { with: "none" });
    await window.until("blank shapes", () => ["p1 Item", "p2 Item"].every((name) => window.shape(name).text.trim() === ""));
    assert.equal(window.state.slide.hides, "connection 001 has no rows");
    assert.deepEqual(window.state.slide.why, [{ connection: "001", description: "today", rows: 0, ok: false }]);
    assert.equal(window.state.slides[0].hides, window.state.slide.hides);
    // Of a source that is connected meanwhile as well.
    sandbox.write("shop/later.txt", [["Name"], ["Late"]]);
    await window.do("connect", { kind: "text", path: "later.txt" });
    const later = await window.form("frmTextConnection");
    await window.until("the other preview", () => later.controls.lblFound.Text.includes("1 column"));
    await window.raise(later, { control: "cmdOK", event: "click" });
    await window.until("no rows", ({ connections: [, last] }) => last?.state === "fresh" && last.columns.length === 1 && last.rows === 0);
    await window.until("what the page says then", says("now: 0 of 1 connection has rows, the slide hides"));
    await window.do("preview", { with: "today" });
    await window.until("the data again", () => window.shape("p1 Item").text === "Rye bread" && window.state.slide.hides === null);
    await window.until("the page", says("now: 1 of 1 connection has rows, the slide shows"));
  });

  it("says which column is gone, and mends its links", async (t) => {
    const { sandbox, window } = await openShop(t);
    await connectToday(window);
    const slide = window.state.slide.id;
    const shapes = ["p1 Item", "p2 Item"].map((name) => window.shape(name).id);
    await window.do("link", { connection: "001", column: "Item", row: 1, shapes, slide, countUp: true });
    sandbox.write("shop/today.txt", [["Items", "Price"], ["Rye bread", "€4.80"]]);
    const gone = ({ notices }) => notices.find(({ text }) => text.startsWith("Column"));
    const told = await window.until("the notice", gone);
    assert.match(told.text, /^Column 'Item' is gone from connection 001 \(.*\)\. 2 shapes use it\.$/);
    assert.ok(window.state.notices.every(({ text }) => !text.includes("Item cannot be found")));
    await window.do(`notices/${told.id}/use`);
    await window.until("it mended", (state) => !gone(state) && state.deck.undo === "Use Items for 2 shapes");
    assert.equal(window.shape("p1 Item").link.column, "Items");
  });

  it("moves the clocks of slides in sight, and shows the errors log without what could be a password", async (t) => {
    const { sandbox, window } = await openShop(t, (box, deck) =>
      box.done("link", deck, "--slide", 1, "--shape", "p1 Item", "--clock", "hh:nn:ss"),
    );
    const first = window.shape("p1 Item").text;
    assert.match(first, /^\d\d:\d\d:\d\d$/);
    await window.until("another time", () => window.shape("p1 Item").text !== first);
    assert.equal(window.state.deck.unsaved, 0);
    assert.ok(window.events.every(({ event, data }) => event !== "shapes" || data.length === 1), "the clock alone");

    sandbox.write("program/errors.txt", "11/22/2026 4:03:11 PM.500 No answer from db.\n11/22/2026 4:03:12 PM.500 No way in with PWD=hush;\nServer=x\n");
    await window.do("press/cbrErrorsLog");
    const { controls } = await window.form("frmErrorsLog");
    assert.match(controls.txtLog.Text, /^11\/22\/2026 4:03:11 PM\.500 No answer from db\.\n.*4:03:12 PM \(left out here.*\)\n$/);
    assert.ok(!existsSync(sandbox.path("opened")), "nothing opens on this machine");
  });

  it("tells that PowerPoint has the deck open, once for each time, until it is closed", async (t) => {
    const { sandbox, window } = await openShop(t, (box) => box.write("shop/~$shop.pptx", "owner"));
    assert.match(window.state.notices[0].text, /^PowerPoint has this deck open\./);
    await window.do(`notices/${window.state.notices[0].id}/dismiss`);
    await window.until("no notice", ({ notices }) => notices.length === 0);
    const owner = ({ notices }) => notices.find(({ text }) => text.startsWith("PowerPoint has this deck open."));
    assert.equal(owner(window.state), undefined);
    const rename = async (from, to) => {
      await window.do("rename", { slide: window.state.slide.id, shape: window.shape(from).id, name: to });
      await window.do("commands/save");
      await window.until("all saved", ({ deck: { unsaved } }) => unsaved === 0);
    };
    rmSync(sandbox.path("shop/~$shop.pptx"));
    await rename("p1 Item", "Second");
    assert.equal(owner(window.state), undefined);
    sandbox.write("shop/~$shop.pptx", "owner");
    await rename("Second", "Third");
    await window.until("the notice", owner);
    rmSync(sandbox.path("shop/~$shop.pptx"));
    await window.until("the notice's end", (state) => !owner(state));
  });

  it("offers what a desk that was killed had not saved, and tells its address to a second one", async (t) => {
    let { sandbox, deck, desk, window } = await openShop(t);
    const again = sandbox.done("edit", deck);
    assert.ok(again.includes(desk.url), again);
    const rename = { slide: window.state.slide.id, shape: window.shape("p1 Item").id, name: "First" };
    await window.do("rename", rename);
    await desk.stop("SIGKILL");

    desk = await sandbox.edit(deck);
    window = await desk.openWindow();
    const [notice] = window.state.notices;
    assert.match(notice.text, /^1 change from \d\d:\d\d was not saved\.$/);
    await window.do(`notices/${notice.id}/recover`);
    await window.until("the change", ({ deck: { unsaved } }) => unsaved === 1 && window.shape("First"));
  });

  it("browses nothing but its folders, and reads nothing beside them", async (t) => {
    const { sandbox, desk, window } = await openShop(t, (box) => {
      box.write("secret.txt", [["Secret"], ["hush"]]);
      box.write("shop/.hidden.txt", "x\n");
      mkdirSync(box.path("shop/deep"));
      symlinkSync(box.folder, box.path("shop/out"));
      symlinkSync(box.path("secret.txt"), box.path("shop/leak.txt"));
    });
    const list = async (path) => desk.get(`roots/1/files?path=${encodeURIComponent(path)}`);
    const names = (await list("")).json.entries.map(({ name }) => name);
    assert.ok(names.includes("today.txt") && names.includes("deep"));
    for (const name of [".hidden.txt", "out", "leak.txt"]) assert.ok(!names.includes(name), name);
    for (const path of ["..", "out", "/etc", "deep/%2e%2e"]) assert.equal((await list(path)).status, 404, path);

    // A path that is typed goes through the same folders.
    assert.equal((await window.post("connect", { kind: "text", path: "../secret.txt" })).status, 404);
    await window.do("connect", { kind: "text" });
    const form = await window.form("frmTextConnection");
    await window.raise(
      form,
      { control: "txtFile", event: "change", value: sandbox.path("secret.txt") },
      { control: "txtFile", event: "lostfocus" },
    );
    const refused = `Outside the folders of this desk. Start it with --allow ${sandbox.folder}.`;
    await window.until("the refusal", () => JSON.stringify(form.controls).includes(refused));
    assert.ok(!JSON.stringify(form.controls).includes("hush"));
  });

  it("asks before it contacts what a deck brings along from elsewhere, and remembers the answer", async (t) => {
    let elsewhere;
    let { sandbox, deck, desk, window } = await openShop(t, (box, file) => {
      elsewhere = box.write("elsewhere.txt", [["Item"], ["from elsewhere"]]);
      box.done("connection", file, "add", "--description", "Far", "--file", elsewhere, "--header");
    });
    const [notice] = window.state.notices;
    assert.equal(notice.text, `This deck asks for data from ${elsewhere}.`);
    assert.equal(window.state.connections[0].state, "opening");
    await window.do(`notices/${notice.id}/open`);
    await window.until("the data", ({ connections }) => connections[0].state === "fresh");
    await desk.stop();

    desk = await sandbox.edit(deck);
    window = await desk.openWindow();
    await window.until("the data", ({ connections }) => connections[0].state === "fresh");
    assert.deepEqual(window.state.notices, []);
  });

  it("reads no linked picture from elsewhere unasked, and asks again for what a newer version brings along", async (t) => {
    const sandbox = new Sandbox(t);
    const picture = sandbox.path("far.svg");
    writeFileSync(picture, '<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"><title>far away</title></svg>');
    const deck = linkedPictureDeck(sandbox, picture);
    const desk = await sandbox.edit(deck);
    const window = await desk.openWindow();
    const slide = window.state.slides[1];
    // What the slide's pictures hold.
    const pictures = async () => {
      const { html } = (await desk.get(`slides/${slide.id}`)).json;
      const names = html.match(/assets\/[0-9a-f]+\/[\w.-]+/g) ?? [];
      return (await Promise.all(names.map(async (name) => (await desk.ask("GET", `/${name}`)).text))).join();
    };
    const asks = ({ notices }) => notices.find(({ actions }) => actions.some(({ id }) => id === "open"));
    assert.equal(asks(window.state).text, `This deck asks for data from ${picture}.`);
    assert.ok(!(await pictures()).includes("far away"));
    await window.do(`notices/${asks(window.state).id}/open`);
    await window.until("the picture drawn", ({ slides }) => slides[1].drawn > slide.drawn);
    assert.ok((await pictures()).includes("far away"));

    const elsewhere = sandbox.write("elsewhere.txt", [["Item"], ["from elsewhere"]]);
    sandbox.done("connection", deck, "add", "--description", "Far", "--file", elsewhere, "--header");
    const notice = await window.until("the question", asks);
    assert.equal(notice.text, `This deck asks for data from ${elsewhere}.`);
    assert.equal(window.state.connections[0].state, "opening");
    assert.ok((await pictures()).includes("far away"), "what was agreed to stays so");
    await window.do(`notices/${notice.id}/open`);
    await window.until("the data", ({ connections }) => connections[0].state === "fresh");
  });

  it("changes nothing in a database, whatever a statement says", async (t) => {
    const sqlite = (box, sql) => execFileSync("sqlite3", [box.path("shop/stock.db"), sql], { encoding: "utf8" }).trim();
    const { sandbox, window } = await openShop(t, (box, deck) => {
      sqlite(box, "CREATE TABLE stock (Item TEXT)");
      const statement = "SELECT Item FROM stock; DROP TABLE stock";
      const source = ["--connection-string", "Provider=SQLite;Data Source=stock.db", "--sql", statement];
      box.run("connection", deck, "add", "--description", "Stock", ...source);
      sqlite(box, "CREATE TABLE IF NOT EXISTS stock (Item TEXT); INSERT INTO stock VALUES ('Rye')");
    });
    const failing = await window.until("the failure", ({ connections: [first] }) => first.state === "failing" && first);
    assert.match(failing.message, /holds several statements/);
    assert.equal(sqlite(sandbox, "SELECT Item FROM stock"), "Rye");
  });
});
