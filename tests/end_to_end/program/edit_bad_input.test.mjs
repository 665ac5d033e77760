// What authors, their files and their network do wrong at a desk: each is told, and nothing is lost.

import assert from "node:assert/strict";
import { chmodSync, readFileSync, rmSync } from "node:fs";
import { describe, it } from "node:test";
import { digest, editPart, parts, readPart } from "../support/deck.mjs";
import { asNobody } from "../support/sandbox.mjs";
import { SilentServer } from "../support/silent_server.mjs";
import { sampleDeck } from "../support/value_deck.mjs";

async function openDesk(t, prepare = () => {}) {
  const { sandbox, deck } = sampleDeck(t, "shop");
  await prepare(sandbox, deck);
  const desk = await sandbox.edit(deck);
  const window = await desk.openWindow();
  const isReady = ({ connections, notices }) => connections[0].state === "fresh" || notices.length > 0;
  await window.until("the data, or a question", isReady);
  return { sandbox, deck, desk, window };
}

const change = (control, value) => ({ control, event: "change", value });
const leave = (control) => ({ control, event: "lostfocus" });
const click = (control) => ({ control, event: "click" });

async function select(window, ...names) {
  const shapes = names.map((name) => window.shape(name).id);
  await window.do("selection", { slide: window.state.slide.id, shapes });
  return window.until("the page", ({ forms }) => forms.find(({ subject }) => subject === names[0]));
}

async function raise(window, form, ...events) {
  const { status, json } = await window.raise(form, ...events);
  assert.equal(status, 200, JSON.stringify(json));
}

describe("bad input at a desk", { concurrency: 2 }, () => {
  it("links a column with a quote, and complains of one with a TAB and of rows that are none", async (t) => {
    const { sandbox, deck, window } = await openDesk(t, (sandbox) =>
      sandbox.write("shop/odd.txt", [
        ['Say "hi"', "A\tB"],
        ["quoted", "tabbed"],
      ]),
    );
    await window.do("connect", { kind: "text", path: "odd.txt" });
    const dialog = await window.form("frmTextConnection");
    await window.until("the preview", () => dialog.controls.lblFound.Text.includes("2 columns"));
    await raise(window, dialog, change("chkFirstRow", true), click("cmdOK"));
    const isAdded = ({ rows, source }) => rows > 0 && source.endsWith("odd.txt");
    const added = await window.until("the rows", ({ connections }) => connections.find(isAdded));
    const link = { connection: added.number, row: 1, slide: window.state.slide.id };
    await window.do("link", { ...link, column: 'Say "hi"', shapes: [window.shape("p1 Item").id] });
    await window.until("the value", () => window.shape("p1 Item").text === "quoted");
    const refused = await window.post("link", { ...link, column: "A\tB", shapes: [window.shape("p2 Item").id] });
    assert.equal(refused.status, 409);
    assert.match(refused.json.error, /TAB/i);

    const page = await select(window, "p1 Item");
    const steps = window.state.deck.undo;
    await raise(window, page, change("cmbColumn", "A\tB"));
    await window.until("the complaint", () => /tab/i.test(page.controls.cmbColumn.Problem));
    await raise(window, page, change("txtRow", "1.5"));
    await window.until("the complaint about the row", () => /from 1 to 1000000/.test(page.controls.txtRow.Problem));
    assert.equal(window.state.deck.undo, steps);
    await window.do("commands/save");
    assert.match(sandbox.done("shapes", deck, "--slide", 1), /p1 Item.*Say "hi" 1/);
  });

  it("reads a workbook that is open elsewhere as it was saved last, and offers no file of who has it open", async (t) => {
    const owners = ["~$prices.xlsx", ".~lock.prices.xlsx#"];
    const { desk, window } = await openDesk(t, (sandbox) => {
      for (const name of owners) sandbox.write(`shop/${name}`, "author\n");
    });
    const offered = window.state.nearby.map(({ path }) => path);
    const listed = (await desk.get("roots/1/files?kinds=xlsx")).json.entries.map(({ name }) => name);
    for (const names of [offered, listed]) {
      assert.ok(names.includes("prices.xlsx"), names);
      for (const owner of owners) assert.ok(!names.includes(owner), owner);
    }
    await window.do("connect", { kind: "workbook", path: "prices.xlsx" });
    const form = await window.form("frmExcelConnection");
    await window.until("what is in it", () => /\d+ columns?, \d+ rows?/.test(form.controls.lblFound.Text));
    await raise(window, form, change("txtDescription", "Prices"), click("cmdOK"));
    await window.until("its rows", ({ connections }) => connections.some(({ kind, rows }) => kind === "workbook" && rows > 0));
  });

  it("waits for a server that never answers no longer than its author", async (t) => {
    const { window } = await openDesk(t);
    const silent = await SilentServer.start(t);
    await window.do("connect", { kind: "database" });
    const form = await window.form("frmDatabaseConnection");
    const string = silent.connectionString;
    const { cmdTest, lblTest, txtConnectionString } = form.controls;
    const typed = [change("txtConnectionString", string), change("txtSQL", "SELECT 1")];
    await raise(window, form, change("txtDescription", "Silent"), ...typed, click("cmdTest"));
    await window.until("the server asked", () => silent.sockets.length > 0);
    await window.until("a way out", () => cmdTest.Caption === "Cancel");
    // The desk goes on meanwhile.
    await window.do("rename", { slide: window.state.slide.id, shape: window.shape("p1 Item").id, name: "First" });
    await window.until("the name", () => window.shape("First"));
    await raise(window, form, click("cmdTest"));
    await window.until("the end", () => lblTest.Text === "Cancelled." && cmdTest.Caption === "&Test");
    assert.equal(txtConnectionString.Text, string);
    await window.until("the job's end", ({ jobs }) => jobs.length === 0);
    assert.equal(window.state.connections.length, 2);
  });

  it("writes a deck anew whose file is gone, and keeps all where its folder is write-protected", async (t) => {
    const { sandbox, deck, window } = await openDesk(t, (sandbox, deck) => {
      // Permissions hold nobody who is root.
      sandbox.before = asNobody;
      for (const name of ["program", "home", "config", "state", "tmp", "shop"]) chmodSync(sandbox.path(name), 0o777);
      chmodSync(deck, 0o666);
    });
    const slide = window.state.slide.id;
    const rename = (shape, name) => window.do("rename", { slide, shape: window.shape(shape).id, name });
    await rename("p1 Item", "First");
    rmSync(deck);
    await window.do("commands/save");
    const anew = "The deck's file was gone; it was written anew.";
    await window.until("the notice", ({ notices }) => notices.some(({ text }) => text === anew));
    assert.match(sandbox.done("shapes", deck, "--slide", 1), /First/);

    await rename("p2 Item", "Second");
    chmodSync(sandbox.path("shop"), 0o555);
    const before = digest(deck);
    const refused = await window.post("commands/save");
    assert.equal(refused.status, 409);
    assert.match(refused.json.error, /written into the deck's folder|permission/i);
    assert.equal(digest(deck), before);
    await window.until("what is unsaved", ({ deck }) => deck.unsaved === 1);
    chmodSync(sandbox.path("shop"), 0o777);
    await window.do("commands/save");
    assert.match(sandbox.done("shapes", deck, "--slide", 1), /Second/);
  });

  it("tells what another program has changed of the same shape, and keeps what is unsaved", async (t) => {
    const { sandbox, deck, window } = await openDesk(t);
    const slide = window.state.slide.id;
    const value = { connection: "001", column: "Item", slide };
    const link = (name, row) => window.do("link", { ...value, row, shapes: [window.shape(name).id] });
    await link("p1 Item", 9);
    await link("p2 Item", 8);
    sandbox.done("unlink", deck, "--slide", 1, "--shape", "p2 Item");
    const offer = await window.until("the offer", ({ notices }) => notices.find(({ actions }) => actions.length > 0));
    assert.equal(
      offer.details,
      "'p2 Item' on slide 1: yours is column Item, row 8, connection 001; in the file it is not linked.",
    );
    const captions = () => window.state.notices.find(({ id }) => id === offer.id)?.actions.map(({ caption }) => caption);
    const keeps = (...wanted) => window.until(`${wanted}`, () => captions()?.join() === wanted.join());
    await keeps("Take it and keep my 2 changes", "Decide 1 one by one…");
    await link("p3 Item", 7);
    await keeps("Take it and keep my 3 changes", "Decide 1 one by one…");
    await window.do("commands/undo");
    await keeps("Take it and keep my 2 changes", "Decide 1 one by one…");

    // One by one: what is chosen counts at once, and stays when the form is put away.
    await window.do(`notices/${offer.id}/decide`);
    const form = await window.form("frmConflicts");
    assert.equal(form.controls.fraOwner1.Caption, "'p2 Item' on slide 1");
    assert.equal(form.controls.optOurs1.Value, true);
    await window.raise(form, { control: "optTheirs1", event: "change", value: true });
    await keeps("Take it and keep my 1 change", "Decide 1 one by one…");
    await window.raise(form, { control: "cmdOurs", event: "click" });
    await window.until("mine again", () => form.controls.optOurs1.Value && form.controls.cmdOK.Caption.includes("2"));
    await window.raise(form, { control: "cmdCancel", event: "click" });
    await keeps("Take it and keep my 2 changes", "Decide 1 one by one…");

    // What it is about changes under it: it goes, and comes anew.
    await window.do(`notices/${offer.id}/decide`);
    await window.form("frmConflicts");
    await link("p2 Item", 6);
    await window.until("no form", ({ forms }) => forms.every(({ name }) => name !== "frmConflicts"));
    await link("p2 Item", 8);
    const refused = await window.post("commands/save");
    assert.equal(refused.status, 409);
    assert.match(refused.json.error, /another program has saved it meanwhile\..* your changes are kept\.$/);
    await window.do(`notices/${offer.id}/take`);
    await window.until("both", ({ deck, notices }) => deck.unsaved === 2 && notices.every(({ id }) => id !== offer.id));
    assert.deepEqual([window.shape("p1 Item").link.row, window.shape("p2 Item").link.row], [9, 8]);
    await window.do("commands/save");
    assert.match(sandbox.done("shapes", deck, "--slide", 1), /p2 Item.*Item 8/);
  });

  it("shows two windows each other's changes, and keeps their selections apart", async (t) => {
    const { desk, window: one } = await openDesk(t);
    const two = await desk.openWindow("b".repeat(16));
    const [{ id: slide }, second] = one.state.slides;
    await two.do("selection", { slide: second.id, shapes: [] });
    await one.do("selection", { slide, shapes: [one.shape("p1 Item").id] });
    await two.until("one's selection", ({ others }) => others[0]?.shapes.length === 1);
    await two.until("its own", ({ selection }) => selection.slide === second.id && selection.shapes.length === 0);
    await one.do("rename", { slide, shape: one.shape("p1 Item").id, name: "First" });
    await two.until("the step", ({ deck }) => deck.undo === "Rename p1 Item (other window)");
    await one.until("the name", ({ deck }) => deck.undo === "Rename p1 Item" && one.shape("First"));
    assert.equal((await one.post("rename", { slide, shape: one.shape("First").id, name: "p2 Item" })).status, 409);
    await two.do("commands/undo");
    await one.until("the name of before", () => one.shape("p1 Item"));
  });

  it("answers none of its routes without the token, and tells a stored password in none", async (t) => {
    const password = "Tr0ub;4dor";
    const { desk, window } = await openDesk(t, (sandbox, deck) => {
      const string = `Driver={PostgreSQL Unicode};Servername=127.0.0.1;Port=1;Database=x;UID=me;PWD={${password}}`;
      const add = ["--description", "Vault", "--connection-string", string, "--sql", "SELECT 1"];
      sandbox.run("connection", deck, "add", ...add);
    });
    await window.do(`notices/${window.state.notices[0].id}/open`);
    const vault = window.state.connections.find(({ description }) => description === "Vault").number;
    await window.do("connect", { number: vault });
    const form = await window.form("frmDatabaseConnection");
    await raise(window, form, click("cmdTest"));
    await window.until("the test's end", () => form.controls.cmdTest.Caption === "&Test" && form.controls.lblTest.Text);
    const body = {
      ...{ connection: vault, number: vault, column: "Item", columns: ["Item"], with: "today", root: 1, path: "" },
      ...{ slide: window.state.slide.id, shapes: [window.shape("p1 Item").id], shape: 1, name: "x" },
      ...{ seq: 9, events: [click("cmdTest")] },
    };
    const told = [JSON.stringify(window.events)];
    const wrong = ["", `Bearer ${"0".repeat(desk.token.length)}`, desk.token];
    for (const { method, path } of routes(window, form, vault)) {
      const ask = (headers) => (method === "GET" ? desk.get(path, headers) : desk.post(path, body, headers));
      for (const Authorization of wrong) {
        const { status, text } = await ask({ Authorization });
        assert.deepEqual([status, Object.keys(JSON.parse(text))], [401, ["error"]], `${method} ${path}`);
      }
      // The deck that is fetched is the file itself, with what its author put into it; the stream is looked at below.
      if (/^deck$|events$/.test(path) && method === "GET") continue;
      const answer = await ask({});
      assert.ok(answer.status < 500, `${method} ${path}: ${answer.status} ${answer.text}`);
      told.push(answer.text);
    }
    told.push(JSON.stringify(window.events));
    for (const text of told) assert.ok(!text.includes("4dor"));
  });

  it("answers what makes no sense with a sentence, and goes on", async (t) => {
    const { desk, window } = await openDesk(t);
    const deep = `{"shapes":${"[".repeat(400000)}${"]".repeat(400000)}}`;
    const keys = ["slide", "shapes", "shape", "connection", "column", "columns", "row", "step", "name", "kind", "path"];
    const others = ["number", "with", "seq", "events", "root", "index", "choice", "countUp"];
    const form = await select(window, "p1 Item");
    const asked = routes(window, form, "001").filter(({ method, path }) => method === "POST" && path !== "deck");
    for (const { path } of asked) {
      for (const body of ["[]", "null", "{", '"x"', "\xff", deep]) {
        const { status, json } = await desk.post(path, Buffer.from(body, "latin1"));
        assert.deepEqual([status, typeof json.error], [400, "string"], `${path} ${body.slice(0, 40)}`);
      }
      for (const value of [null, true, -1, 1.5, 1e30, 2 ** 53, "\u0000", [], [[]], [null], {}]) {
        const body = Object.fromEntries([...keys, ...others].map((key) => [key, value]));
        const { status, text } = await desk.post(path, body);
        assert.ok(status < 500, `${path} ${JSON.stringify(value)}: ${text}`);
      }
    }
    await window.do("selection", { slide: window.state.slide.id, shapes: [] });
    assert.equal(window.state.deck.unsaved, 0);
    assert.deepEqual(await desk.stop(), { code: 0, signal: null });
    assert.equal(desk.error, "");
  });

  it("refuses a connection behind number 999, naming it", async (t) => {
    const { window } = await openDesk(t, (_, deck) => {
      const tags = parts(deck).filter((name) => name.startsWith("ppt/tags/"));
      const part = tags.find((name) => readPart(deck, name).includes("CONNECTION002"));
      editPart(deck, part, (xml) => xml.replace("CONNECTION002", "CONNECTION999"));
    });
    const refused = await window.post("connect", { kind: "text", path: "" });
    assert.equal(refused.status, 409);
    assert.match(refused.json.error, /999/);
    const numbers = window.state.connections.map(({ number }) => number);
    assert.deepEqual(numbers, ["001", "999"]);
  });
});

// The routes of the agreement between page and server, with what stands in this window.
function routes(window, form, number) {
  const text = readFileSync(new URL("../../../docs/desk-protocol.md", import.meta.url), "utf8");
  const found = [
    { method: "GET", path: `windows/${window.name}/events` },
    { method: "POST", path: `windows/${window.name}/commands/check` },
  ];
  for (const [, method, path] of text.matchAll(/^\| `(GET|POST) ([^`]+)`/gm)) {
    const here = path.replace("/W/", `/${window.name}/`).replace("forms/7", `forms/${form.id}`);
    found.push({ method, path: here.replace("data/001", `data/${number}`) });
  }
  assert.ok(found.length > 20, "the table is where it was");
  return found;
}
