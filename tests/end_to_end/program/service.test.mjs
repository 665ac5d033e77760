// A show as a service: settings from a file, the service manager, the journal.

import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import { closeSync, cpSync, existsSync, fstatSync, openSync, readFileSync, rmSync, statSync, writeFileSync } from "node:fs";
import { describe, it } from "node:test";
import { Sandbox } from "../support/sandbox.mjs";
import { ServiceManager } from "../support/service_manager.mjs";
import { valueDeck } from "../support/value_deck.mjs";
import { refresh, until } from "../support/wait.mjs";

const processState = (pid) => readFileSync(`/proc/${pid}/stat`, "utf8").match(/\) (\w)/)[1];
const jsonLines = (text) => text.split("\n").filter(Boolean).map((line) => JSON.parse(line));

describe("a service", { concurrency: 4 }, () => {
  it("takes deck and options from its settings, the command line first, and says which line is wrong", async (t) => {
    const { sandbox, deck } = valueDeck(t, "a");
    const settings = (...lines) => sandbox.write("board.conf", lines.join("\n"));
    const refused = (...lines) => sandbox.run("show", "--config", settings(...lines));

    const file = settings("# the board", `deck = ${deck}`, "port = 99", "name = one.example", "name = two.example", "kiosk = yes");
    const show = await sandbox.show("--config", file, "--port", "0");
    for (const host of ["one.example", "two.example"]) {
      assert.equal((await show.get("/healthz", { Host: host })).status, 200, host);
    }
    const wrong = {
      "line 2: there is no setting 'colour'": [`deck=${deck}`, "colour = red"],
      "line 1: 'kiosk' is yes or no, not 'perhaps'": ["kiosk = perhaps"],
      "line 2: --seconds: Value 0 not in range": ["", "seconds=0"],
      "line 1: this is no line of the form KEY = VALUE": ["deck"],
      "line 2: --port: At Most 1 required but received 2": ["port = 1", "port = 2"],
      "line 1: --port: 65536 is no whole number from 0 to 65535": ["\ufeffport = 65536"],
      "line 1: 'deck' has no value": ["deck ="],
      "line 1: --when-empty: 0 is no whole number from 1 on": ["when-empty = 0"],
      "line 1: there is no setting 'config'": ["config = other.conf"],
    };
    for (const [what, lines] of Object.entries(wrong)) {
      const { code, error } = refused(...lines);
      assert.equal(code, 1, what);
      assert.ok(error.includes(`board.conf, ${what}`), error);
    }
    assert.equal(sandbox.run("show").code, 2, "no deck at all");
    for (const [name, why] of [["none.conf", "No such file or directory"], [".", "it is a folder"]]) {
      const { error } = sandbox.run("show", deck, "--config", sandbox.path(name));
      assert.ok(error.includes(`the settings cannot be read: ${why}.`), error);
    }
  });

  it("tells the manager when its first slide is drawn, what is on, and that it ends", async (t) => {
    const { sandbox, deck } = valueDeck(t, "a");
    for (const address of [sandbox.path("notify"), `@lumenfold-${process.pid}`]) {
      const manager = await ServiceManager.listening(t, address);
      sandbox.environment.NOTIFY_SOCKET = address;
      const show = await sandbox.show(deck);
      await manager.hears("the first slide", "READY=1");
      assert.equal((await show.get("/readyz")).status, 200);
      await until("the status", () => /^shop\.pptx: slide 1 of \d; 0 screens$/.test(manager.status ?? ""));
      assert.equal(manager.count("WATCHDOG=1"), 0, "nobody asked for it");
      show.events("/screen/events");
      await until("the screen in the status", () => manager.status.endsWith("; 1 screen"));
      assert.deepEqual(await show.stop(), { code: 0, signal: null });
      await manager.hears("the end", "STOPPING=1");
    }
  });

  it("gives signs of life from its loop, and none while that stands", async (t) => {
    const { sandbox, deck } = valueDeck(t, "a");
    const manager = await ServiceManager.listening(t, sandbox.path("notify"));
    const wanted = 1000;
    Object.assign(sandbox.environment, { NOTIFY_SOCKET: sandbox.path("notify"), WATCHDOG_USEC: `${wanted}000` });
    const show = await sandbox.show(deck);
    await manager.hears("life", "WATCHDOG=1", 3);
    show.process.kill("SIGSTOP");
    await until("a show that stands", () => processState(show.process.pid) === "T");
    await until("silence for as long as the manager waits", () => manager.silence() > wanted);
    const heard = manager.count("WATCHDOG=1");
    // As systemd does then.
    show.process.kill("SIGABRT");
    show.process.kill("SIGCONT");
    assert.equal((await show.ended).signal, "SIGABRT");
    const next = await sandbox.show(deck);
    await manager.hears("life", "WATCHDOG=1", heard + 3);
    await manager.hears("the first slide", "READY=1", 2);
    assert.deepEqual(await next.stop(), { code: 0, signal: null });
  });

  it("takes up deck and settings when it is asked to, and goes on with what it has when they are wrong", async (t) => {
    const { sandbox, deck } = valueDeck(t, "a");
    const other = sandbox.sample("departures");
    const manager = await ServiceManager.listening(t, sandbox.path("notify"));
    sandbox.environment.NOTIFY_SOCKET = sandbox.path("notify");
    const file = sandbox.path("board.conf");
    const settings = (...lines) => writeFileSync(file, lines.join("\n"));
    settings(`deck = ${deck}`, "no-reload = yes");
    const show = await sandbox.show("--config", file, "--port", "0");
    await manager.hears("the first slide", "READY=1");
    let reloads = 0;
    const reload = async () => {
      reloads += 1;
      show.process.kill("SIGHUP");
      await manager.hears("the reload", "RELOADING=1", reloads);
      await manager.hears("its end", "READY=1", reloads + 1);
    };
    const shown = async () => (await show.state()).deck;
    const ownSlides = (await show.state()).slides.length;

    settings(`deck = ${other}`, "no-reload = yes", "kiosk = yes");
    await reload();
    assert.equal(await shown(), other);
    assert.notEqual((await show.state()).slides.length, ownSlides);

    settings(`deck = ${other}`, "sedonds = 3");
    await reload();
    assert.match(show.error, /board\.conf, line 2: there is no setting 'sedonds'/);
    settings("deck = /nowhere/board.pptx");
    await reload();
    assert.ok(sandbox.errorLog().some((line) => line.includes("/nowhere/board.pptx is not shown")));
    settings(`deck = ${other}`, "bind = 0.0.0.0", "when-empty = 99");
    await reload();
    assert.match(show.error, /takes a restart/);
    assert.match(show.error, /when-empty: .*there is no slide 99/);
    assert.equal(await shown(), other);

    // The deck itself, although it is not watched.
    cpSync(deck, other);
    await reload();
    assert.equal((await show.state()).slides.length, ownSlides);
    assert.deepEqual(await show.stop(), { code: 0, signal: null });
  });

  it("ends when its terminal closes", async (t) => {
    const { sandbox, deck } = valueDeck(t, "a");
    const line = `echo $$ > '${sandbox.path("pid")}'; exec '${sandbox.program}' show '${deck}' --port 0 > '${sandbox.path("out")}'`;
    const terminal = spawn("script", ["-qec", line, "/dev/null"], { env: sandbox.environment, stdio: "ignore" });
    t.after(() => terminal.kill("SIGKILL"));
    await until("the show", () => /^Operator: /m.test(readFileSync(sandbox.path("out"), "utf8")));
    const pid = readFileSync(sandbox.path("pid"), "utf8").trim();
    terminal.kill("SIGKILL");
    await until("the end of the show", () => !existsSync(`/proc/${pid}`) || processState(pid) === "Z");
  });

  it("keeps its token, its logs and what it knows in the folders that the manager gives it", async (t) => {
    const { sandbox, deck } = valueDeck(t, "a");
    rmSync(sandbox.path("shop/values.txt"));
    const folders = { STATE_DIRECTORY: sandbox.path("state"), LOGS_DIRECTORY: `${sandbox.path("tmp")}:/elsewhere` };
    Object.assign(sandbox.environment, folders);
    const show = await sandbox.show(deck);
    const token = readFileSync(sandbox.path("state/token"), "utf8").trim();
    assert.equal(statSync(sandbox.path("state/token")).mode & 0o777, 0o600);
    assert.ok(!show.out.includes(token), "the journal must not have it");
    show.token = token;
    await show.command("first");
    await until("the line in the log", () => readFileSync(sandbox.path("tmp/errors.txt"), "utf8").includes("values.txt"), refresh);
    await show.stop();
    const again = await sandbox.show(deck);
    again.token = token;
    await again.command("first");
  });

  it("writes its errors to the journal with priorities, or as JSON, a line each", async (t) => {
    const { sandbox, deck } = valueDeck(t, "a");
    rmSync(sandbox.path("shop/values.txt"));

    const journal = openSync(sandbox.path("journal"), "a");
    const { dev, ino } = fstatSync(journal);
    const child = spawn(sandbox.program, ["show", deck, "--port", "0"], {
      env: { ...sandbox.environment, JOURNAL_STREAM: `${dev}:${ino}` },
      stdio: ["ignore", "ignore", journal],
    });
    t.after(() => child.kill("SIGKILL"));
    closeSync(journal);
    const lines = () => readFileSync(sandbox.path("journal"), "utf8").split("\n").filter(Boolean);
    await until("the error in the journal", () => lines().some((line) => /^<3>.*values\.txt/.test(line)), refresh);
    assert.ok(lines().every((line) => /^<[3-6]>/.test(line)), lines().join("\n"));
    child.kill();

    const show = new Sandbox(t);
    cpSync(sandbox.path("shop"), show.path("shop"), { recursive: true });
    const json = spawn(show.program, ["show", show.path("shop/shop.pptx"), "--port", "0", "--log", "json"], { env: show.environment });
    t.after(() => json.kill("SIGKILL"));
    let out = "";
    let error = "";
    json.stdout.on("data", (text) => (out += text));
    json.stderr.on("data", (text) => (error += text));
    const entries = () => jsonLines(error.slice(0, error.lastIndexOf("\n") + 1));
    await until("the error in the log", () => entries().some(({ where }) => where === "show"), refresh);
    const entry = entries().find(({ where }) => where === "show");
    assert.deepEqual(Object.keys(entry), ["time", "priority", "where", "message"]);
    assert.match(entry.time, /^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z$/);
    assert.equal(entry.priority, 3);
    assert.match(entry.message, /values\.txt/);
    await until("the address", () => entries().some(({ message }) => message.startsWith("Screen: ")));
    assert.equal(out, "", "all of it is in the log");
    assert.ok(!error.includes("#token="), "and no secret");
    // The end of the program is a line of the log as well.
    for (const line of [[show.path("none.pptx")], ["--config", show.path("none.conf")]]) {
      assert.equal(jsonLines(show.run("show", ...line, "--log", "json").error)[0].priority, 3, line[0]);
    }
  });
});
