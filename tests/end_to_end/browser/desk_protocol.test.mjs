// The desk's page against a server that answers late, refuses, loses its events, goes and comes back.

import assert from "node:assert/strict";
import { test } from "node:test";
import { openScreen, useBrowser } from "../support/browser.mjs";
import { control, docked, shape, StubDesk } from "../support/stub_desk.mjs";
import { until } from "../support/wait.mjs";

useBrowser();

async function openDesk(t, state, options) {
  const desk = new StubDesk(state);
  const page = await openScreen(t, await desk.start(t), options);
  await page.getByRole("button", { name: "Save" }).waitFor();
  return { desk, page, row: page.getByLabel("Row", { exact: true }) };
}

// Answers of the form's events, given when the test says so.
function holdAnswers(desk) {
  const held = [];
  desk.answers.push([/^forms\/\d+\/events$/, (body) => new Promise((resolve) => held.push({ body, resolve }))]);
  return {
    next: () => until("an event of the form", () => held.shift()),
    isIdle: () => held.length === 0,
  };
}

test("what is typed is sent after a pause, in order, and no older answer undoes it", async (t) => {
  const { desk, page, row } = await openDesk(t, { forms: [docked(7)] }, { isClockHeld: true });
  const answers = holdAnswers(desk);
  await row.fill("1");
  await page.clock.runFor(200);
  assert.ok(answers.isIdle());
  await page.clock.runFor(100);
  const first = await answers.next();
  assert.deepEqual(first.body, { seq: 1, events: [{ control: "txtRow", event: "change", value: "1" }] });

  await row.pressSequentially("2");
  desk.tell("form", { form: 7, ack: 0, patch: { txtRow: { Text: "9", Hint: "of 12 rows" } } });
  await page.getByText("of 12 rows").waitFor();
  assert.equal(await row.inputValue(), "12");
  first.resolve({ ack: 1, patch: { txtRow: { Text: "1" }, cmdUnlink: { Caption: "Unlink Price" } } });
  await page.getByRole("button", { name: "Unlink Price" }).waitFor();
  assert.equal(await row.inputValue(), "12");

  const second = await answers.next();
  assert.deepEqual(second.body, { seq: 2, events: [{ control: "txtRow", event: "change", value: "12" }] });
  second.resolve({ ack: 2, patch: {} });

  // A press comes behind what was typed before it, in one request with it.
  await row.pressSequentially("3");
  await row.press("Enter");
  const third = await answers.next();
  assert.deepEqual(third.body, {
    seq: 3,
    events: [
      { control: "txtRow", event: "change", value: "123" },
      { control: "cmdUnlink", event: "click" },
    ],
  });
  // The server has seen it all: what it makes of it counts, also where somebody types.
  third.resolve({ ack: 3, patch: { txtRow: { Text: "11", Problem: "There are 11 rows." } } });
  await page.getByText("There are 11 rows.").waitFor();
  assert.equal(await row.inputValue(), "11");
  assert.equal(await row.getAttribute("aria-invalid"), "true");
});

test("what is changed elsewhere while somebody types is said, and can be taken", async (t) => {
  const { desk, page, row } = await openDesk(t, { forms: [docked(7)] });
  const answers = holdAnswers(desk);
  const note = page.getByText("changed elsewhere to", { exact: false });
  await row.fill("1");
  const first = await answers.next();
  // What the server makes of what was typed here is nobody else's.
  await row.pressSequentially("2");
  first.resolve({ ack: 1, patch: { txtRow: { Text: "01" }, cmdUnlink: { Caption: "Unlink Price" } } });
  await page.getByRole("button", { name: "Unlink Price" }).waitFor();
  assert.equal(await note.count(), 0);

  const second = await answers.next();
  desk.tell("form", { form: 7, ack: 1, patch: { txtRow: { Text: "9" } } });
  await page.getByText("changed elsewhere to '9'").waitFor();
  assert.equal(await row.inputValue(), "12");
  second.resolve({ ack: 2, patch: {} });
  await page.getByRole("button", { name: "Take" }).click();
  assert.deepEqual((await answers.next()).body.events, [{ control: "txtRow", event: "change", value: "9" }]);
  assert.equal(await row.inputValue(), "9");
  assert.equal(await note.isVisible(), false);
});

test("a finding leads to the control at fault", async (t) => {
  const finding = { slide: 256, shape: 3, gravity: "broken", text: "There is no column 'Prise'.", repair: null };
  const valuePage = (id, name) =>
    docked(id, {
      name,
      rows: [
        { label: "C&onnection", controls: ["cmbConnection"] },
        { label: "&Column", controls: ["cmbColumn"] },
      ],
      default: "",
      controls: {
        cmbConnection: control("ComboBox", { Text: "001 Today", Items: [] }),
        cmbColumn: control("ComboBox", { Text: "Prise", Items: [], IsEditable: true }),
      },
    });
  const { desk, page } = await openDesk(t, {
    forms: [docked(7, { name: "frmSlide" })],
    findings: [{ ...finding, missing: "column" }],
  });
  await page.getByRole("tab", { name: /^Check/ }).click();
  await page.getByRole("button", { name: finding.text }).click();
  const selection = { slide: 256, shapes: [3] };
  assert.deepEqual((await desk.request(/^selection$/))[1], selection);
  desk.tell("state", { selection, forms: [valuePage(8, "frmDataField")] });
  const hasFocus = (label) =>
    until(`the focus on ${label}`, () =>
      page.getByLabel(label, { exact: true }).evaluate((each) => each === document.activeElement),
    );
  await hasFocus("Column");
  // It stays with the selected shape, whose page is there already.
  desk.tell("state", { findings: [{ ...finding, missing: "connection", text: "There is no connection 001." }] });
  await page.getByRole("button", { name: "There is no connection 001." }).click();
  await hasFocus("Connection");
});

test("an answer that comes after later news undoes none of it", async (t) => {
  const { desk, page, row } = await openDesk(t, { forms: [docked(7)] });
  const answers = holdAnswers(desk);
  await row.fill("8");
  const { body, resolve } = await answers.next();
  const says = (Hint) => ({ txtRow: { Hint } });
  desk.tell("form", { form: 7, ack: body.seq, patch: says("reading") });
  desk.tell("form", { form: 7, ack: body.seq, patch: says("12 rows") });
  await page.getByText("12 rows").waitFor();
  resolve({ ack: body.seq, patch: says("reading") });
  await row.fill("9");
  await answers.next();
  assert.equal(await page.getByText("12 rows").isVisible(), true);
  assert.equal(await page.getByText("reading").isVisible(), false);
});

test("what the server refuses goes back to what it was, and says why", async (t) => {
  const { desk, page, row } = await openDesk(t, { forms: [docked(7)] });
  desk.answers.push([/events$/, () => ({ status: 409, error: "Row is not to be used now." })]);
  await row.fill("8");
  await page.getByText("Row is not to be used now.").first().waitFor();
  await until("the old row", async () => (await row.inputValue()) === "7");

  // A button that is not to be used stays within reach, says why and asks for nothing.
  desk.tell("form", { form: 7, ack: 9, patch: { cmdUnlink: { Enabled: false, Reason: "Nothing here is linked." } } });
  const unlink = page.locator("#properties").getByRole("button", { name: "Unlink" });
  await page.locator("#properties [aria-description='Nothing here is linked.']").waitFor();
  await unlink.click({ force: true });
  await page.getByRole("option", { name: "Slide 1" }).click();
  await row.fill("5");
  await until("what was typed", () => desk.asked.some(([, body]) => body?.events?.[0].value === "5"));
  assert.ok(!desk.asked.some(([, body]) => body?.events?.some((event) => event.control === "cmdUnlink")));
});

test("an event that is missing makes the page ask for everything anew", async (t) => {
  const { desk, page } = await openDesk(t);
  desk.tell("say", { text: "one" });
  await page.locator("#live", { hasText: "one" }).waitFor({ state: "attached" });
  desk.state.deck = { ...desk.state.deck, name: "other.pptx" }; // told in an event that does not arrive
  desk.skip();
  desk.tell("say", { text: "three" });
  await page.getByRole("heading", { name: "other.pptx" }).waitFor();
});

test("a server that goes and comes back finds what was typed, in pages and in dialogs", async (t) => {
  const dialog = (id) => ({
    ...docked(id, { name: "frmTextConnection", caption: "Text file", placement: "dialog", width: "wide" }),
    rows: [
      { label: "&Description", controls: ["txtDescription"] },
      { label: "", controls: ["cmdOK", "cmdCancel"], isButtons: true },
    ],
    default: "cmdOK",
    cancel: "cmdCancel",
    controls: {
      txtDescription: control("TextBox", { Text: "", Lines: 1 }),
      cmdOK: control("CommandButton", { Caption: "OK" }),
      cmdCancel: control("CommandButton", { Caption: "Cancel" }),
    },
  });
  const { desk, page, row } = await openDesk(t, {
    forms: [docked(7)],
    selection: { slide: 256, shapes: [3] },
    slide: {
      id: 256,
      index: 1,
      html: '<section class="slide" id="s1"></section>',
      shapes: [shape(3, "Price", 10, 10)],
      why: [],
      hides: null,
    },
    nearby: [{ path: "today.txt", kind: "text", note: "2 columns" }],
  });

  await desk.stop();
  await row.fill("12");
  await page.getByText("The desk does not answer since").waitFor();
  assert.equal(await row.inputValue(), "12");
  await desk.startAnew({ selection: { slide: 256, shapes: [] }, forms: [] });
  // What was selected is so again, and brings the page back; what was typed there goes into it.
  const [, selection] = await desk.request(/^selection$/);
  assert.deepEqual(selection, { slide: 256, shapes: [3] });
  desk.tell("state", { selection, forms: [docked(1)] });
  const [, { events }] = await desk.request(/^forms\/1\/events$/);
  assert.deepEqual(events, [{ control: "txtRow", event: "change", value: "12" }]);
  assert.equal(await page.getByText("The desk does not answer since").isVisible(), false);

  await page.getByRole("button", { name: "Connect data" }).click();
  await page.getByRole("menuitem", { name: "today.txt" }).click();
  await desk.request(/^connect$/);
  desk.tell("state", { forms: [docked(1), dialog(2)] });
  const description = page.getByRole("dialog", { name: "Text file" }).getByLabel("Description");
  await description.fill("Today's menu");
  await desk.request(/^forms\/2\/events$/);
  await desk.stop();
  await page.getByText("The desk does not answer since").waitFor();
  await desk.startAnew({ forms: [] });
  assert.deepEqual(await desk.request(/^connect$/, 1), ["connect", { kind: "text", path: "today.txt" }]);
  desk.tell("state", { forms: [dialog(5)] });
  const [, again] = await desk.request(/^forms\/5\/events$/);
  assert.deepEqual(again.events, [{ control: "txtDescription", event: "change", value: "Today's menu" }]);
  assert.equal(await description.inputValue(), "Today's menu");
  assert.equal(await page.getByRole("dialog").count(), 1);

  // Esc asks before what was typed is given up, and clicks beside the dialog do nothing.
  await page.mouse.click(5, 5);
  await description.press("Escape");
  await page.getByRole("button", { name: "Go on editing" }).click();
  assert.equal(await description.inputValue(), "Today's menu");
});

test("cells are drawn over a preview by pointer and by keys, and told when they are let go of", async (t) => {
  const preview = (more) =>
    control("Grid", {
      Selects: true,
      Columns: [
        { text: "Item", note: "B" },
        { text: "Price", note: "C" },
      ],
      Rows: {
        first: 1,
        cells: [
          ["Rye", "4.80"],
          ["Plum", "4.10"],
        ],
      },
      ...more,
    });
  const dialog = (id, more) =>
    docked(id, {
      ...{ name: "frmExcelConnection", caption: "Worksheet", placement: "dialog", width: "wide", default: "" },
      rows: [{ label: "", controls: ["grdPreview"], group: "", isButtons: false }],
      controls: { grdPreview: preview() },
      ...more,
    });
  const { desk, page } = await openDesk(t, { forms: [dialog(4)] });
  const events = /^forms\/\d+\/events$/;
  const told = async (place) => (await desk.request(events, place))[1].events;
  const drawn = (...value) => [{ control: "grdPreview", event: "change", value }];
  const cell = (text) => page.getByRole("cell", { name: text, exact: true });
  const centre = async (target) => {
    const { x, y, width, height } = await target.boundingBox();
    return [x + width / 2, y + height / 2];
  };
  const isMarked = (...texts) =>
    until(`${texts} marked`, async () => (await page.locator(".taken").allTextContents()).join() === texts.join());

  await cell("Plum").click();
  await isMarked("Plum");
  await page.mouse.move(...(await centre(cell("4.10"))));
  await page.mouse.down();
  await page.mouse.move(...(await centre(page.getByRole("columnheader", { name: "Item" }))), { steps: 4 });
  await isMarked("BItem", "CPrice", "Rye", "4.80", "Plum", "4.10");
  await page.getByText("B to C, rows 1 to 2 and the names").waitFor();
  assert.equal(desk.asked.filter(([path]) => events.test(path)).length, 0, "a click is no rectangle");
  await page.mouse.up();
  assert.deepEqual(await told(0), drawn(-1, 0, 1, 1));

  // Other rows have nothing drawn over them.
  desk.tell("form", {
    form: 4,
    ack: 1,
    patch: {
      grdPreview: {
        Rows: {
          first: 1,
          cells: [
            ["Oat", "0.90"],
            ["Rye", "1.20"],
          ],
        },
      },
    },
  });
  await isMarked();
  await page.getByRole("group", { name: "Preview" }).focus();
  for (const key of ["ArrowDown", "ArrowDown", "ArrowRight"]) await page.keyboard.press(key);
  await isMarked("0.90");
  await page.keyboard.down("Shift");
  await page.keyboard.press("ArrowDown");
  await page.keyboard.press("ArrowLeft");
  await isMarked("Oat", "0.90", "Rye", "1.20");
  await page.keyboard.up("Shift");
  assert.deepEqual(await told(1), drawn(0, 0, 1, 1));

  // What was drawn is given up after a question, but where it is kept at once.
  await page.keyboard.press("Escape");
  await page.keyboard.press("Escape");
  await page.getByRole("button", { name: "Go on editing" }).click();
  desk.tell("state", { forms: [dialog(4, { keepsAtOnce: true, ack: 2 })] });
  await page.getByRole("dialog").getByRole("button", { name: "Close" }).click();
  await desk.request(/^forms\/4\/close$/);
});
